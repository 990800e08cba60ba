#include "hosts/sample/script/GridInput.h"

#include <commctrl.h>

#include <algorithm>

#include "hosts/activex/form/ControlIds.h"
#include "text/windows/Wide.h"

namespace vrn::sample {

namespace {

// In the grid's own units, the field that opens the menu of a row's values is from here to there, wherever it is drawn.
constexpr int menuFrom = 150;
constexpr int menuTo = 250;
constexpr LONG farthest = 0x7FFF;  // what a message's parameter can hold

com::Variant childId(int row) { return com::Variant(std::int32_t{row}); }

bool isList(HWND editor) { return GetDlgCtrlID(editor) == activex::gridListEditorId; }

// None: negative.
LRESULT itemWith(HWND list, const std::string& text) {
    const auto wanted = text::toWide(text);
    const auto rows = SendMessageW(list, CB_GETCOUNT, 0, 0);
    for (LRESULT row = 0; row < rows; ++row) {
        const auto index = static_cast<WPARAM>(row);
        std::wstring item(static_cast<std::size_t>(SendMessageW(list, CB_GETLBTEXTLEN, index, 0)), L'\0');
        SendMessageW(list, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(item.data()));
        if (item == wanted) {
            return row;
        }
    }
    return -1;
}

}  // namespace

GridWindow::GridWindow(HWND form) : ChildWindow(form, "grdMacro"), form_(form) {
    com::require(AccessibleObjectFromWindow(handle(), static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                            reinterpret_cast<void**>(accessible_.GetAddressOf())));
}

int GridWindow::rowCount() const {
    com::Variant last;
    com::require(accessible_->accNavigate(NAVDIR_LASTCHILD, childId(CHILDID_SELF).get(), last.put()));
    return last.get().vt == VT_I4 ? static_cast<int>(last.get().lVal) + 1 : 1;
}

std::string GridWindow::name(int row) const {
    com::Bstr text;
    com::require(accessible_->get_accName(childId(row).get(), text.put()));
    return text.utf8();
}

std::string GridWindow::value(int row) const {
    com::Bstr text;
    com::require(accessible_->get_accValue(childId(row).get(), text.put()));
    return text.utf8();
}

std::vector<std::string> GridWindow::hints() const {
    const ChildWindow toolTip(form_, "txtToolTip");
    std::vector<std::string> hints;
    const int rows = rowCount();
    send(WM_MOUSELEAVE);
    for (int row = 1; row < rows; ++row) {
        send(WM_MOUSEMOVE, 0, placeOf(row, 0));
        hints.push_back(toolTip.visible() ? toolTip.text() : std::string());
    }
    send(WM_MOUSELEAVE);
    return hints;
}

// In the grid's client area.
RECT GridWindow::placeOf(const com::Variant& child) const {
    long left = 0;
    long top = 0;
    long width = 0;
    long height = 0;
    com::require(accessible_->accLocation(&left, &top, &width, &height, child.get()));
    RECT place{left, top, left + width, top + height};
    MapWindowPoints(nullptr, handle(), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

RECT GridWindow::valuePlace(int row) const { return placeOf(childId(row)); }

// To the right of the value.
RECT GridWindow::menuPlace(int row) const {
    com::Variant field;
    com::require(accessible_->accNavigate(NAVDIR_RIGHT, childId(row).get(), field.put()));
    return placeOf(field);
}

void GridWindow::bringIntoView(int row) const {
    RECT header{};
    GetWindowRect(GetDlgItem(handle(), activex::gridHeaderId), &header);
    RECT client{};
    GetClientRect(handle(), &client);
    const LONG top = header.bottom - header.top;
    const int rows = rowCount();
    for (int i = 0; i < rows && valuePlace(row).top < top; ++i) {
        send(WM_VSCROLL, SB_LINEUP);
    }
    for (int i = 0; i < rows && valuePlace(row).bottom > client.bottom; ++i) {
        send(WM_VSCROLL, SB_LINEDOWN);
    }
}

LPARAM GridWindow::placeOf(int row, int position) const {
    RECT place{};
    if (row == 0) {
        GetClientRect(handle(), &place);
        return MAKELPARAM(0, place.top);
    }
    bringIntoView(row);
    place = valuePlace(row);
    const RECT field = menuPlace(row);
    LONGLONG x = 0;
    if (position < menuFrom) {
        // In the name, which opens nothing else.
        x = LONGLONG{position} * place.left / menuFrom;
    } else if (position <= menuTo) {
        x = field.left + LONGLONG{position - menuFrom} * (field.right - field.left - 1) / (menuTo - menuFrom);
    } else {
        x = LONGLONG{field.right} + (position - menuTo);
    }
    return MAKELPARAM(static_cast<LONG>(std::clamp<LONGLONG>(x, -farthest, farthest)), (place.top + place.bottom) / 2);
}

void GridWindow::click(LPARAM place) const noexcept {
    send(WM_LBUTTONDOWN, MK_LBUTTON, place);
    send(WM_LBUTTONUP, 0, place);
}

HWND GridWindow::editor() const noexcept {
    for (const int id : {activex::gridTextEditorId, activex::gridListEditorId}) {
        HWND const editor = GetDlgItem(handle(), id);
        if (editor != nullptr && (GetWindowLongW(editor, GWL_STYLE) & WS_VISIBLE) != 0) {
            return editor;
        }
    }
    return nullptr;
}

HWND GridWindow::openEditor(int row) const {
    send(WM_KEYDOWN, VK_HOME);
    for (int at = 1; at < row; ++at) {
        send(WM_KEYDOWN, VK_DOWN);
    }
    send(WM_KEYDOWN, VK_F2);
    return editor();
}

bool GridWindow::enter(HWND editor, const std::string& text) {
    if (!isList(editor)) {
        replaceText(editor, text);
        return true;
    }
    const auto index = itemWith(editor, text);
    if (index < 0) {
        return false;
    }
    SendMessageW(editor, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(GetParent(editor), WM_COMMAND, MAKEWPARAM(activex::gridListEditorId, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(editor));
    return true;
}

bool GridWindow::offers(int row, const std::string& text) const {
    HWND const left = editor();
    if (left == nullptr) {
        return true;
    }
    com::Variant leftRow;
    com::require(accessible_->get_accSelection(leftRow.put()));
    const auto entered = textOf(left);
    press(left, VK_ESCAPE);
    HWND const looked = openEditor(row);
    const bool offered = looked != nullptr && (!isList(looked) || itemWith(looked, text) >= 0);
    if (looked != nullptr) {
        press(looked, VK_ESCAPE);
    }
    if (HWND const again = openEditor(leftRow.get().lVal); again != nullptr) {
        enter(again, entered);
    }
    return offered;
}

}  // namespace vrn::sample
