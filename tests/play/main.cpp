// play: writes sessions for the scripted hosts, and compares what the hosts said.
//   play write FOLDER STEPS                    every recorded scenario, and random sessions of so many steps
//   play write FOLDER STEPS SEED...            random sessions of these seeds only
//   play compare FOLDER                        ends with 1 and the first difference of each session that has one
#include <fstream>
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "play/Sessions.h"
#include "scenarios/Transcript.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned randomSessions = 200;
constexpr std::size_t mostToTell = 5;

void writeSession(const fs::path& folder, const std::string& name, const std::vector<std::string>& requests) {
    std::ofstream file(folder / (name + vrn::play::requestsOfSession), std::ios::binary);
    file.exceptions(std::ios::failbit | std::ios::badbit);
    for (const auto& request : requests) {
        file << request << '\n';
    }
    file.close();
}

void write(const fs::path& folder, int steps, std::span<const std::string> seeds) {
    const auto random = [&](unsigned seed) {
        writeSession(folder, "seed-" + std::to_string(seed), vrn::play::randomSession(seed, steps));
    };
    for (const auto& seed : seeds) {
        random(static_cast<unsigned>(std::stoul(seed)));
    }
    if (!seeds.empty()) {
        return;
    }
    for (const auto& transcript : vrn::test::transcriptsIn(fs::path(VRN_SOURCE_DIR) / "tests/scenarios")) {
        writeSession(folder, "scenario-" + transcript.stem().string(), vrn::test::requestsOf(transcript));
    }
    for (unsigned seed = 1; seed <= randomSessions; ++seed) {
        random(seed);
    }
}

int compare(const fs::path& folder) {
    std::size_t sessions = 0;
    std::size_t requests = 0;
    std::vector<std::string> differences;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != vrn::play::requestsOfSession) {
            continue;
        }
        ++sessions;
        requests += vrn::test::linesOf(entry.path()).size();
        if (auto difference = vrn::play::firstDifference(entry.path()); !difference.empty()) {
            differences.push_back(std::move(difference));
        }
    }
    for (std::size_t i = 0; i < differences.size() && i < mostToTell; ++i) {
        std::cout << differences[i] << '\n';
    }
    std::cout << sessions << " sessions, " << requests << " requests: " << differences.size() << " sessions differ\n";
    return sessions > 0 && differences.empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** texts) {
    try {
        const std::vector<std::string> arguments(texts + 1, texts + count);
        if (arguments.size() >= 3 && arguments[0] == "write") {
            write(arguments[1], std::stoi(arguments[2]), std::span(arguments).subspan(3));
            return 0;
        }
        if (arguments.size() == 2 && arguments[0] == "compare") {
            return compare(arguments[1]);
        }
        std::cerr << "play write FOLDER STEPS [SEED...] | play compare FOLDER\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "play: " << error.what() << '\n';
        return 2;
    }
}
