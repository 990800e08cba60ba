// A user's hands and eyes on the control's windows: found by their identifiers, worked by messages, read by messages. All of it
// is for the thread of the windows.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "hosts/activex/form/ControlIds.h"

namespace vrn::sample {

/// What a window says of itself.
[[nodiscard]] std::string textOf(HWND window);

/// One of the control's child windows.
class ChildWindow {
  public:
    /// `form` is the control's outermost window, `name` the child control's name.
    ChildWindow(HWND form, const std::string& name);

    [[nodiscard]] HWND handle() const noexcept { return window_; }
    /// What a click would meet: the window's own flags, whatever the ones around it have. One that can only be read counts as
    /// disabled.
    [[nodiscard]] bool enabled() const noexcept {
        return (style() & WS_DISABLED) == 0 && GetPropW(window_, activex::readOnlyProperty) == nullptr;
    }
    [[nodiscard]] bool visible() const noexcept { return (style() & WS_VISIBLE) != 0; }
    [[nodiscard]] std::string text() const { return textOf(window_); }
    void takeFocus() const noexcept { SetFocus(window_); }

  protected:
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return SendMessageW(window_, message, wParam, lParam);
    }
    /// Tells the window around what the user did to this one.
    void notify(int code) const noexcept;

  private:
    [[nodiscard]] LONG style() const noexcept { return GetWindowLongW(window_, GWL_STYLE); }

    HWND window_;
};

class ButtonWindow : public ChildWindow {
  public:
    using ChildWindow::ChildWindow;
    void click() const noexcept { send(BM_CLICK); }
};

class TextWindow : public ChildWindow {
  public:
    using ChildWindow::ChildWindow;
    /// Puts a text in place of all that is there, as by pasting.
    void replaceAll(const std::string& text) const;
};

/// A list box or a combo box.
class ListWindow : public ChildWindow {
  public:
    ListWindow(HWND form, const std::string& name);
    [[nodiscard]] int count() const noexcept { return static_cast<int>(send(messages_.count)); }
    [[nodiscard]] int selected() const noexcept { return static_cast<int>(send(messages_.getIndex)); }
    [[nodiscard]] std::string item(int index) const;
    [[nodiscard]] std::vector<std::string> items() const;
    void choose(int index) const noexcept;

  private:
    struct Messages {
        UINT count, getIndex, setIndex, length, text;
        int chosen;
    };
    static const Messages listMessages;
    static const Messages comboMessages;

    const Messages& messages_;
};

/// All of a text, put in place of another one in an edit window.
void replaceText(HWND edit, const std::string& text);

}  // namespace vrn::sample
