// The font of grid and list by the system's locale.
#pragma once

#include <cstdint>
#include <string_view>

namespace vrn::shell {

struct FontRule {
    std::uint8_t Charset;
    std::string_view Name;  ///< empty: the system's own choice
    int Size;               ///< points
};

/// The rule for a system default locale, given as a Windows locale identifier.
[[nodiscard]] FontRule fontRuleFor(std::uint32_t lcid) noexcept;

}  // namespace vrn::shell
