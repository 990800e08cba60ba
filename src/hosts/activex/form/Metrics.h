// Sizes: the resolution of a window, the fonts that go with it, and lengths in between.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "hosts/activex/form/Layout.h"
#include "hosts/activex/form/Owners.h"
#include "hosts/activex/form/Scale.h"
#include "shell/modMethod.h"

namespace vrn::activex {

inline constexpr int twipsPerInch = 1440;

[[nodiscard]] inline float toTwips(int pixels, int dpi) noexcept {
    return static_cast<float>(pixels) * twipsPerInch / static_cast<float>(dpi);
}
[[nodiscard]] inline int fromTwips(float twips, int dpi) noexcept {
    return static_cast<int>(twips * static_cast<float>(dpi) / twipsPerInch);
}

[[nodiscard]] inline RECT toRect(const Place& place) noexcept {
    return {place.left, place.top, place.right, place.bottom};
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
/// Of a caption in which "&" marks a key and is not drawn.
[[nodiscard]] int captionWidth(HDC context, std::wstring caption);
/// What a text that is cut ends in.
inline constexpr const wchar_t* ellipsis = L"\u2026";

}  // namespace vrn::activex
