// How a reply is held against a recorded one.
#pragma once

#include <string>

namespace vrn::test {

/// What of a reply must be the same on this system as in a recording.
[[nodiscard]] std::string recordedPart(const std::string& reply);

}  // namespace vrn::test
