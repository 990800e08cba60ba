// Random sessions with the engine, and what must hold after each of their requests.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "hosts/script/ScriptHost.h"
#include "scenarios/RandomRequests.h"

namespace {

using vrn::test::RandomRequests;
using Json = RandomRequests::Json;

class RandomSession {
  public:
    explicit RandomSession(unsigned seed) : requests_(seed) {
        ask(RandomRequests::tutorial(""));
        ask(RandomRequests::tutorial("samples/tutorial/methods/two-steps.xml"));
    }

    void step() {
        const auto request = requests_.next();
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
        auto again = RandomRequests::tutorial("");
        again["method"] = method;
        ask(again);
        EXPECT_EQ(ask({{"do", "MethodIsChanged"}}).at("result"), false);
        EXPECT_EQ(ask({{"do", "GetMethodXml"}}).at("result"), method);
    }

  private:
    Json ask(const Json& request) { return Json::parse(vrn::script::answer(*host_, request.dump())); }

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

    RandomRequests requests_;
    std::unique_ptr<vrn::script::Operations> host_ = vrn::script::makeScriptHost();
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
