#include "hosts/script/Protocol.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <istream>
#include <ostream>
#include <span>
#include <unordered_map>
#include <utility>

#include "errors/Error.h"
#include "text/TextFile.h"

namespace vrn::script {

namespace {

constexpr int positionInMenuColumn = 200;
constexpr const char* sequenceList = "lstMethodMacroList";
constexpr std::array lists{sequenceList, "cboSelectedMacro", "cboSyringe"};
constexpr std::array buttons{"cmdInsert", "cmdReplace", "cmdDelete", "cmdDefCycle"};
constexpr std::array textBoxes{"txtMethodDescription"};

std::string readFile(const std::string& path) {
    const std::filesystem::path name(std::u8string(path.begin(), path.end()));
    std::ifstream file(name, std::ios::binary);
    std::string bytes;
    std::array<char, 65536> block{};
    while (bytes.size() <= text::largestFile && (file.read(block.data(), block.size()) || file.gcount() > 0)) {
        bytes.append(block.data(), static_cast<std::size_t>(file.gcount()));
    }
    if (bytes.size() > text::largestFile) {
        throw BadRequest("file '" + path + "' " + std::string(text::tooLarge));
    }
    // A folder can be opened as well; only reading it fails.
    if (!file.is_open() || file.bad()) {
        std::error_code error;
        const bool isThere = std::filesystem::exists(name, error);
        throw BadRequest("cannot read file '" + path + "'" +
                         (isThere ? std::filesystem::is_directory(name, error) ? ": is a folder" : ""
                          : error ? ": " + error.message()
                                  : ": no such file or folder"));
    }
    try {
        return text::decodeXmlFile(bytes);
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

std::string controlArgument(const Json& request, std::span<const char* const> controls) {
    auto name = stringArgument(request, "control");
    if (std::find(controls.begin(), controls.end(), name) == controls.end()) {
        throw BadRequest("'" + name + "' is not a control for this request");
    }
    return name;
}

Json setXmlDocuments(Operations& operations, const Json& request) {
    const auto macros = documentArgument(request, "macros");
    const auto objects = documentArgument(request, "objects");
    const auto method = documentArgument(request, "method");
    const auto config = documentArgument(request, "config");
    operations.SetXmlDocuments(macros, objects, method, config);
    return nullptr;
}

Json getMethodXml(Operations& operations, const Json& /*request*/) {
    auto method = operations.GetMethodXml();
    return method ? Json(std::move(*method)) : Json();
}

Json methodIsChanged(Operations& operations, const Json& request) {
    if (!request.contains("value")) {
        return operations.MethodIsChanged();
    }
    operations.MethodIsChanged(boolArgument(request, "value"));
    return nullptr;
}

Json disableMethod(Operations& operations, const Json& request) {
    operations.DisableMethod(boolArgument(request, "value"));
    return nullptr;
}

Json disableDescription(Operations& operations, const Json& request) {
    operations.DisableDescription(boolArgument(request, "value"));
    return nullptr;
}

Json disableSyringe(Operations& operations, const Json& request) {
    operations.DisableSyringe(boolArgument(request, "value"));
    return nullptr;
}

Json auditTrail(Operations& operations, const Json& /*request*/) { return operations.AuditTrail(); }

Json refreshControls(Operations& operations, const Json& /*request*/) {
    operations.refreshControls();
    return nullptr;
}

Json select(Operations& operations, const Json& request) {
    const auto control = controlArgument(request, lists);
    if (request.contains("index")) {
        operations.select(control, intArgument(request, "index"));
    } else if (control != sequenceList) {
        operations.select(control, stringArgument(request, "text"));
    } else {
        throw BadRequest("argument 'index' is missing");
    }
    return nullptr;
}

Json click(Operations& operations, const Json& request) {
    operations.click(controlArgument(request, buttons));
    return nullptr;
}

Json type(Operations& operations, const Json& request) {
    controlArgument(request, textBoxes);
    operations.type(stringArgument(request, "text"));
    return nullptr;
}

Json edit(Operations& operations, const Json& request) {
    const auto text = stringArgument(request, "text");
    const bool commit = !request.contains("commit") || boolArgument(request, "commit");
    operations.edit(intArgument(request, "row"), text, commit);
    return nullptr;
}

Json menu(Operations& operations, const Json& request) {
    const int position = request.contains("position") ? intArgument(request, "position") : positionInMenuColumn;
    const auto captions = operations.menu(intArgument(request, "row"), position);
    return captions ? Json(*captions) : Json();
}

Json choose(Operations& operations, const Json& request) {
    operations.choose(intArgument(request, "index"));
    return nullptr;
}

Json state(Operations& operations, const Json& /*request*/) { return operations.state(); }

Json parse(std::string_view line) {
    auto request = Json::parse(line, nullptr, false);
    if (request.is_discarded()) {
        throw BadRequest("the line is not JSON");
    }
    if (!request.is_object()) {
        throw BadRequest("the line is not a JSON object");
    }
    return request;
}

Json perform(Operations& operations, const Json& request) {
    using Operation = Json (*)(Operations&, const Json&);
    static const std::unordered_map<std::string, Operation> all{
        {"SetXmlDocuments", setXmlDocuments},
        {"GetMethodXml", getMethodXml},
        {"MethodIsChanged", methodIsChanged},
        {"DisableMethod", disableMethod},
        {"DisableDescription", disableDescription},
        {"DisableSyringe", disableSyringe},
        {"AuditTrail", auditTrail},
        {"refreshControls", refreshControls},
        {"select", select},
        {"click", click},
        {"type", type},
        {"edit", edit},
        {"menu", menu},
        {"choose", choose},
        {"state", state},
    };
    const auto name = stringArgument(request, "do");
    const auto operation = all.find(name);
    if (operation == all.end()) {
        throw BadRequest("unknown operation '" + name + "'");
    }
    if (name != "state" && name != "choose") {
        operations.closeMenu();
    }
    return operation->second(operations, request);
}

Json reply(Operations& operations, std::string_view line) {
    Json reply = {{"ok", true}};
    try {
        reply["result"] = perform(operations, parse(line));
    } catch (const errors::Error& error) {
        reply = {{"ok", false}, {"error", error.description()}, {"number", error.number()}};
    } catch (const BadRequest& error) {
        reply = {{"ok", false}, {"error", error.what()}};
    }
    reply["events"] = operations.takeEvents();
    return reply;
}

}  // namespace

void refuseEntry(const std::string& control) { throw BadRequest(control + " has no such entry"); }

void refuseUse(const std::string& control, bool visible) {
    throw BadRequest(control + (visible ? " is disabled" : " is hidden"));
}

void refuseMenu() { throw BadRequest("no menu is shown"); }

Json Operations::takeEvents() { return std::exchange(events_, Json::array()); }

void Operations::reportError(const errors::MethodEditorErrorArguments& error) {
    events_.push_back({{"event", "MethodEditorError"},
                       {"lngError", error.lngError},
                       {"strError", error.strError},
                       {"strApplication", error.strApplication},
                       {"strModule", error.strModule},
                       {"strProcedure", error.strProcedure},
                       {"intLineNumber", error.intLineNumber}});
}

void Operations::reportMessageBox(const std::string& text, const std::string& title, std::int32_t flags) {
    events_.push_back({{"event", "messageBox"}, {"text", text}, {"title", title}, {"flags", flags}});
}

std::string answer(Operations& operations, std::string_view line) noexcept {
    try {
        static_cast<void>(operations.takeEvents());  // of nobody's request
        // Texts of the system may hold bytes that are not UTF-8: they are replaced rather than failing the reply.
        return reply(operations, line).dump(-1, ' ', false, Json::error_handler_t::replace);
    } catch (const std::exception&) {
        return R"({"ok":false,"error":"the request could not be carried out","events":[]})";
    }
}

void answerLines(Operations& operations, std::istream& in, std::ostream& out) {
    for (std::string line; std::getline(in, line);) {
        out << answer(operations, line) << '\n' << std::flush;
    }
}

}  // namespace vrn::script
