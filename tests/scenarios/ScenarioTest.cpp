// Plays the recorded sessions of this folder and compares every reply.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "errors/modErr.h"
#include "hosts/script/ScriptHost.h"
#include "scenarios/Recorded.h"
#include "scenarios/Transcript.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

const fs::path folder = fs::path(VRN_SOURCE_DIR) / "tests/scenarios";

// One editor and what the runner remembers of its session.
class Session {
  public:
    std::string play(const std::string& request) {
        const auto reply = vrn::script::answer(*host_, method_.filledInto(request));
        method_.see(request, reply);
        return vrn::test::replaced(reply, "Version: " + vrn::errors::versionText(), "Version: @VERSION@");
    }

  private:
    std::unique_ptr<vrn::script::Operations> host_ = vrn::script::makeScriptHost();
    vrn::test::LastMethod method_;
};

void record(const fs::path& file) {
    Session session;
    std::ostringstream out;
    for (const auto& line : vrn::test::linesOf(file)) {
        if (line.starts_with("< ")) {
            continue;
        }
        out << line << '\n';
        if (line.starts_with("> ")) {
            out << "< " << session.play(line.substr(2)) << '\n';
        }
    }
    std::ofstream(file) << out.str();
}

void compare(const fs::path& file) {
    Session session;
    std::string reply;
    int number = 0;
    int replies = 0;
    for (const auto& line : vrn::test::linesOf(file)) {
        ++number;
        if (line.starts_with("> ")) {
            reply = session.play(line.substr(2));
        } else if (line.starts_with("< ")) {
            ++replies;
            const auto expected = vrn::test::recordedPart(line.substr(2));
            const auto actual = vrn::test::recordedPart(reply);
            // The difference of the JSON is easier to read than two long lines.
            ASSERT_EQ(expected, actual) << file.filename() << ":" << number << "\n"
                                        << Json::diff(Json::parse(expected), Json::parse(actual)).dump(1);
        }
    }
    EXPECT_GT(replies, 0) << file << " holds no reply";
}

class Scenario : public testing::TestWithParam<std::string> {};

TEST_P(Scenario, RepliesAsRecorded) {
    const auto file = folder / (GetParam() + ".transcript");
    fs::current_path(VRN_SOURCE_DIR);
    if (std::getenv("VRN_UPDATE_SCENARIOS") != nullptr) {
        record(file);
    }
    compare(file);
}

std::vector<std::string> scenarios() {
    std::vector<std::string> names;
    for (const auto& file : vrn::test::transcriptsIn(folder)) {
        names.push_back(file.stem().string());
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Sessions, Scenario, testing::ValuesIn(scenarios()),
                         [](const auto& test) { return vrn::test::replaced(test.param, "-", "_"); });

}  // namespace
