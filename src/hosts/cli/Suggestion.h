// What a user may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vrn::cli {

/// The word among `known` that this one looks like a slip of; empty when none is near.
[[nodiscard]] std::string nearest(std::string_view word, const std::vector<std::string>& known);

}  // namespace vrn::cli
