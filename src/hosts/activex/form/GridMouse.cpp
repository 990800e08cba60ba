// What the user does in the grid with the mouse.
#include <windowsx.h>

#include <utility>

#include "hosts/activex/form/GridWindow.h"
#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

using controls::UserRequest;

namespace {

constexpr int hintOffsetX = 12;  // lengths at 96 dpi
constexpr int hintOffsetY = 20;

bool leftButtonIsDown() noexcept {
    return GetAsyncKeyState(GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON) < 0;
}

}  // namespace

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
    const auto part = geometry_.partAt(x, isList(row));
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
    if (takesFocus()) {
        SetFocus(handle());
    }
    if (readOnly()) {
        return;
    }
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
    if (!session().userMayAct() || row < 1 || readOnly()) {
        return;
    }
    const auto part = geometry_.partAt(x, isList(row));
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

}  // namespace vrn::activex
