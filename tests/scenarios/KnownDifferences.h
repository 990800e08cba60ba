// What two hosts of the protocol may tell otherwise, and nothing else: the one list of it.
#pragma once

#include <nlohmann/json.hpp>

namespace vrn::test {

/// A reply without the line numbers of its events, which are those of a host's own build.
[[nodiscard]] nlohmann::json withoutLineNumbers(nlohmann::json reply);

/// A snapshot without what no window and no member of the control shows.
[[nodiscard]] nlohmann::json shownByWindows(nlohmann::json snapshot);

}  // namespace vrn::test
