// What the user does in the grid, with the mouse and by keys.
#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "hosts/activex/form/GridWindow.h"
#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

using controls::EditStyle;
using controls::UserRequest;

namespace {

constexpr int hintOffsetX = 12;  // lengths at 96 dpi
constexpr int hintOffsetY = 20;
constexpr int menuPosition = (controls::Grid::menuFrom + controls::Grid::menuTo) / 2;

bool isList(const controls::Grid& model, int row) noexcept {
    const auto* const cells = model.row(row);
    return cells != nullptr && cells->style == EditStyle::DropDownList;
}

bool leftButtonIsDown() noexcept {
    return GetAsyncKeyState(GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON) < 0;
}

}  // namespace

LRESULT GridWindow::onInput(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_MOUSEWHEEL:
            // With all rows in view it is for what is around the grid.
            if (geometry().lastTop() > 1) {
                onWheel(GET_WHEEL_DELTA_WPARAM(wParam));
                return 0;
            }
            break;
        case WM_VSCROLL:
            onScroll(LOWORD(wParam));
            return 0;
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            if (onKey(wParam)) {
                return 0;
            }
            break;
        case WM_CHAR:
            onCharacter(static_cast<wchar_t>(wParam));
            return 0;
        case WM_CONTEXTMENU:
            if (lParam == -1) {
                const int row = model_.currentRow();
                openMenuAt(row, geometry().value(row).left);
                return 0;
            }
            if (onContextMenu({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)})) {
                return 0;
            }
            break;
        default:
            return onMouse(message, wParam, lParam);
    }
    return byDefault(message, wParam, lParam);
}

LRESULT GridWindow::onMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const int x = GET_X_LPARAM(lParam);
    const int y = GET_Y_LPARAM(lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
            onPress(x, y);
            return 0;
        case WM_LBUTTONUP:
            onRelease(x, y);
            return 0;
        case WM_LBUTTONDBLCLK:
            onDoubleClick(x, y);
            return 0;
        case WM_RBUTTONDOWN:
            onRightPress(y);
            return 0;
        case WM_CAPTURECHANGED:
            letGoOfMenu();
            return 0;
        case WM_MOUSEMOVE:
            onHover(x, y, (wParam & MK_LBUTTON) != 0);
            return 0;
        case WM_MOUSELEAVE:
            onLeave();
            return 0;
        default:
            return byDefault(message, wParam, lParam);
    }
}

void GridWindow::onPress(int x, int y) {
    const int row = geometry().rowAt(y);
    if (!session().userMayAct()) {
        return;
    }
    SetFocus(handle());
    if (!usable() || row < 1) {
        return;
    }
    const auto part = geometry_.partAt(x, isList(model_, row));
    model_.userMouseMove(-1);
    if (part == GridPart::Menu) {
        pressMenu(row);
        return;
    }
    const bool done = model_.userMouseDown(row, geometry_.position(x)) == UserRequest::Done;
    if (!usable()) {
        return;
    }
    showRow(model_.currentRow());
    if (!done || row != model_.currentRow()) {
        return;
    }
    if (part == GridPart::Arrow && edit(row)) {
        editor_.dropDown();
    } else if (part == GridPart::Value && edit(row)) {
        editor_.openedByPress();
    }
}

void GridWindow::onRightPress(int y) {
    const int row = geometry().rowAt(y);
    if (!session().userMayAct()) {
        return;
    }
    SetFocus(handle());
    // The row stays where it is: the menu comes for the place where the button is let go.
    if (usable() && model_.userGoTo(row) == UserRequest::Done && usable()) {
        model_.userMouseMove(-1);
        markRow(row);
    }
}

// Goes to the row already, which leaves a value that is being entered; the menu comes with the release.
void GridWindow::pressMenu(int row) {
    const LONG pressed = GetMessageTime();
    if (model_.userGoTo(row) != UserRequest::Done || !usable()) {
        return;
    }
    markRow(row);
    const bool messageShown = GetMessageTime() != pressed;
    if (messageShown && !leftButtonIsDown()) {
        // It was about the value that was left, and has swallowed the release.
        openMenu(row);
        return;
    }
    pressedMenu_ = row;
    SetCapture(handle());
    heatMenu(row);
}

