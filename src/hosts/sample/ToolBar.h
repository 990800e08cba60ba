// The tool bar: one button per command, with an icon and its name.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <commctrl.h>

namespace vrn::sample {

class ToolBar {
  public:
    ~ToolBar() { ImageList_Destroy(icons_); }
    ToolBar() = default;
    ToolBar(const ToolBar&) = delete;
    ToolBar& operator=(const ToolBar&) = delete;

    void create(HWND parent, int id);
    [[nodiscard]] HWND window() const noexcept { return window_; }
    /// The buttons become as large as their captions need. The font stays the caller's.
    void setFont(HFONT font) noexcept;
    /// Takes the width of its parent.
    void resize() const noexcept { SendMessageW(window_, TB_AUTOSIZE, 0, 0); }
    [[nodiscard]] int height() const noexcept;
    void enable(int command, bool enabled) const noexcept;
    void press(int command, bool pressed) const noexcept;

  private:
    HWND window_ = nullptr;
    HIMAGELIST icons_ = nullptr;
};

}  // namespace vrn::sample
