// Sizes: the resolution of a window, the fonts that go with it, and lengths in between.
#pragma once

#include <windows.h>

#include <string_view>

#include "hosts/activex/form/Owners.h"
#include "shell/modMethod.h"

namespace vrn::activex {

inline constexpr int standardDpi = 96;
inline constexpr int twipsPerInch = 1440;

/// A length given at 96 dpi.
[[nodiscard]] inline int scaled(int length, int dpi) noexcept { return MulDiv(length, dpi, standardDpi); }
[[nodiscard]] inline float toTwips(int pixels, int dpi) noexcept {
    return static_cast<float>(pixels) * twipsPerInch / static_cast<float>(dpi);
}
[[nodiscard]] inline int fromTwips(float twips, int dpi) noexcept {
    return static_cast<int>(twips * static_cast<float>(dpi) / twipsPerInch);
}

[[nodiscard]] inline int widthOf(const RECT& rect) noexcept { return rect.right - rect.left; }
[[nodiscard]] inline int heightOf(const RECT& rect) noexcept { return rect.bottom - rect.top; }

/// The resolution that a window is shown with: its own where the system knows one, the screen's before Windows 10.
[[nodiscard]] int dpiOf(HWND window) noexcept;

/// The font of the system's messages and dialogs.
[[nodiscard]] UniqueFont messageFont(int dpi) noexcept;
/// A font that was made for the screen, for another resolution.
[[nodiscard]] UniqueFont fontAt(HFONT font, int dpi) noexcept;
/// The font of grid and list. A rule without a name takes the typeface of the system's messages.
[[nodiscard]] UniqueFont ruleFont(const shell::FontRule& rule, int dpi);

struct TextSize {
    int lineHeight = 0;
    int averageWidth = 0;
};
[[nodiscard]] TextSize textSize(HDC context, HFONT font) noexcept;
[[nodiscard]] int textWidth(HDC context, std::wstring_view text) noexcept;

}  // namespace vrn::activex
