// Plays the recorded sessions of this folder and compares every reply.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "errors/modErr.h"
#include "hosts/script/ScriptHost.h"
#include "scenarios/ParserWording.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::vector<std::string> linesOf(const fs::path& file) {
    std::ifstream in(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

// One editor and what the runner remembers of its session.
class Session {
  public:
    std::string play(const std::string& request) {
        const auto reply = host_.handle(replaced(request, "\"@LAST_METHOD@\"", lastMethod_));
        if (request.find("\"GetMethodXml\"") != std::string::npos) {
            lastMethod_ = Json::parse(reply).value("result", Json()).dump();
        }
        return replaced(reply, "Version: " + vrn::errors::versionText(), "Version: @VERSION@");
    }

  private:
    vrn::script::ScriptHost host_;
    std::string lastMethod_ = "\"\"";
};

void record(const fs::path& file) {
    Session session;
    std::ostringstream out;
    for (const auto& line : linesOf(file)) {
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
    for (const auto& line : linesOf(file)) {
        ++number;
        if (line.starts_with("> ")) {
            reply = session.play(line.substr(2));
        } else if (line.starts_with("< ")) {
            ++replies;
            const auto expected = vrn::test::withoutParserWording(line.substr(2));
            const auto actual = vrn::test::withoutParserWording(reply);
            // The difference of the JSON is easier to read than two long lines.
            ASSERT_EQ(expected, actual) << file.filename() << ":" << number << "\n"
                                        << Json::diff(Json::parse(expected), Json::parse(actual)).dump(1);
        }
    }
    EXPECT_GT(replies, 0) << file << " holds no reply";
}

class Scenario : public testing::TestWithParam<std::string> {};

TEST_P(Scenario, RepliesAsRecorded) {
    const auto file = fs::path(VRN_SOURCE_DIR) / "tests/scenarios" / (GetParam() + ".transcript");
    fs::current_path(VRN_SOURCE_DIR);
    if (std::getenv("VRN_UPDATE_SCENARIOS") != nullptr) {
        record(file);
    }
    compare(file);
}

std::vector<std::string> scenarios() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::path(VRN_SOURCE_DIR) / "tests/scenarios")) {
        if (entry.path().extension() == ".transcript") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Sessions, Scenario, testing::ValuesIn(scenarios()),
                         [](const auto& test) { return replaced(test.param, "-", "_"); });

}  // namespace
