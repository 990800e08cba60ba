// What two hosts of the protocol may tell otherwise, and nothing else: the one list of it.
#pragma once

#include <nlohmann/json.hpp>

namespace vrn::test {

/// A reply without what the XML parser of a system tells in words of its own, and without line numbers. Replies of two systems
/// are the same when these are.
[[nodiscard]] nlohmann::json withoutParsersOwn(nlohmann::json reply);

/// A snapshot without what no window and no member of the control shows.
[[nodiscard]] nlohmann::json shownByWindows(nlohmann::json snapshot);

}  // namespace vrn::test
