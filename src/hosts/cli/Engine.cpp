#include "hosts/cli/Engine.h"

#include <algorithm>
#include <utility>

#include "hosts/cli/Files.h"
#include "method/DocumentSet.h"
#include "text/Ansi.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

std::string oneLine(const std::string& report) { return text::replacedAll(report, text::crlf, " "); }

class RecordedMessageBox final : public errors::MessageBoxService {
  public:
    explicit RecordedMessageBox(std::vector<std::string>& reports) : reports_(&reports) {}
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& /*caption*/,
                               std::int32_t /*flags*/) override {
        reports_->push_back(oneLine(text::fromAnsi(text)));
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& text, const std::string& /*caption*/, std::int32_t /*style*/) override {
        reports_->push_back(oneLine(text));
    }

  private:
    std::vector<std::string>* reports_;
};

std::string pathOf(const std::string& own, const std::string& folder, const char* name) {
    if (!own.empty() || folder.empty()) {
        return own;
    }
    return folder + (folder.ends_with('/') ? "" : "/") + name;
}

std::vector<std::string> setFiles(const SetArguments& arguments) {
    std::vector<std::string> files{pathOf(arguments.macros, arguments.folder, "macros.xml"),
                                   pathOf(arguments.objects, arguments.folder, "objects.xml"),
                                   pathOf(arguments.config, arguments.folder, "config.xml")};
    if (std::any_of(files.begin(), files.end(), [](const std::string& file) { return file.empty(); })) {
        throw Fault("name the document set: --set FOLDER, or --macros, --objects and --config");
    }
    return files;
}

constexpr std::string_view macrosRoot = "Macros";
constexpr std::string_view objectsRoot = "LATESTKEX";
constexpr std::string_view configurationRoot = "Config";

bool hasRoots(const method::EditorState& state) {
    return state.domMacros.documentElement().name() == macrosRoot &&
           state.domlatestKex.documentElement().name() == objectsRoot &&
           state.domConfig.documentElement().name() == configurationRoot;
}

// Why a set cannot be used, with file and place where it is the fault of a document alone.
[[noreturn]] void failAtFault(const SetTexts& set, const std::vector<std::string>& reports) {
    static_cast<void>(parsedXml(set.files[0], set.macros, macrosRoot));
    static_cast<void>(parsedXml(set.files[1], set.objects, objectsRoot));
    static_cast<void>(parsedXml(set.files[2], set.configuration, configurationRoot));
    throw Fault("the document set cannot be used" + (reports.empty() ? std::string() : ": " + reports.front()));
}

}  // namespace

SetTexts readSet(const SetArguments& arguments, const Console& console) {
    SetTexts set;
    set.files = setFiles(arguments);
    set.macros = readXmlText(set.files[0], console);
    set.objects = readXmlText(set.files[1], console);
    set.configuration = readXmlText(set.files[2], console);
    set.decimalSeparator = arguments.decimalSeparator;
    return set;
}

Engine::Engine(const std::string& decimalSeparator) : reports_(std::make_unique<std::vector<std::string>>()) {
    auto services = services::embeddedServices();
    services.locale = std::make_shared<services::FixedLocaleService>(decimalSeparator);
    services.messageBox = std::make_shared<RecordedMessageBox>(*reports_);
    editor_ = std::make_unique<shell::VRN_MethodEditor>(std::move(services));
    editor_->onMethodEditorError([reports = reports_.get()](const errors::MethodEditorErrorArguments& error) {
        reports->push_back(oneLine(error.strError));
    });
}

Engine::Engine() : Engine(std::string(".")) {}

Engine::Engine(const SetTexts& set) : Engine(set.decimalSeparator) {
    editor_->SetXmlDocuments(set.macros, set.objects, "", set.configuration);
    // The editor has parsed them: doing so again, for a better message, waits until one is needed.
    if (const auto reports = takeReports(); !reports.empty() || !hasRoots(state())) {
        failAtFault(set, reports);
    }
}

void Engine::load(const std::string& method) { method::SetMethod(state(), method); }

std::vector<std::string> Engine::takeReports() { return std::exchange(*reports_, {}); }

}  // namespace vrn::cli
