#include "hosts/script/ScriptHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "method/SmallSet.h"
#include "text/TextFile.h"

namespace vrn::test {
namespace {

using Json = nlohmann::ordered_json;

class ScriptHostTest : public ::testing::Test {
  protected:
    Json ask(const Json& request) { return Json::parse(script::answer(*host, request.dump())); }
    Json result(const Json& request) {
        const auto reply = ask(request);
        EXPECT_TRUE(reply.at("ok").get<bool>()) << request << reply;
        return reply.value("result", Json());
    }
    /// The text of the error, which has no number as every fault of a request.
    std::string fault(const std::string& line) {
        const auto reply = Json::parse(script::answer(*host, line));
        EXPECT_FALSE(reply.at("ok").get<bool>()) << line;
        EXPECT_FALSE(reply.contains("number")) << line;
        EXPECT_FALSE(reply.contains("result")) << line;
        return reply.at("error").get<std::string>();
    }
    Json state() { return result({{"do", "state"}}); }
    Json value(int row) { return state()["grdMacro"]["rows"][static_cast<std::size_t>(row - 1)]["value"]; }
    void edit(int row, const std::string& text, bool commit = true) {
        result({{"do", "edit"}, {"row", row}, {"text", text}, {"commit", commit}});
    }
    Json load(const DocumentTexts& texts) {
        return ask({{"do", "SetXmlDocuments"},
                    {"macros", texts.macros},
                    {"objects", texts.objectList},
                    {"method", texts.method},
                    {"config", texts.configuration}});
    }

