// Lengths and fonts that fit the screen, and windows that must be there.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

#include "com/Com.h"

namespace vrn::sample {

/// The screen's dots per inch; the program keeps to those of the main screen.
[[nodiscard]] inline int dotsPerInch() noexcept {
    HDC const screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dots;
}

/// A length at 96 dpi in pixels.
[[nodiscard]] inline int scaled(int length) noexcept {
    static const int dots = dotsPerInch();
    return MulDiv(length, dots, USER_DEFAULT_SCREEN_DPI);
}

struct DeleteFont {
    void operator()(HFONT font) const noexcept { DeleteObject(font); }
};
using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteFont>;

/// The font of the system's messages as it is now.
[[nodiscard]] inline Font messageFont() noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    return Font(CreateFontIndirectW(&metrics.lfMessageFont));
}

/// The height of a line.
[[nodiscard]] inline int lineHeight(HFONT font) noexcept {
    HDC const screen = GetDC(nullptr);
    HGDIOBJ const before = SelectObject(screen, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(screen, &metrics);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return metrics.tmHeight;
}

/// `errors::Error` with the system's reason when a window could not be made.
inline void requireWindow(HWND window) {
    if (window == nullptr) {
        com::throwFailure(HRESULT_FROM_WIN32(GetLastError()));
    }
}

}  // namespace vrn::sample
