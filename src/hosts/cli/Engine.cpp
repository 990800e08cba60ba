#include "hosts/cli/Engine.h"

#include <algorithm>
#include <utility>

#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/Files.h"
#include "method/DocumentSet.h"
#include "text/Ansi.h"
#include "text/Lists.h"

namespace vrn::cli {

namespace {

class RecordedMessageBox final : public errors::MessageBoxService {
  public:
    explicit RecordedMessageBox(std::vector<Report>& reports) : reports_(&reports) {}
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& /*caption*/,
                               std::int32_t /*flags*/) override {
        reports_->push_back({text::fromAnsi(text), 0, {}});
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& text, const std::string& /*caption*/, std::int32_t /*style*/) override {
        reports_->push_back({text, 0, {}});
    }

  private:
    std::vector<Report>* reports_;
};

std::string pathOf(const std::string& own, const std::string& folder, const char* name) {
    if (!own.empty() || folder.empty()) {
        return own;
    }
    return folder + (folder.ends_with('/') ? "" : "/") + name;
}

}  // namespace

std::vector<std::string> setFiles(const SetArguments& arguments) {
    std::vector<std::string> files{pathOf(arguments.macros, arguments.folder, "macros.xml"),
                                   pathOf(arguments.objects, arguments.folder, "objects.xml"),
                                   pathOf(arguments.config, arguments.folder, "config.xml")};
    if (std::any_of(files.begin(), files.end(), [](const std::string& file) { return file.empty(); })) {
        throw Fault("name the document set: --set FOLDER, or --macros, --objects and --config");
    }
    return files;
}

SetTexts readSet(const SetArguments& arguments, const Console& console) {
    SetTexts set;
    set.files = setFiles(arguments);
    set.macros = readXmlFile(set.files[0], console, "Macros").text;
    set.objects = readXmlFile(set.files[1], console, "LATESTKEX").text;
    set.configuration = readXmlFile(set.files[2], console, "Config").text;
    set.decimalSeparator = arguments.decimalSeparator;
    return set;
}

Engine::Engine(const std::string& decimalSeparator) : reports_(std::make_unique<std::vector<Report>>()) {
    auto services = services::embeddedServices();
    services.locale = std::make_shared<services::FixedLocaleService>(decimalSeparator);
    services.messageBox = std::make_shared<RecordedMessageBox>(*reports_);
    editor_ = std::make_unique<shell::VRN_MethodEditor>(std::move(services));
    editor_->onMethodEditorError([reports = reports_.get()](const errors::MethodEditorErrorArguments& error) {
        reports->push_back({error.strError, error.lngError, error.strProcedure});
    });
}

Engine::Engine() : Engine(std::string(".")) {}

Engine::Engine(const SetTexts& set) : Engine(set.decimalSeparator) {
    editor_->SetXmlDocuments(set.macros, set.objects, "", set.configuration);
    if (const auto reports = takeReports(); !reports.empty()) {
        throw Fault("the document set cannot be used: " + oneLine(reports.front()));
    }
}

void Engine::load(const std::string& method) { method::SetMethod(state(), method); }

std::vector<Report> Engine::takeReports() { return std::exchange(*reports_, {}); }

std::string oneLine(const Report& report) { return text::replacedAll(report.text, text::crlf, " "); }

}  // namespace vrn::cli
