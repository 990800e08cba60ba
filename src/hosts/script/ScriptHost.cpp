#include "hosts/script/ScriptHost.h"

#include <array>
#include <fstream>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <unordered_map>

#include "hosts/script/Snapshot.h"
#include "shell/VRN_MethodEditor.h"
#include "text/Ansi.h"
#include "xml/TextFile.h"

namespace vrn::script {

namespace {

// A request that is at fault. What it says goes into the reply.
class BadRequest : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Shows message boxes by telling of them.
class EventMessageBox final : public errors::MessageBoxService {
  public:
    explicit EventMessageBox(Json& events) : events_(&events) {}
    std::int32_t MessageBoxExA(std::intptr_t /*hWnd*/, const std::string& text, const std::string& caption,
                               std::int32_t flags) override {
        add(text::fromAnsi(text), text::fromAnsi(caption), flags);
        return errors::buttonOk;
    }
    errors::ErrorState lastError() override { return {}; }
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override {
        add(text, caption, style);
    }

  private:
    void add(const std::string& text, const std::string& caption, std::int32_t flags) {
        events_->push_back({{"event", "messageBox"}, {"text", text}, {"title", caption}, {"flags", flags}});
    }
    Json* events_;
};

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes;
    std::array<char, 65536> block{};
    while (file.read(block.data(), block.size()) || file.gcount() > 0) {
        bytes.append(block.data(), static_cast<std::size_t>(file.gcount()));
    }
    // A folder can be opened as well; only reading it fails.
    if (!file.is_open() || file.bad()) {
        throw BadRequest("cannot read file '" + path + "'");
    }
    try {
        return xml::decodeXmlFile(bytes);
    } catch (const errors::Error& error) {
        throw BadRequest("cannot read file '" + path + "': " + error.description());
    }
}

const Json& argument(const Json& request, const char* name) {
    const auto found = request.find(name);
    if (found == request.end()) {
        throw BadRequest(std::string("argument '") + name + "' is missing");
    }
    return *found;
}

std::string stringArgument(const Json& request, const char* name) {
    const auto& value = argument(request, name);
    if (!value.is_string()) {
        throw BadRequest(std::string("argument '") + name + "' must be a string");
    }
    return value.get<std::string>();
}

bool boolArgument(const Json& request, const char* name) {
    const auto& value = argument(request, name);
    if (!value.is_boolean()) {
        throw BadRequest(std::string("argument '") + name + "' must be true or false");
    }
    return value.get<bool>();
}

int intArgument(const Json& request, const char* name) {
    const auto& value = argument(request, name);
    if (!value.is_number_integer()) {
        throw BadRequest(std::string("argument '") + name + "' must be a whole number");
    }
    const auto number = value.get<std::int64_t>();
    const bool tooLarge = value.is_number_unsigned() && value.get<std::uint64_t>() > INT32_MAX;
    if (tooLarge || number < INT32_MIN || number > INT32_MAX) {
        throw BadRequest(std::string("argument '") + name + "' is out of range");
    }
    return static_cast<int>(number);
}

std::string documentArgument(const Json& request, const char* name) {
    const auto& value = argument(request, name);
    if (value.is_object()) {
        return readFile(stringArgument(value, "file"));
    }
    if (!value.is_string()) {
        throw BadRequest(std::string("argument '") + name + R"(' must be XML text or {"file": PATH})");
    }
    return value.get<std::string>();
}

void requireDone(controls::UserRequest outcome, const controls::Control& control) {
    if (outcome == controls::UserRequest::NotUsable) {
        throw BadRequest(control.name() + (control.visible() ? " is disabled" : " is hidden"));
    }
    if (outcome == controls::UserRequest::NoSuchEntry) {
        throw BadRequest(control.name() + " has no such entry");
    }
}

template <typename Control>
Control& oneOf(const std::string& name, std::initializer_list<Control*> controls) {
    for (auto* const control : controls) {
        if (control->name() == name) {
            return *control;
        }
    }
    throw BadRequest("'" + name + "' is not a control for this request");
}

}  // namespace

class ScriptHost::Session {
  public:
    explicit Session(services::Services services) : editor_(withEvents(std::move(services))) {
        editor_.onMethodEditorError([this](const errors::MethodEditorErrorArguments& error) {
            events_.push_back({{"event", "MethodEditorError"},
                               {"lngError", error.lngError},
                               {"strError", error.strError},
                               {"strApplication", error.strApplication},
                               {"strModule", error.strModule},
                               {"strProcedure", error.strProcedure},
                               {"intLineNumber", error.intLineNumber}});
        });
    }

    Json reply(std::string_view line) {
        events_ = Json::array();
        Json reply = {{"ok", true}};
        try {
            reply["result"] = perform(parse(line));
        } catch (const errors::Error& error) {
            reply = {{"ok", false}, {"error", error.description()}, {"number", error.number()}};
        } catch (const BadRequest& error) {
            reply = {{"ok", false}, {"error", error.what()}};
        }
        reply["events"] = std::move(events_);
        return reply;
    }

  private:
    using Operation = Json (Session::*)(const Json&);

    services::Services withEvents(services::Services services) {
        services.messageBox = std::make_shared<EventMessageBox>(events_);
        return services;
    }

    static Json parse(std::string_view line) {
        auto request = Json::parse(line, nullptr, false);
        if (request.is_discarded()) {
            throw BadRequest("the line is not JSON");
        }
        if (!request.is_object()) {
            throw BadRequest("the line is not a JSON object");
        }
        return request;
    }

