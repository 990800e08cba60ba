// Lengths and fonts that fit the screen, and windows that must be there.
#pragma once

#include <windows.h>

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

/// The font of the system's messages, kept as long as the program runs.
[[nodiscard]] inline HFONT messageFont() noexcept {
    static HFONT const font = [] {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
        return CreateFontIndirectW(&metrics.lfMessageFont);
    }();
    return font;
}

/// `errors::Error` with the system's reason when a window could not be made.
inline void requireWindow(HWND window) {
    if (window == nullptr) {
        com::throwFailure(HRESULT_FROM_WIN32(GetLastError()));
    }
}

}  // namespace vrn::sample