void GridWindow::onRelease(int x, int y) {
    const int row = pressedMenu_;
    if (row == 0) {
        return;
    }
    letGoOfMenu();
    if (menuRowAt(x, y) == row) {
        openMenu(row);
    }
}

void GridWindow::letGoOfMenu() noexcept {
    if (const int row = std::exchange(pressedMenu_, 0); row != 0) {
        repaintRow(row);
        if (GetCapture() == handle()) {
            ReleaseCapture();
        }
    }
}

void GridWindow::heatMenu(int row) noexcept {
    repaintRow(hotMenu_);
    repaintRow(row);
    hotMenu_ = row;
}

// The row whose menu field is at a place, 0 for none.
int GridWindow::menuRowAt(int x, int y) const noexcept {
    const int row = geometry_.rowAt(y);
    return row >= 1 && geometry_.partAt(x, false) == GridPart::Menu ? row : 0;
}

bool GridWindow::onContextMenu(POINT screen) {
    ScreenToClient(handle(), &screen);
    const int row = geometry().rowAt(screen.y);
    if (row < 1 || geometry_.partAt(screen.x, false) == GridPart::Nowhere) {
        return false;
    }
    openMenuAt(row, screen.x);
    return true;
}

void GridWindow::onDoubleClick(int x, int y) {
    const int row = geometry().rowAt(y);
    if (!session().userMayAct() || row < 1) {
        return;
    }
    const auto part = geometry_.partAt(x, isList(model_, row));
    if (part == GridPart::Menu) {
        pressMenu(row);
    } else if (edit(row) && part == GridPart::Arrow) {
        editor_.dropDown();
    }
}

void GridWindow::onHover(int x, int y, bool pressed) {
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, handle(), 0};
    TrackMouseEvent(&track);
    const int row = geometry().rowAt(y);
    if (!pressed) {
        letGoOfMenu();
    }
    const int field = menuRowAt(x, y);
    if (const int hot = pressedMenu_ == 0 || field == pressedMenu_ ? field : 0; hot != hotMenu_) {
        heatMenu(hot);
    }
    if (row == hovered_ || !session().userMayAct()) {
        return;
    }
    hovered_ = row;
    auto& hint = session().state().txtToolTip;
    POINT place{x + scaled(hintOffsetX, look().dpi), y + scaled(hintOffsetY, look().dpi)};
    MapWindowPoints(handle(), GetParent(GetParent(handle())), &place, 1);
    hint.moveTo(toTwips(place.x, look().dpi), toTwips(place.y, look().dpi));
    model_.userMouseMove(row < 1 ? -1 : row);
}

void GridWindow::onLeave() {
    hovered_ = -1;
    heatMenu(0);
    if (session().userMayAct()) {
        model_.userMouseMove(-1);
    }
}

void GridWindow::onWheel(int delta) {
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int rows = lines == WHEEL_PAGESCROLL ? geometry().wholeRows() : static_cast<int>(lines);
    // A fine wheel reports a part of a notch at a time.
    wheel_ += delta * rows;
    const int whole = wheel_ / WHEEL_DELTA;
    wheel_ -= whole * WHEEL_DELTA;
    scrollTo(geometry().top - whole);
}

void GridWindow::onScroll(int code) {
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_ALL;
    GetScrollInfo(handle(), SB_VERT, &scroll);
    const int page = geometry().wholeRows();
    switch (code) {
        case SB_LINEUP:
            return scrollTo(geometry_.top - 1);
        case SB_LINEDOWN:
            return scrollTo(geometry_.top + 1);
        case SB_PAGEUP:
            return scrollTo(geometry_.top - page);
        case SB_PAGEDOWN:
            return scrollTo(geometry_.top + page);
        case SB_TOP:
            return scrollTo(1);
        case SB_BOTTOM:
            return scrollTo(geometry_.lastTop());
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return scrollTo(scroll.nTrackPos);
        default:
            return;
    }
}