    std::unique_ptr<script::Operations> host = script::makeScriptHost();
};

std::vector<std::string> keysOf(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& item : object.items()) {
        keys.push_back(item.key());
    }
    return keys;
}

TEST_F(ScriptHostTest, EveryRequest) {
    const auto loaded = load(smallSet({"WASH(5,W1,7)", "COUNT(3)"}));
    EXPECT_EQ(loaded.dump(),
              R"({"ok":true,"result":null,"events":[{"event":"messageBox","text":"Unsupported document version :1",)"
              R"("title":"Method Editor Component - Method Editor Control","flags":64}]})");
    EXPECT_TRUE(result({{"do", "GetMethodXml"}}).get<std::string>().ends_with("</Signature></Method>"));
    EXPECT_EQ(result({{"do", "MethodIsChanged"}}), true);
    EXPECT_EQ(result({{"do", "MethodIsChanged"}, {"value", true}}), nullptr);
    EXPECT_TRUE(result({{"do", "AuditTrail"}}).is_string());
    EXPECT_EQ(result({{"do", "refreshControls"}}), nullptr);
    result({{"do", "select"}, {"control", "lstMethodMacroList"}, {"index", 1}});
    result({{"do", "select"}, {"control", "cboSyringe"}, {"text", "5<&uL"}});
    EXPECT_EQ(value(1), "3");
    edit(1, "4");
    EXPECT_EQ(result({{"do", "click"}, {"control", "cmdReplace"}}), nullptr);
    result({{"do", "type"}, {"control", "txtMethodDescription"}, {"text", "a\nb"}});
    EXPECT_EQ(state()["txtMethodDescription"]["text"], "a\r\nb");
    EXPECT_EQ(result({{"do", "menu"}, {"row", 1}}), Json::parse(R"(["SL.Any","Default: 3"])"));
    EXPECT_EQ(result({{"do", "choose"}, {"index", 1}}), nullptr);
    EXPECT_EQ(value(1), "3");
    EXPECT_EQ(result({{"do", "menu"}, {"row", 1}, {"position", 149}}), nullptr);
    for (const std::string member : {"DisableSyringe", "DisableDescription", "DisableMethod"}) {
        EXPECT_EQ(result({{"do", member}, {"value", true}}), nullptr);
    }
    EXPECT_EQ(fault(R"({"do":"click","control":"cmdInsert"})"), "cmdInsert is disabled");
}

TEST_F(ScriptHostTest, EveryKindOfBadRequest) {
    load(smallSet({"WASH(5,W1,7)"}));
    const auto before = state();
    const std::vector<std::pair<std::string, std::string>> bad{
        {"", "the line is not JSON"},
        {"\xff", "the line is not JSON"},
        {R"({"do":"state"} x)", "the line is not JSON"},
        {R"(["do"])", "the line is not a JSON object"},
        {"{}", "argument 'do' is missing"},
        {R"({"do":1})", "argument 'do' must be a string"},
        {R"({"do":"State"})", "unknown operation 'State'"},
        {R"({"do":"DisableMethod"})", "argument 'value' is missing"},
        {R"({"do":"DisableMethod","value":1})", "argument 'value' must be true or false"},
        {R"({"do":"MethodIsChanged","value":null})", "argument 'value' must be true or false"},
        {R"({"do":"select","control":"lst","index":0})", "'lst' is not a control for this request"},
        {R"({"do":"select","control":"lstMethodMacroList","text":"01 WASH"})", "argument 'index' is missing"},
        {R"({"do":"select","control":"lstMethodMacroList","index":1})", "lstMethodMacroList has no such entry"},
        {R"({"do":"select","control":"cboSyringe","index":-1})", "cboSyringe has no such entry"},
        {R"({"do":"select","control":"cboSyringe","index":1.0})", "argument 'index' must be a whole number"},
        {R"({"do":"select","control":"cboSyringe","index":2147483648})", "argument 'index' is out of range"},
        {R"({"do":"select","control":"cboSyringe","index":18446744073709551615})", "argument 'index' is out of range"},
        {R"({"do":"select","control":"cboSelectedMacro","text":"wash"})", "cboSelectedMacro has no such entry"},
        {R"({"do":"click","control":"cmdDefCycle"})", "cmdDefCycle is hidden"},
        {R"({"do":"type","control":"txtMethodDescription","text":5})", "argument 'text' must be a string"},
        {R"({"do":"edit","row":0,"text":"1"})", "grdMacro has no such entry"},
        {R"({"do":"edit","row":4,"text":"1"})", "grdMacro has no such entry"},
        {R"({"do":"edit","row":2,"text":"W9"})", "grdMacro has no such entry"},
        {R"({"do":"edit","row":1,"text":"1","commit":"no"})", "argument 'commit' must be true or false"},
        {R"({"do":"menu","row":4})", "grdMacro has no such entry"},
        {R"({"do":"choose","index":0})", "no menu is shown"},
        {R"({"do":"SetXmlDocuments","macros":"","objects":"","method":""})", "argument 'config' is missing"},
        {R"({"do":"SetXmlDocuments","macros":[]})", R"(argument 'macros' must be XML text or {"file": PATH})"},
        {R"({"do":"SetXmlDocuments","macros":{"path":"x"}})", "argument 'file' is missing"},
        {R"({"do":"SetXmlDocuments","macros":{"file":"/no/such"}})",
         "cannot read file '/no/such': no such file or folder"},
        {R"({"do":"SetXmlDocuments","macros":{"file":"/"}})", "cannot read file '/': is a folder"}};
    for (const auto& [line, error] : bad) {
        EXPECT_EQ(fault(line), error) << line;
    }
    EXPECT_EQ(state(), before);
}

TEST_F(ScriptHostTest, ErrorsOfMembersCarryTheirNumber) {
    auto texts = smallSet({"COUNT(3)"});
    texts.method =
        "<Method LastModifiedTimestamp='1'><VERSION>1</VERSION><Macros><MacroData><MacroName>x</MacroName>"
        "</MacroData></Macros></Method>";
    const auto events = load(texts).at("events");
    EXPECT_EQ(events.back().dump(),
              R"({"event":"MethodEditorError","lngError":5,"strError":"Invalid procedure call or argument",)"
              R"("strApplication":"vrnMethodEditorVersion: )" +
                  errors::versionText() +
                  R"(","strModule":"vrnMthd","strProcedure":"SetXmlDocuments ","intLineNumber":0})");
    EXPECT_EQ(ask({{"do", "DisableDescription"}, {"value", false}}).dump(),
              R"({"ok":false,"error":"Invalid procedure call or argument","number":5,"events":[]})");
}

