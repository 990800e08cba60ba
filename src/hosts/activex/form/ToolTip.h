// The system's tool tip of one window, for a text that changes with the place under the mouse.
#pragma once

#include <windows.h>

#include <string>

namespace vrn::activex {

/// What a tip says about a place.
struct Tip {
    RECT area{};        ///< for which the text holds, in the window's client area
    std::wstring text;  ///< nothing is shown without one
};

class ToolTip {
  public:
    ToolTip() = default;
    ~ToolTip() { end(); }
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;

    /// The mouse has sent this message to the window: the tip is shown when it rests. Without a tool tip of the system's, nothing
    /// happens: a window can do without.
    void follow(HWND window, HINSTANCE module, Tip tip, int dpi, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    /// To be called before the window goes.
    void end() noexcept;
    /// The tip's window, null before the first text.
    [[nodiscard]] HWND window() const noexcept { return tip_; }

  private:
    void begin(HWND window, HINSTANCE module) noexcept;
    void set(Tip tip, int dpi) noexcept;

    HWND owner_ = nullptr;
    HWND tip_ = nullptr;
    Tip shown_;
};

}  // namespace vrn::activex
