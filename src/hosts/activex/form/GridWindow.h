// The parameter grid: a window class of our own with a fixed header row and two columns whose divider can be dragged.
//
// Mouse: a press in the left part of a value opens the menu of values; in the arrow, the drop-down list; elsewhere it goes to
// the row, and in the current row it opens the editor, as a double click does anywhere.
// Keys: arrows, Page Up, Page Down, Home and End go from row to row; F2 and Enter open the editor; a character opens it and is
// typed there, which in a drop-down list selects; Alt+Down opens a drop-down list; the menu key opens the menu of values.
// In the editor: Enter takes the value, Escape drops it, TAB takes it and edits the next row, Up and Down take it and go on.
// TAB outside of the editor, or behind the last row, goes on to the next control.
#pragma once

#include "controls/Grid.h"
#include "hosts/activex/form/GridEditor.h"
#include "hosts/activex/form/GridGeometry.h"
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

    [[nodiscard]] GridEditor& editor() noexcept { return editor_; }
    /// Where a menu for the last press belongs, on the screen.
    [[nodiscard]] POINT menuPlace() const noexcept;

    // For assistive technology.
    /// Keeps everything that an answer may need, see Session.
    [[nodiscard]] Session::Running enter() noexcept { return Session::Running(session()); }
    /// Whether window and model are still there.
    [[nodiscard]] bool usable() const noexcept { return handle() != nullptr && session().open(); }
    [[nodiscard]] const controls::Grid& model() const noexcept { return model_; }
    [[nodiscard]] const GridGeometry& geometry();
    void goTo(int row);

  protected:
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
    void showRow(int row);
    void paint(HDC context, const RECT& area);
    LRESULT accessible(WPARAM wParam, LPARAM lParam);
    void tell(DWORD event, int row) const noexcept;

    // What the user does (GridInput.cpp).
    void onPress(int x, int y, bool right);
    void onDoubleClick(int x, int y);
    void onHover(int x, int y);
    void onLeave();
    void onWheel(int delta);
    void onScroll(int code);
    bool onKey(WPARAM key);
    void onCharacter(wchar_t character);
    void openMenu();
    [[nodiscard]] bool edit(int row);
    void editorDone(bool take) override;
    void editorLeft(int rows) override;
    void editorDoneSoon(bool take) noexcept override;
    void editorAbandoned() noexcept override;
    void editorTabbed(bool backwards) override;
    /// Ends the edit; true when nothing was refused and the grid is still there.
    bool finishEdit(bool take);

    controls::Grid& model_;
    GridEditor editor_;
    GridGeometry geometry_;
    GridAccessible* accessible_ = nullptr;  // told when the window goes; clients may hold it for longer
    HWND header_ = nullptr;
    POINT pressed_{};
    int nameWidth_ = 0;  // as the user has dragged it, at 96 dpi; 0 before
    int hovered_ = -1;
    int shownCurrent_ = 0;  // the row drawn as the current one
    int wheel_ = 0;
    bool rowsStale_ = false;
    bool placingColumns_ = false;
};

}  // namespace vrn::activex
