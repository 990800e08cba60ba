// What the user does in the grid, with the mouse and by keys.
#include <windowsx.h>

#include <algorithm>

#include "hosts/activex/form/GridWindow.h"
#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

using controls::EditStyle;
using controls::UserRequest;

namespace {

constexpr int hintOffsetX = 12;  // lengths at 96 dpi
constexpr int hintOffsetY = 20;
constexpr wchar_t controlC = 3;                               // the character that Ctrl+C makes
constexpr int menuPosition = GridGeometry::valueColumn + 50;  // in the part of a value that opens the menu

bool isList(const controls::Grid& model, int row) noexcept {
    const auto* const cells = model.row(row);
    return cells != nullptr && cells->style == EditStyle::DropDownList;
}

}  // namespace

LRESULT GridWindow::onInput(UINT message, WPARAM wParam, LPARAM lParam) {
    const int x = GET_X_LPARAM(lParam);
    const int y = GET_Y_LPARAM(lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
            onPress(x, y, message == WM_RBUTTONDOWN);
            return 0;
        case WM_LBUTTONDBLCLK:
            onDoubleClick(x, y);
            return 0;
        case WM_MOUSEMOVE:
            onHover(x, y);
            return 0;
        case WM_MOUSELEAVE:
            onLeave();
            return 0;
        case WM_MOUSEWHEEL:
            onWheel(GET_WHEEL_DELTA_WPARAM(wParam));
            return 0;
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
                openMenu();
                return 0;
            }
            break;
        default:
            break;
    }
    return byDefault(message, wParam, lParam);
}

void GridWindow::onPress(int x, int y, bool right) {
    if (!session().userMayAct()) {
        return;
    }
    const int row = geometry().rowAt(y);
    const bool again = row == model_.currentRow() && GetFocus() == handle();
    if (takesFocus()) {
        SetFocus(handle());
    }
    if (!usable() || row < 1) {
        return;
    }
    if (readOnly()) {
        readRow(row);
        return;
    }
    const auto part = geometry_.partAt(x, isList(model_, row));
    pressed_ = {x, y};
    model_.userMouseMove(-1);
    // The arrow is not a part that opens the menu, wherever it stands.
    const int position = part == GridPart::Arrow ? 0 : geometry_.position(x);
    const bool done = model_.userMouseDown(row, position) == UserRequest::Done;
    if (!usable()) {
        return;
    }
    showRow(model_.currentRow());
    if (!done || right || session().state().mnuUserIndex.shown() || row != model_.currentRow()) {
        return;
    }
    if (part == GridPart::Arrow && edit(row)) {
        editor_.dropDown();
    } else if (part == GridPart::Value && again) {
        static_cast<void>(edit(row));
    }
}

void GridWindow::onDoubleClick(int x, int y) {
    const int row = geometry().rowAt(y);
    if (!session().userMayAct() || row < 1) {
        return;
    }
    if (edit(row) && geometry_.partAt(x, isList(model_, row)) == GridPart::Arrow) {
        editor_.dropDown();
    }
}

void GridWindow::onHover(int x, int y) {
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, handle(), 0};
    TrackMouseEvent(&track);
    const int row = geometry().rowAt(y);
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
    const int row = shownRow();
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
    if (character == controlC) {
        copyValue();
        return;
    }
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
    if (readOnly()) {
        readRow(wanted);
        return;
    }
    if (model_.userGoTo(wanted) == UserRequest::Done && usable()) {
        showRow(wanted);
    }
}

// The menu by keyboard: below the left end of the value.
void GridWindow::openMenu() {
    const int row = model_.currentRow();
    if (!session().userMayAct() || row < 1 || readOnly()) {
        return;
    }
    showRow(row);
    const RECT value = geometry_.value(row);
    pressed_ = {value.left, value.bottom};
    model_.userMouseDown(row, menuPosition);
}

bool GridWindow::edit(int row) {
    if (model_.userGoTo(row) != UserRequest::Done || !usable() || model_.row(row) == nullptr) {
        return false;
    }
    showRow(row);
    // The hint has told what it had to: it would stand in the way.
    model_.userMouseMove(-1);
    editor_.close();
    editor_.open(row, geometry_.value(row));
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
