// Lengths are written down for 96 dots per inch.
#pragma once

namespace vrn::activex {

inline constexpr int standardDpi = 96;

/// A length given at 96 dpi, to the nearest pixel.
[[nodiscard]] constexpr int scaled(int length, int dpi) noexcept {
    const int dots = length * dpi;
    return (dots + (dots < 0 ? -standardDpi : standardDpi) / 2) / standardDpi;
}

}  // namespace vrn::activex
