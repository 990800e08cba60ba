// What the user does in the grid by keys and with its scroll bar, and how an edit ends.
#include <windowsx.h>

#include <algorithm>

#include "hosts/activex/form/GridWindow.h"

namespace vrn::activex {

using controls::EditStyle;
using controls::UserRequest;

namespace {

constexpr wchar_t controlC = 3;  // the character that Ctrl+C makes
constexpr int menuPosition = (controls::Grid::menuFrom + controls::Grid::menuTo) / 2;

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
        if ((key == VK_DOWN || key == VK_UP) && isList(row) && edit(row)) {
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
            if (isList(row) && edit(row)) {
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
    if (!session().userMayAct() || row < 1 || readOnly()) {
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

bool GridWindow::isList(int row) const noexcept {
    const auto* const cells = model_.row(row);
    return cells != nullptr && cells->style == EditStyle::DropDownList;
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
