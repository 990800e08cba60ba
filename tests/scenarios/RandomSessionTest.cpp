// Sessions that nobody thought of: random requests from a seed, and what must hold after each of them.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "hosts/script/ScriptHost.h"

namespace {

using Json = nlohmann::json;

class RandomSession {
  public:
    explicit RandomSession(unsigned seed) : random_(seed) {
        ask(load(""));
        ask(load("samples/tutorial/methods/two-steps.xml"));
    }

    void step() {
        const auto request = anyRequest();
        SCOPED_TRACE(request.dump());
        const auto reply = ask(request);
        ASSERT_TRUE(reply.at("ok").is_boolean() && reply.at("events").is_array());
        // A failing procedure would say so here; those that a session may raise are not failures of the program.
        for (const auto& event : reply.at("events")) {
            ASSERT_NE(event.value("lngError", 0), 51) << event;
        }
        checkState(ask({{"do", "state"}}).at("result"));
    }

    // What the host takes back loads without a word, and is written again as it was.
    void checkRoundTrip() {
        ask({{"do", "DisableMethod"}, {"value", false}});
        ask({{"do", "select"}, {"control", "lstMethodMacroList"}, {"index", 0}});
        const auto method = ask({{"do", "GetMethodXml"}}).at("result");
        if (method.is_null()) {
            return;
        }
        auto again = load("");
        again["method"] = method;
        ask(again);
        EXPECT_EQ(ask({{"do", "MethodIsChanged"}}).at("result"), false);
        EXPECT_EQ(ask({{"do", "GetMethodXml"}}).at("result"), method);
    }

  private:
    Json ask(const Json& request) { return Json::parse(host_.handle(request.dump())); }

    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }
    template <typename T>
    T oneOf(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }

    static Json load(const std::string& method) {
        const std::string set = "samples/tutorial/";
        Json request = {{"do", "SetXmlDocuments"}, {"method", ""}};
        for (const auto* const name : {"macros", "objects", "config"}) {
            request[name] = {{"file", set + name + ".xml"}};
        }
        if (!method.empty()) {
            request["method"] = {{"file", method}};
        }
        return request;
    }

    Json anyRequest() {
        static const std::vector<std::string> texts{"5",      "20",      "999",    "-1",    "",    "1e1", "Tray 1",
                                                    "Wash 2", "SL.Mine", "a(b,c)", "\"&<>", "é漢", " 7 ", "Agitator"};
        switch (below(12)) {
            case 0:
                return {{"do", "select"}, {"control", "lstMethodMacroList"}, {"index", below(5)}};
            case 1:
                return {{"do", "select"}, {"control", "cboSelectedMacro"}, {"index", below(4)}};
            case 2:
                return {{"do", "select"}, {"control", "cboSyringe"}, {"index", below(3)}};
            case 3:
            case 4:
                return {{"do", "click"},
                        {"control", oneOf<std::string>({"cmdInsert", "cmdInsert", "cmdReplace", "cmdDelete"})}};
            case 5:
            case 6:
                return {{"do", "edit"}, {"row", below(8)}, {"text", oneOf(texts)}, {"commit", below(3) > 0}};
            case 7:
                return {{"do", "menu"}, {"row", below(8)}, {"position", 140 + below(120)}};
            case 8:
                return {{"do", "choose"}, {"index", below(5)}};
            case 9:
                // Not " 7 ": blanks at the ends of a line are lost on reading, so that such a description does change once.
                return {{"do", "type"},
                        {"control", "txtMethodDescription"},
                        {"text",
                         oneOf<std::string>({"", "a & b", "&lt;", "\"'>"}) + "\n" + oneOf<std::string>({"", "é漢"})}};
            case 10:
                return {
                    {"do", oneOf<std::string>({"GetMethodXml", "MethodIsChanged", "AuditTrail", "refreshControls"})}};
            default:
                return {{"do", oneOf<std::string>({"DisableMethod", "DisableSyringe", "DisableDescription"})},
                        {"value", below(4) == 0}};
        }
    }

    // Rows and records stay in step and numbered, and the selection is a row that is there.
    static void checkState(const Json& state) {
        const auto& rows = state.at("lstMethodMacroList").at("items");
        const auto& records = state.at("arrMethodMacros");
        ASSERT_EQ(records.size(), std::max<std::size_t>(rows.size(), 1));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            ASSERT_EQ(rows[i],
                      (i < 9 ? "0" : "") + std::to_string(i + 1) + " " + records[i].at("MacroName").get<std::string>());
        }
        ASSERT_LT(state.at("lstMethodMacroList").at("index").get<int>(), static_cast<int>(rows.size()));
        const bool stepButtons = state.at("cmdDelete").at("enabled");
        ASSERT_FALSE(stepButtons && state.at("booDisable").get<bool>());
    }

    std::mt19937 random_;
    vrn::script::ScriptHost host_;
};

TEST(RandomSessions, HoldWhatMustHold) {
    std::filesystem::current_path(VRN_SOURCE_DIR);
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomSession session(seed);
        for (int step = 0; step < 150 && !testing::Test::HasFailure(); ++step) {
            session.step();
        }
        session.checkRoundTrip();
        ASSERT_FALSE(HasFailure());
    }
}

}  // namespace
