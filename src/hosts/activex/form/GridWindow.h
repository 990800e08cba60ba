// The parameter grid: a window class of our own with a fixed header row and two columns whose divider can be dragged.
//
// Mouse: a press in a value opens the editor; in the arrow, the drop-down list; in a name it goes to the row, and a double click
// opens the editor. The field at the end of a row is a button: it opens the menu of values when it is let go, so that nothing is
// chosen by a hand that shakes. The right button opens that menu anywhere in a row.
// Keys: arrows, Page Up, Page Down, Home and End go from row to row; F2 and Enter open the editor; a character opens it and is
// typed there, which in a drop-down list selects; Alt+Down and F4 open a drop-down list; the menu key opens the menu of values.
// In the editor: Enter takes the value, Escape drops it, TAB takes it and edits the next row, Up and Down take it and go on.
// Ctrl+C copies the value of the row. In a grid that is read-only, mouse and keys go from row to row and nothing else.
// TAB outside of the editor, or behind the last row, goes on to the next control.
#pragma once

#include "controls/Grid.h"
#include "hosts/activex/form/GridEditor.h"
#include "hosts/activex/form/GridGeometry.h"
#include "hosts/activex/form/MenuPeer.h"
#include "hosts/activex/form/Peer.h"

namespace vrn::activex {

class GridAccessible;

class GridWindow final : public Peer, private GridEditorSite {
  public:
    GridWindow(Session& session, controls::Grid& model, ControlId id) noexcept;
    ~GridWindow() override;

    void lookChanged() override;
    [[nodiscard]] bool takesFocus() const noexcept override;
    LRESULT onNotify(const NMHDR& notification) override;

    // For the layout.
    [[nodiscard]] int rowHeight() const noexcept { return geometry_.rowHeight; }
    [[nodiscard]] int headerHeight() const noexcept { return geometry_.headerHeight; }
    [[nodiscard]] GridEditor& editor() noexcept { return editor_; }
    /// Where the menu that was last asked for belongs, on the screen.
    [[nodiscard]] MenuPlace menuPlace() const noexcept;

    // For assistive technology.
    /// Keeps everything that an answer may need, see Session.
    [[nodiscard]] Session::Running enter() noexcept { return Session::Running(session()); }
    /// Whether window and model are still there.
    [[nodiscard]] bool usable() const noexcept { return handle() != nullptr && session().open(); }
    [[nodiscard]] const controls::Grid& model() const noexcept { return model_; }
    [[nodiscard]] const GridGeometry& geometry();
    void goTo(int row);
    /// The row that is drawn as the current one: the model's or, while the grid can only be read, the user's place in it.
    [[nodiscard]] int shownRow() const noexcept;

    // Reading (GridReading.cpp).
    /// The texts of a row that its cells are too narrow for, one a line.
    [[nodiscard]] std::wstring cutText(int row);
    [[nodiscard]] int hoveredRow() const noexcept { return hovered_; }
    [[nodiscard]] Tip tipAt(POINT place) override;
    /// Opens the menu of values at the field for it.
    void openMenu(int row);
    [[nodiscard]] bool menuPressed(int row) const noexcept { return row == pressedMenu_; }

  protected:
    [[nodiscard]] bool readable() const noexcept override { return true; }
    void setReadOnly(bool readOnly) override;
    [[nodiscard]] Making making(HWND parent) const override;
    void update(controls::Change change) override;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    LRESULT onInput(UINT message, WPARAM wParam, LPARAM lParam);

    // Shape (GridWindow.cpp).
    void createParts();
    void resize();
    void rowsChanged();
    void placeColumns(int nameWidth);
    void scrollTo(int top);
    void placeEditor();
    void beSomewhere() noexcept;
    void repaintRow(int row) const noexcept;
    void markRow(int row) noexcept;
    void showRow(int row);
    void paint(HDC context, const RECT& area);
    LRESULT accessible(WPARAM wParam, LPARAM lParam);
    void tell(DWORD event, int row) const noexcept;
    void readRow(int row);
    void copyValue() const;

    // With the mouse (GridMouse.cpp).
    LRESULT onMouse(UINT message, WPARAM wParam, LPARAM lParam);
    void onPress(int x, int y);
    void onRightPress(int y);
    void onRelease(int x, int y);
    void onDoubleClick(int x, int y);
    void onHover(int x, int y, bool pressed);
    void onLeave();
    void pressMenu(int row);
    void letGoOfMenu() noexcept;
    void heatMenu(int row) noexcept;
    [[nodiscard]] int menuRowAt(int x, int y) const noexcept;
    [[nodiscard]] bool onContextMenu(POINT screen);

    // By keys and with the scroll bar (GridInput.cpp).
    void onWheel(int delta);
    void onScroll(int code);
    bool onKey(WPARAM key);
    void onCharacter(wchar_t character);
    void openMenuAt(int row, int x);
    [[nodiscard]] bool askForMenu(int row);
    [[nodiscard]] bool isList(int row) const noexcept;
    [[nodiscard]] bool edit(int row);
    void editorDone(bool take) override;
    void editorLeft(int rows) override;
    void editorDoneSoon(bool take) noexcept override;
    void editorAbandoned() noexcept override;
    void editorTabbed(bool backwards) override;
    void editorUsed() override;
    /// Ends the edit; true when nothing was refused and the grid is still there.
    bool finishEdit(bool take);

    controls::Grid& model_;
    GridEditor editor_;
    GridGeometry geometry_;
    GridAccessible* accessible_ = nullptr;  // told when the window goes; clients may hold it for longer
    HWND header_ = nullptr;
    MenuPlace menuPlace_;  // in the client area
    int pressedMenu_ = 0;  // the row whose menu field is held down
    int hotMenu_ = 0;      // and that which the mouse is on
    int nameWidth_ = 0;    // as the user has dragged it, at 96 dpi; 0 before
    int hovered_ = -1;
    int readRow_ = 0;       // where the user is in a grid that can only be read
    int shownCurrent_ = 0;  // the row drawn as the current one
    int wheel_ = 0;
    bool rowsStale_ = false;
    bool placingColumns_ = false;
};

}  // namespace vrn::activex
