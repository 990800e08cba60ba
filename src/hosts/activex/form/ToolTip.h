// The system's tool tip of one window, for a text that changes.
#pragma once

#include <windows.h>

#include <string>

namespace vrn::activex {

class ToolTip {
  public:
    ToolTip() = default;
    ~ToolTip() { end(); }
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;

    [[nodiscard]] explicit operator bool() const noexcept { return tip_ != nullptr; }
    /// Without one, nothing is shown: a window can do without its tool tip.
    void begin(HWND window, HINSTANCE module) noexcept;
    /// To be called before the window goes.
    void end() noexcept;
    /// An empty text shows nothing.
    void setText(std::wstring text, int dpi) noexcept;

  private:
    HWND window_ = nullptr;
    HWND tip_ = nullptr;
};

}  // namespace vrn::activex
