// The user at the parameter grid: pressing the mouse in a row, entering a value, reading what is there.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleacc.h>

#include <string>
#include <vector>

#include "com/Com.h"
#include "hosts/sample/script/UserInput.h"

namespace vrn::sample {

class GridWindow : public ChildWindow {
  public:
    explicit GridWindow(HWND form);

    /// With the header, which is row 0.
    [[nodiscard]] int rowCount() const;
    [[nodiscard]] std::string name(int row) const;
    [[nodiscard]] std::string value(int row) const;
    /// What hovering over each of the parameters shows. Leaves the grid again.
    [[nodiscard]] std::vector<std::string> hints() const;

    /// Where the mouse is pressed for a row, at a position in the grid's own units. Scrolls the row into view.
    [[nodiscard]] LPARAM placeOf(int row, int position) const;
    void click(LPARAM place) const noexcept;

    /// Goes to a row and opens its value. The window to enter it in, null when the grid does not open it.
    [[nodiscard]] HWND openEditor(int row) const;
    /// The editor that is open, null when none is.
    [[nodiscard]] HWND editor() const noexcept;
    /// Enters a text, or chooses it from a list. False when the list does not have it.
    static bool enter(HWND editor, const std::string& text);
    /// Whether a row takes the text, as far as that can be told while another value is still being entered: the user puts that
    /// one aside, looks into the row's list, and comes back to it. Without such a value, only entering the text will tell.
    [[nodiscard]] bool offers(int row, const std::string& text) const;
    static void press(HWND editor, WPARAM key) noexcept { SendMessageW(editor, WM_KEYDOWN, key, 0); }

  private:
    [[nodiscard]] RECT placeOf(const com::Variant& child) const;
    [[nodiscard]] RECT valuePlace(int row) const;
    [[nodiscard]] RECT menuPlace(int row) const;
    void bringIntoView(int row) const;

    HWND form_;
    com::ComPtr<IAccessible> accessible_;
};

}  // namespace vrn::sample
