#include "play/Sessions.h"

#include <nlohmann/json.hpp>

#include "scenarios/KnownDifferences.h"
#include "scenarios/RandomRequests.h"
#include "scenarios/Transcript.h"

namespace vrn::play {

namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace {

constexpr std::size_t mostToShow = 2000;
constexpr int documentsOneIn = 12;
constexpr int faultOneIn = 20;
constexpr int oddOneIn = 8;

bool asksForState(const std::string& request) {
    const auto json = Json::parse(request, nullptr, false);
    return json.is_object() && json.value("do", Json()) == "state";
}

std::string shortened(const std::string& text) {
    return text.size() <= mostToShow ? text : text.substr(0, mostToShow) + " ...";
}

std::string differenceOf(const std::string& request, const std::string& native, const std::string& control) {
    auto expected = test::withoutLineNumbers(Json::parse(native));
    const auto actual = test::withoutLineNumbers(Json::parse(control));
    if (asksForState(request)) {
        expected["result"] = test::shownByWindows(expected["result"]);
    }
    if (expected == actual) {
        return {};
    }
    return "engine:  " + shortened(expected.dump()) + "\ncontrol: " + shortened(actual.dump()) + "\n" +
           shortened(Json::diff(expected, actual).dump(1)) + "\n";
}

std::string nextRequest(test::RandomRequests& requests) {
    if (requests.rarely(faultOneIn)) {
        return requests.fault();
    }
    if (requests.rarely(oddOneIn)) {
        return requests.odd().dump();
    }
    return requests.rarely(documentsOneIn) ? requests.documents().dump() : requests.next().dump();
}

}  // namespace

std::vector<std::string> randomSession(unsigned seed, int steps) {
    test::RandomRequests requests(seed);
    std::vector<std::string> lines{requests.documents().dump()};
    for (int step = 1; step < steps; ++step) {
        lines.push_back(step == 1 ? requests.cycle().dump() : nextRequest(requests));
        lines.emplace_back(R"({"do":"state"})");
    }
    return lines;
}

std::string firstDifference(const fs::path& requests) {
    const auto name = requests.stem().string();
    const auto asked = test::linesOf(requests);
    const auto native = test::linesOf(fs::path(requests).replace_extension(repliesOfEngine));
    const auto control = test::linesOf(fs::path(requests).replace_extension(repliesOfControl));
    for (std::size_t i = 0; i < asked.size() && i < native.size() && i < control.size(); ++i) {
        if (const auto difference = differenceOf(asked[i], native[i], control[i]); !difference.empty()) {
            return name + ", request " + std::to_string(i + 1) + ": " + shortened(asked[i]) + "\n" + difference;
        }
    }
    if (asked.empty() || native.size() != asked.size() || control.size() != asked.size()) {
        return name + ": " + std::to_string(asked.size()) + " requests, " + std::to_string(native.size()) +
               " replies of the engine, " + std::to_string(control.size()) + " of the control\n";
    }
    return {};
}

}  // namespace vrn::play