bool GridWindow::onKey(WPARAM key) {
    if (!session().userMayAct()) {
        return false;
    }
    const bool alt = GetKeyState(VK_MENU) < 0;
    const int row = model_.currentRow();
    const int page = std::max(geometry().wholeRows() - 1, 1);
    if (alt) {
        if ((key == VK_DOWN || key == VK_UP) && isList(model_, row) && edit(row)) {
            editor_.dropDown();
            return true;
        }
        return false;
    }
    switch (key) {
        case VK_UP:
            goTo(row - 1);
            return true;
        case VK_DOWN:
            goTo(row + 1);
            return true;
        case VK_PRIOR:
            goTo(row - page);
            return true;
        case VK_NEXT:
            goTo(row + page);
            return true;
        case VK_HOME:
            goTo(1);
            return true;
        case VK_END:
            goTo(model_.rowCount());
            return true;
        case VK_F2:
        case VK_RETURN:
            static_cast<void>(edit(row));
            return true;
        case VK_F4:
            if (isList(model_, row) && edit(row)) {
                editor_.dropDown();
            }
            return true;
        case VK_TAB:
            // A container that hands keys on before dispatching them has seen to this one already.
            session().goOn(handle(), GetKeyState(VK_SHIFT) < 0);
            return true;
        default:
            return false;
    }
}

void GridWindow::onCharacter(wchar_t character) {
    const bool prints = character >= L' ' && character != 0x7F;
    if (!prints || !session().userMayAct()) {
        return;
    }
    static_cast<void>(geometry());
    if (!editor_.isOpen() && !edit(model_.currentRow())) {
        return;
    }
    // All of the old text is selected, so that the character takes its place; a list selects by it.
    SendMessageW(editor_.window(), WM_CHAR, character, 1);
}

void GridWindow::goTo(int row) {
    const int wanted = std::clamp(row, 1, std::max(model_.rowCount() - 1, 1));
    if (model_.userGoTo(wanted) == UserRequest::Done && usable()) {
        showRow(wanted);
    }
}

void GridWindow::openMenu(int row) {
    if (askForMenu(row)) {
        menuPlace_ = {geometry_.row(row), 0, geometry_.menu(row)};
    }
}

void GridWindow::openMenuAt(int row, int x) {
    if (askForMenu(row)) {
        menuPlace_ = {geometry_.row(row), x, {}};
    }
}

// The menu itself comes by the message loop.
bool GridWindow::askForMenu(int row) {
    if (!session().userMayAct() || row < 1) {
        return false;
    }
    model_.userMouseMove(-1);
    if (!usable()) {
        return false;
    }
    showRow(row);
    model_.userMouseDown(row, menuPosition);
    return usable();
}

bool GridWindow::edit(int row) {
    if (model_.userGoTo(row) != UserRequest::Done || !usable() || model_.row(row) == nullptr) {
        return false;
    }
    showRow(row);
    // The hint has told what it had to: it would stand in the way.
    model_.userMouseMove(-1);
    editor_.close();
    editor_.open(row, geometry_.entry(row));
    return usable() && editor_.isOpen();
}

bool GridWindow::finishEdit(bool take) {
    // The host may take the form away inside the message about a refused value.
    bool accepted = true;
    if (take) {
        accepted = model_.commitEdit();
    } else {
        model_.discardEdit();
    }
    if (!usable()) {
        return false;
    }
    if (!model_.pendingEdit()) {
        editor_.close();
        repaintRow(model_.currentRow());
    }
    return accepted;
}

void GridWindow::editorDone(bool take) {
    const HWND before = GetFocus();
    const bool inForm = before == editor_.window() || session().windowOf(before) != nullptr;
    // Back to the value that was refused, unless the user had left the form. The message has taken the focus meanwhile.
    if (!finishEdit(take) && usable() && model_.enabled() && inForm) {
        SetFocus(handle());
    }
}

void GridWindow::editorLeft(int rows) {
    const int row = editor_.row();
    if (finishEdit(true)) {
        goTo(row + rows);
    }
}

void GridWindow::editorUsed() {
    if (usable() && editor_.isOpen()) {
        scrollTo(geometry().topToShow(editor_.row()));
    }
}

void GridWindow::editorTabbed(bool backwards) {
    const int row = editor_.row();
    if (!finishEdit(true)) {
        return;
    }
    const int next = row + (backwards ? -1 : 1);
    if (next >= 1 && next < model_.rowCount()) {
        static_cast<void>(edit(next));
    } else {
        session().goOn(handle(), backwards);
    }
}

}  // namespace vrn::activex