TEST_F(ScriptHostTest, FilesInAnyEncoding) {
    const auto path = std::filesystem::temp_directory_path() / ("vrn-host-" + std::to_string(::getpid()) + ".xml");
    const auto loadBytes = [&](const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
        auto texts = smallSet({"IDLE()"});
        return ask({{"do", "SetXmlDocuments"},
                    {"macros", {{"file", path.string()}}},
                    {"objects", texts.objectList},
                    {"method", ""},
                    {"config", ""}});
    };
    EXPECT_TRUE(loadBytes("<?xml version='1.0' encoding='windows-1252'?>" + catalogue(macro("\xE9", {})))["ok"]);
    EXPECT_EQ(state()["cboSelectedMacro"]["items"][0], "é");
    EXPECT_EQ(loadBytes("").at("events").size(), 1U);  // a node without children
    const auto refused = loadBytes("<?xml version='1.0' encoding='utf-8'?><\xff/>");
    EXPECT_FALSE(refused["ok"] || refused.contains("number"));
    std::filesystem::remove(path);
}

TEST_F(ScriptHostTest, AFileThatIsNoDocument) {
    const auto path = std::filesystem::temp_directory_path() / ("vrn-host-" + std::to_string(::getpid()) + ".xml");
    const auto answerFor = [&] {
        return ask({{"do", "SetXmlDocuments"}, {"macros", {{"file", path.string()}}}}).at("error").get<std::string>();
    };
    std::ofstream(path) << "<?xml version='1.0' encoding='UTF-16'?><Macros/>";
    EXPECT_EQ(answerFor(), "cannot read file '" + path.string() +
                               "': The XML text declares the encoding \"UTF-16\" but is written in single bytes.");
    std::filesystem::resize_file(path, text::largestFile + 1);
    EXPECT_EQ(answerFor(), "file '" + path.string() + "' " + std::string(text::tooLarge));
    std::filesystem::remove(path);
}

TEST_F(ScriptHostTest, SnapshotKeysInOrder) {
    const auto empty = state();
    EXPECT_EQ(keysOf(empty),
              (std::vector<std::string>{"IsChanged", "booDisable", "booBaselineLoaded", "booCycleDateChanged",
                                        "txtMethodDescription", "cboSyringe", "cboSelectedMacro", "lstMethodMacroList",
                                        "cmdInsert", "cmdReplace", "cmdDelete", "cmdDefCycle", "lblCycleDateChanged",
                                        "grdMacro", "arrMethodMacros", "strAtomLine"}));
    EXPECT_EQ(empty["arrMethodMacros"].dump(), R"([{"MacroName":"","MacroValues":null}])");
    load(smallSet({"WASH(5,W1,7)", "IDLE()"}));
    const auto loaded = state();
    EXPECT_EQ(
        loaded["grdMacro"]["rows"][1].dump(),
        R"({"name":"Station","value":"W1","object":true,"hint":"WASH_STATION","items":["W1","W2","SL.Station"]})");
    EXPECT_EQ(loaded["lstMethodMacroList"].dump(), R"({"items":["01 WASH","02 IDLE"],"index":0,"enabled":true})");
    EXPECT_EQ(loaded["cmdDefCycle"].dump(), R"({"enabled":true,"visible":false})");
    EXPECT_EQ(loaded["arrMethodMacros"].dump(),
              R"([{"MacroName":"WASH","MacroValues":["5","W1","7"]},{"MacroName":"IDLE","MacroValues":null}])");
}