    Json perform(const Json& request) {
        static const std::unordered_map<std::string, Operation> operations{
            {"SetXmlDocuments", &Session::setXmlDocuments},
            {"GetMethodXml", &Session::getMethodXml},
            {"MethodIsChanged", &Session::methodIsChanged},
            {"DisableMethod", &Session::disableMethod},
            {"DisableDescription", &Session::disableDescription},
            {"DisableSyringe", &Session::disableSyringe},
            {"AuditTrail", &Session::auditTrail},
            {"refreshControls", &Session::refreshControls},
            {"select", &Session::select},
            {"click", &Session::click},
            {"type", &Session::type},
            {"edit", &Session::edit},
            {"menu", &Session::menu},
            {"choose", &Session::choose},
            {"state", &Session::state},
        };
        const auto name = stringArgument(request, "do");
        const auto operation = operations.find(name);
        if (operation == operations.end()) {
            throw BadRequest("unknown operation '" + name + "'");
        }
        if (name != "state" && name != "choose") {
            editor_.state().mnuUserIndex.close();
        }
        return (this->*operation->second)(request);
    }

    Json setXmlDocuments(const Json& request) {
        const auto macros = documentArgument(request, "macros");
        const auto objects = documentArgument(request, "objects");
        const auto method = documentArgument(request, "method");
        const auto config = documentArgument(request, "config");
        editor_.SetXmlDocuments(macros, objects, method, config);
        return nullptr;
    }

    Json getMethodXml(const Json& /*request*/) {
        const auto method = editor_.GetMethodXml();
        return method ? Json(method->xml()) : Json();
    }

    Json methodIsChanged(const Json& request) {
        if (!request.contains("value")) {
            return editor_.MethodIsChanged();
        }
        editor_.MethodIsChanged(boolArgument(request, "value"));
        return nullptr;
    }

    Json disableMethod(const Json& request) {
        editor_.DisableMethod(boolArgument(request, "value"));
        return nullptr;
    }

    Json disableDescription(const Json& request) {
        editor_.DisableDescription(boolArgument(request, "value"));
        return nullptr;
    }

    Json disableSyringe(const Json& request) {
        editor_.DisableSyringe(boolArgument(request, "value"));
        return nullptr;
    }

    Json auditTrail(const Json& /*request*/) { return editor_.AuditTrail(); }

    Json refreshControls(const Json& /*request*/) {
        editor_.refreshControls();
        return nullptr;
    }

    Json select(const Json& request) {
        auto& ui = editor_.state();
        auto& list = oneOf<controls::ItemList>(stringArgument(request, "control"),
                                               {&ui.lstMethodMacroList, &ui.cboSelectedMacro, &ui.cboSyringe});
        int index = controls::noSelection;
        if (request.contains("index")) {
            index = intArgument(request, "index");
        } else if (list.kind() == controls::ControlKind::ComboBox) {
            index = list.indexOf(stringArgument(request, "text"));
        } else {
            throw BadRequest("argument 'index' is missing");
        }
        requireDone(list.userSelect(index), list);
        return nullptr;
    }

    Json click(const Json& request) {
        auto& ui = editor_.state();
        auto& button = oneOf<controls::Button>(stringArgument(request, "control"),
                                               {&ui.cmdInsert, &ui.cmdReplace, &ui.cmdDelete, &ui.cmdDefCycle});
        requireDone(button.userClick(), button);
        return nullptr;
    }

    Json type(const Json& request) {
        auto& box =
            oneOf<controls::TextBox>(stringArgument(request, "control"), {&editor_.state().txtMethodDescription});
        requireDone(box.userType(stringArgument(request, "text")), box);
        return nullptr;
    }

    Json edit(const Json& request) {
        auto& grid = editor_.state().grdMacro;
        const auto text = stringArgument(request, "text");
        const bool commit = !request.contains("commit") || boolArgument(request, "commit");
        requireDone(grid.userEdit(intArgument(request, "row"), text, commit), grid);
        return nullptr;
    }

    Json menu(const Json& request) {
        auto& ui = editor_.state();
        const int position = request.contains("position") ? intArgument(request, "position") : 200;
        requireDone(ui.grdMacro.userMouseDown(intArgument(request, "row"), position), ui.grdMacro);
        return ui.mnuUserIndex.shown() ? Json(ui.mnuUserIndex.captions()) : Json();
    }

    Json choose(const Json& request) {
        auto& popup = editor_.state().mnuUserIndex;
        const int index = intArgument(request, "index");
        if (!popup.shown()) {
            throw BadRequest("no menu is shown");
        }
        requireDone(popup.userChoose(index), popup);
        return nullptr;
    }

    Json state(const Json& /*request*/) { return snapshot(editor_.state()); }

    Json events_ = Json::array();
    shell::VRN_MethodEditor editor_;
};

ScriptHost::ScriptHost(services::Services services) : session_(std::make_unique<Session>(std::move(services))) {}

ScriptHost::~ScriptHost() = default;

std::string ScriptHost::handle(std::string_view line) noexcept {
    try {
        // Texts of the system may hold bytes that are not UTF-8: they are replaced rather than failing the reply.
        return session_->reply(line).dump(-1, ' ', false, Json::error_handler_t::replace);
    } catch (const std::exception&) {
        return R"({"ok":false,"error":"the request could not be carried out","events":[]})";
    }
}

void ScriptHost::run(std::istream& in, std::ostream& out) {
    for (std::string line; std::getline(in, line);) {
        out << handle(line) << '\n' << std::flush;
    }
}

}  // namespace vrn::script
