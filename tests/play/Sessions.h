// What is played to both hosts, and what they said.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vrn::play {

/// A folder holds a session NAME as NAME.requests, and each host's replies to it as NAME.native and NAME.control; a line each.
constexpr const char* requestsOfSession = ".requests";
constexpr const char* repliesOfEngine = ".native";
constexpr const char* repliesOfControl = ".control";

/// A session of `steps` random requests, each followed by one for the snapshot.
[[nodiscard]] std::vector<std::string> randomSession(unsigned seed, int steps);

/// Compares what the two hosts said in one session. Says the first difference, and how to get it again; "" when there is none.
[[nodiscard]] std::string firstDifference(const std::filesystem::path& requests);

}  // namespace vrn::play
