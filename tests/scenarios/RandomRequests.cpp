#include "scenarios/RandomRequests.h"

namespace vrn::test {

namespace {

using Json = RandomRequests::Json;

const std::vector<std::string> values{"5",       "20",     "999",     "-1",          "",    "1e1", "Tray 1",   "Wash 2",
                                      "SL.Mine", "a(b,c)", "\"&<>\t", "é漢\"🧪", " 7 ", "0x7", "Agitator", "1,5"};

Json file(const std::string& path) { return {{"file", path}}; }

Json set(const std::string& folder) {
    return {{"do", "SetXmlDocuments"},
            {"macros", file(folder + "/macros.xml")},
            {"objects", file(folder + "/objects.xml")},
            {"config", file(folder + "/config.xml")},
            {"method", ""}};
}

}  // namespace

Json RandomRequests::tutorial(const std::string& method) {
    auto request = set("samples/tutorial");
    if (!method.empty()) {
        request["method"] = file(method);
    }
    return request;
}

// Mostly one of the first parameters.
int RandomRequests::row() { return rarely(6) ? below(9) : 1 + below(3); }

Json RandomRequests::cycle() {
    return {{"do", "select"}, {"control", "cboSelectedMacro"}, {"index", rarely(8) ? below(70) : below(3)}};
}

Json RandomRequests::selection() {
    switch (below(6)) {
        case 0:
            return {{"do", "select"}, {"control", "cboSyringe"}, {"index", below(3)}};
        case 1:
            return {{"do", "select"}, {"control", "lstMethodMacroList"}, {"index", below(5) - 1}};
        case 2:
            return {{"do", "select"},
                    {"control", oneOf<std::string>({"cboSelectedMacro", "cboSyringe"})},
                    {"text", oneOf<std::string>({"LIQUID", "HEADSPACE", "10uL", "nothing of the kind", ""})}};
        case 3:
            return {{"do", "select"}, {"control", "lstMethodMacroList"}, {"index", below(3)}};
        default:
            return cycle();
    }
}

// No blanks at the ends of a line: they are lost on reading, so that such a description does change once.
Json RandomRequests::description() {
    const auto first = oneOf<std::string>({"", "a & b", "&lt;", "\"'>", "x]]>y"});
    const auto lineEnd = oneOf<std::string>({"\n", "\r\n", "\n\n"});
    const auto last = oneOf<std::string>({"", "é漢🧪"});
    return {{"do", "type"}, {"control", "txtMethodDescription"}, {"text", first + lineEnd + last}};
}

Json RandomRequests::odd() {
    const auto text =
        oneOf<std::string>({" 7 ", "a\rb", "a\n\rb", "\ta\t", std::string("a\0b", 3), "\x01\x1F", "\xEF\xBF\xBE",
                            "\xEF\xBB\xBF", "\xC2\x85\xE2\x80\xA8", "5\r\n", "5\n6", "\r\n\r\n"});
    if (rarely(3)) {
        return {
            {"do", "type"}, {"control", "txtMethodDescription"}, {"text", rarely(30) ? std::string(31000, 'x') : text}};
    }
    if (rarely(2)) {
        // Beside a value that is still being entered, which the next request leaves.
        return {{"do", "edit"}, {"row", row()}, {"text", "3"}, {"commit", false}};
    }
    return {{"do", "edit"}, {"row", row()}, {"text", text}, {"commit", !rarely(3)}};
}

Json RandomRequests::next() {
    if (std::exchange(menuAsked_, false) && !rarely(4)) {
        return {{"do", "choose"}, {"index", below(3)}};
    }
    switch (below(12)) {
        case 0:
        case 1:
        case 2:
            return selection();
        case 3:
        case 4:
            return {{"do", "click"},
                    {"control", oneOf<std::string>({"cmdInsert", "cmdInsert", "cmdInsert", "cmdReplace", "cmdDelete",
                                                    "cmdDefCycle"})}};
        case 5:
        case 6:
        case 7:
            return {{"do", "edit"}, {"row", row()}, {"text", oneOf(values)}, {"commit", !rarely(3)}};
        case 8:
            menuAsked_ = true;
            return {{"do", "menu"}, {"row", row()}, {"position", 140 + below(120)}};
        case 9:
            return rarely(3) ? Json{{"do", "choose"}, {"index", below(5)}} : description();
        case 10:
            return {{"do", oneOf<std::string>({"GetMethodXml", "MethodIsChanged", "AuditTrail", "refreshControls"})}};
        default:
            return {{"do",
                     oneOf<std::string>({"DisableMethod", "DisableSyringe", "DisableDescription", "MethodIsChanged"})},
                    {"value", rarely(4)}};
    }
}

Json RandomRequests::document(const Json& good) {
    if (!rarely(2)) {
        return good;
    }
    return oneOf<std::string>({"", " ", "<", "<Method><a></Method>", "<Method/>", "<Macros><Macro/></Macros>",
                               "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>", "<a>&#0;</a>", "<a b='1' b='2'/>",
                               "<?xml version=\"1.0\"?>\r\n<é漢>🧪</é漢>"});
}

Json RandomRequests::documents() {
    static const std::vector<std::string> instrumentMethods{
        "multi-step-signed", "signed",     "tampered",      "unsigned",        "version-02", "version-03",
        "no-version",        "version-05", "unknown-cycle", "unknown-syringe", "outdated"};
    static const std::string twoSteps = "samples/tutorial/methods/two-steps.xml";
    const bool small = !rarely(3);
    auto request = set(small ? "samples/tutorial" : "samples/instrument");
    if (!rarely(3)) {
        // Now and then the other set's method.
        request["method"] =
            file(small != rarely(8) ? twoSteps : "samples/instrument/methods/" + oneOf(instrumentMethods) + ".xml");
    }
    if (rarely(5)) {
        const auto which = oneOf<std::string>({"macros", "objects", "config", "method", "method"});
        request[which] = document(request[which]);
    }
    return request;
}

std::string RandomRequests::fault() {
    return oneOf<std::string>({
        "",
        "{",
        "[]",
        "{\"do\":\"nothing\"}",
        "{\"do\":5}",
        "{\"do\":\"select\",\"control\":\"cmdInsert\",\"index\":0}",
        "{\"do\":\"select\",\"control\":\"lstMethodMacroList\",\"text\":\"01 WASH\"}",
        "{\"do\":\"click\",\"control\":\"lstMethodMacroList\"}",
        "{\"do\":\"edit\",\"row\":1}",
        "{\"do\":\"edit\",\"row\":1.5,\"text\":\"\"}",
        "{\"do\":\"edit\",\"row\":99999999999,\"text\":\"\"}",
        "{\"do\":\"edit\",\"row\":-1,\"text\":\"5\"}",
        "{\"do\":\"menu\",\"row\":-1}",
        "{\"do\":\"menu\",\"row\":0,\"position\":-5}",
        "{\"do\":\"menu\",\"row\":1,\"position\":2147483647}",
        "{\"do\":\"choose\",\"index\":-1}",
        "{\"do\":\"DisableMethod\"}",
        "{\"do\":\"MethodIsChanged\",\"value\":1}",
        "{\"do\":\"type\",\"control\":\"cmdInsert\",\"text\":\"\"}",
        "{\"do\":\"SetXmlDocuments\",\"macros\":{\"file\":\"no such file\"},\"objects\":\"\",\"config\":\"\",\"method\":\"\"}",
    });
}

}  // namespace vrn::test