TEST_F(ScriptHostTest, PendingEditIsLeftByTheNextOperation) {
    load(smallSet({"COUNT(3)", "COUNT(4)"}));
    edit(1, "5", false);
    EXPECT_EQ(value(1), "3");
    for (const std::string quiet : {"refreshControls", "state"}) {
        result({{"do", quiet}});
    }
    result({{"do", "click"}, {"control", "cmdReplace"}});
    EXPECT_EQ(value(1), "5");
    edit(1, "99", false);
    const auto typed = ask({{"do", "type"}, {"control", "txtMethodDescription"}, {"text", "x"}});
    EXPECT_EQ(typed["events"][0]["text"], "The entered value is out of range.");
    EXPECT_EQ(value(1), "5");
    EXPECT_TRUE(ask({{"do", "click"}, {"control", "cmdReplace"}})["events"].empty());
    // The host's own calls meet it, or end it.
    edit(1, "6", false);
    EXPECT_EQ(result({{"do", "MethodIsChanged"}}), true);
    EXPECT_EQ(state()["arrMethodMacros"][0]["MacroValues"][0], "6");
    edit(1, "7", false);
    result({{"do", "DisableMethod"}, {"value", true}});
    result({{"do", "DisableMethod"}, {"value", false}});
    result({{"do", "GetMethodXml"}});
    EXPECT_EQ(value(1), "6");
}

TEST_F(ScriptHostTest, MenuIsOpenUntilAnswered) {
    load(smallSet({"COUNT(3)"}));
    const auto open = [&] { EXPECT_EQ(result({{"do", "menu"}, {"row", 1}}).size(), 2U); };
    const std::string choose = R"({"do":"choose","index":0})";
    open();
    state();
    result(Json::parse(choose));
    EXPECT_EQ(value(1), "SL.Any");
    EXPECT_EQ(fault(choose), "no menu is shown");
    open();
    EXPECT_EQ(fault(R"({"do":"choose","index":2})"), "mnuUserIndex has no such entry");
    EXPECT_EQ(fault(choose), "no menu is shown");
    for (const std::string other : {"refreshControls", "GetMethodXml", "AuditTrail"}) {
        open();
        result({{"do", other}});
        EXPECT_EQ(fault(choose), "no menu is shown");
    }
}

TEST_F(ScriptHostTest, AnswersLineByLine) {
    std::istringstream in("{\"do\":\"refreshControls\"}\r\n\n{\"do\":\"nothing\"}");
    std::ostringstream out;
    script::answerLines(*host, in, out);
    EXPECT_EQ(out.str(),
              "{\"ok\":true,\"result\":null,\"events\":[]}\n"
              "{\"ok\":false,\"error\":\"the line is not JSON\",\"events\":[]}\n"
              "{\"ok\":false,\"error\":\"unknown operation 'nothing'\",\"events\":[]}\n");
    EXPECT_FALSE(Json::parse(script::answer(*host, std::string(100000, '[')))["ok"]);
    EXPECT_FALSE(Json::parse(script::answer(*host, std::string(100000, '[') + std::string(100000, ']')))["ok"]);
}

TEST_F(ScriptHostTest, LongSessionWithMalformedLines) {
    load(smallSet({"COUNT(3)", "COUNT(4)"}));
#ifdef __SANITIZE_ADDRESS__
    constexpr int requests = 20000;
#else
    constexpr int requests = 100000;
#endif
    const std::vector<std::pair<std::string, bool>> lines{
        {R"({"do":"edit","row":1,"text":"5"})", true},
        {R"({"do":"edit","row":1,"text":"5)", false},
        {R"({"do":"select","control":"lstMethodMacroList","index":1})", true},
        {"\x80\x80", false},
        {R"({"do":"menu","row":1})", true},
        {R"({"do":"choose","index":7})", false},
        {R"({"do":"click","control":"cmdInsert"})", true},
        {R"({"do":"click","control":"cmdDelete"})", true},
        {R"({"do":"edit","row":1,"text":"6","commit":false})", true},
        {R"({"do":"click"})", false}};
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < requests; ++i) {
        const auto& [line, ok] = lines[static_cast<std::size_t>(i) % lines.size()];
        const auto reply = script::answer(*host, line);
        ASSERT_EQ(reply.starts_with(R"({"ok":true,)"), ok) << line << reply;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
    EXPECT_EQ(state()["lstMethodMacroList"]["items"].size(), 2U);
    EXPECT_EQ(value(1), "3");  // the last deletion shows the catalogue's default, and the next edit is still pending
    result({{"do", "refreshControls"}});
    EXPECT_NE(result({{"do", "GetMethodXml"}}).get<std::string>().find("(6)</MacroValues>"), std::string::npos);
}

}  // namespace
}  // namespace vrn::test
