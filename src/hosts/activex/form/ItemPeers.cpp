#include "hosts/activex/form/ItemPeers.h"

#include <windowsx.h>

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/Naming.h"
#include "hosts/activex/form/Typing.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

using controls::Change;

namespace {

constexpr ItemMessages listMessages{LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT,
                                    LB_SETCURSEL,    LB_GETCURSEL,    LB_INITSTORAGE};
constexpr ItemMessages comboMessages{CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT,
                                     CB_SETCURSEL,    CB_GETCURSEL,    CB_INITSTORAGE};
constexpr int rowPadding = 8;  // lengths at 96 dpi
constexpr int rowInset = 2;    // from the edge to a row's text
constexpr int borderWidth = 3;
constexpr int widestDropDown = 600;

int shiftState(WPARAM keys) noexcept {
    return ((keys & MK_SHIFT) != 0 ? 1 : 0) | ((keys & MK_CONTROL) != 0 ? 2 : 0) | (GetKeyState(VK_MENU) < 0 ? 4 : 0);
}

}  // namespace

void ItemPeer::lookChanged() {
    send(WM_SETFONT, reinterpret_cast<WPARAM>(font()), FALSE);
    measure(0, shown_.size(), shown_.size());
    InvalidateRect(handle(), nullptr, TRUE);
}

void ItemPeer::update(Change change) {
    if (change == Change::Items || change == Change::Index || change == Change::View) {
        rowsStale_ = rowsStale_ || change == Change::Items;
        indexStale_ = true;
        InvalidateRect(handle(), nullptr, FALSE);
    }
}

LRESULT ItemPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (indexStale_ && !catchingUp_ && session().open()) {
        catchUp();
    }
    if (message == WM_CHAR && onCharacter(static_cast<wchar_t>(wParam))) {
        return 0;
    }
    if (endsTyping(message, wParam)) {
        typed_.forget();
    }
    return byDefault(message, wParam, lParam);
}

// The window's own search would begin anew with every letter.
bool ItemPeer::onCharacter(wchar_t character) {
    if (!session().userMayAct()) {
        return true;
    }
    const int selected = windowIndex();
    const auto row = rowTyped(typed_, character, model_.items(), selected);
    if (row && *row != controls::noSelection && *row != selected) {
        typedTo(*row);
    }
    return row.has_value();
}

void ItemPeer::catchUp() {
    catchingUp_ = true;
    try {
        if (rowsStale_) {
            takeRows();
            rowsStale_ = false;
        }
    } catch (...) {
        // Short of memory halfway: from the beginning with the next message.
        send(messages_.reset);
        send(WM_SETREDRAW, TRUE);
        shown_.clear();
        widths_.clear();
        catchingUp_ = false;
        throw;
    }
    indexStale_ = false;
    if (windowIndex() != model_.listIndex()) {
        send(messages_.setIndex, static_cast<WPARAM>(model_.listIndex()));
    }
    catchingUp_ = false;
    caughtUp();
}

int ItemPeer::rowWidth(int row) const noexcept {
    const auto index = static_cast<std::size_t>(row);
    return row >= 0 && index < widths_.size() ? widths_[index] : 0;
}

// Only what differs is replaced: a list keeps its place when one row comes or goes.
void ItemPeer::takeRows() {
    const auto& wanted = model_.items();
    const auto shorter = std::min(shown_.size(), wanted.size());
    std::size_t same = 0;
    while (same < shorter && shown_[same] == wanted[same]) {
        ++same;
    }
    std::size_t sameBehind = 0;
    while (sameBehind < shorter - same &&
           shown_[shown_.size() - 1 - sameBehind] == wanted[wanted.size() - 1 - sameBehind]) {
        ++sameBehind;
    }
    const auto oldCount = shown_.size() - same - sameBehind;
    const auto newCount = wanted.size() - same - sameBehind;
    if (oldCount == 0 && newCount == 0) {
        return;
    }
    send(WM_SETREDRAW, FALSE);
    replaceRows(same, oldCount, newCount);
    shown_ = wanted;
    measure(same, oldCount, newCount);
    send(WM_SETREDRAW, TRUE);
    InvalidateRect(handle(), nullptr, TRUE);
}

void ItemPeer::replaceRows(std::size_t from, std::size_t oldCount, std::size_t newCount) {
    if (oldCount == shown_.size()) {
        send(messages_.reset);
    } else {
        for (std::size_t row = oldCount; row > 0; --row) {
            send(messages_.remove, from + row - 1);
        }
    }
    const auto& wanted = model_.items();
    send(messages_.reserve, newCount, static_cast<LPARAM>(newCount * 64));
    for (std::size_t row = from; row < from + newCount; ++row) {
        send(messages_.insert, row, reinterpret_cast<LPARAM>(text::toWide(wanted[row]).c_str()));
    }
}

void ItemPeer::measure(std::size_t from, std::size_t oldCount, std::size_t newCount) {
    const WindowContext context(handle());
    const Selected selected(context.get(), font());
    std::vector<int> measured;
    measured.reserve(newCount);
    for (std::size_t row = from; row < from + newCount; ++row) {
        measured.push_back(textWidth(context.get(), text::toWide(shown_[row])));
    }
    widths_.reserve(widths_.size() + newCount);  // what follows does not fail
    const auto begin = widths_.begin() + static_cast<std::ptrdiff_t>(from);
    widths_.erase(begin, begin + static_cast<std::ptrdiff_t>(oldCount));
    widths_.insert(widths_.begin() + static_cast<std::ptrdiff_t>(from), measured.begin(), measured.end());
    const auto widest = std::max_element(widths_.begin(), widths_.end());
    widthChanged(widest == widths_.end() ? 0 : *widest + scaled(rowPadding, look().dpi));
}

bool ItemPeer::differs() const noexcept { return session().open() && windowIndex() != model_.listIndex(); }

void ItemPeer::choose(int index) {
    if (!session().open()) {
        return;
    }
    if (session().userMayAct()) {
        model_.userSelect(index);
    }
    if (session().open() && handle() != nullptr) {
        catchUp();
    }
}

ListPeer::ListPeer(Session& session, controls::ListBox& model, ControlId id) noexcept
    : ItemPeer(session, model, id, listMessages, controls::TypeAhead::Rows::Numbered), model_(model) {}

Window::Making ListPeer::making(HWND parent) const {
    return {L"LISTBOX",       L"",    WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
            WS_EX_CLIENTEDGE, parent, 0};
}

void ListPeer::widthChanged(int widest) { send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest)); }

HBRUSH ListPeer::ground(HDC context) const {
    if (!readOnly()) {
        return nullptr;
    }
    SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(context, GetSysColor(COLOR_BTNFACE));
    return GetSysColorBrush(COLOR_BTNFACE);
}

Tip ListPeer::tipAt(POINT place) {
    RECT client{};
    GetClientRect(handle(), &client);
    const auto found = send(LB_ITEMFROMPOINT, 0, MAKELPARAM(place.x, place.y));
    const int row = LOWORD(found);
    Tip tip;
    if (HIWORD(found) != 0 || rowWidth(row) + scaled(rowInset, look().dpi) <= client.right || row >= model_.count()) {
        return tip;
    }
    send(LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&tip.area));
    tip.text = text::toWide(model_.item(row));
    return tip;
}

void ListPeer::setReadOnly(bool readOnly) { showStateForAssistance(handle(), readOnly); }

void ListPeer::scrollByKey(WPARAM key) const noexcept {
    constexpr std::array<std::pair<WPARAM, std::pair<UINT, WPARAM>>, 8> scrolls{{
        {VK_UP, {WM_VSCROLL, SB_LINEUP}},
        {VK_DOWN, {WM_VSCROLL, SB_LINEDOWN}},
        {VK_PRIOR, {WM_VSCROLL, SB_PAGEUP}},
        {VK_NEXT, {WM_VSCROLL, SB_PAGEDOWN}},
        {VK_HOME, {WM_VSCROLL, SB_TOP}},
        {VK_END, {WM_VSCROLL, SB_BOTTOM}},
        {VK_LEFT, {WM_HSCROLL, SB_LINEUP}},
        {VK_RIGHT, {WM_HSCROLL, SB_LINEDOWN}},
    }};
    for (const auto& [code, scroll] : scrolls) {
        if (code == key) {
            send(scroll.first, scroll.second);
        }
    }
}

bool ListPeer::onReading(UINT message, WPARAM wParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
            SetFocus(handle());
            return true;
        case WM_LBUTTONUP:
        case WM_CHAR:
            return true;
        case WM_KEYDOWN:
            scrollByKey(wParam);
            return true;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            showStateForAssistance(handle(), true, message == WM_SETFOCUS);
            return false;
        default:
            return false;
    }
}

void ListPeer::update(Change change) {
    ItemPeer::update(change);
    selectedToBeSeen_ = selectedToBeSeen_ || change == Change::Index || change == Change::View;
    rowToBeSeen_ = rowToBeSeen_ || change == Change::View;
}

// A press leaves the list where it is: the next row must not come under the mouse.
void ListPeer::caughtUp() {
    if (topAtPress_) {
        send(LB_SETTOPINDEX, static_cast<WPARAM>(*topAtPress_));
        return;
    }
    if (std::exchange(rowToBeSeen_, false)) {
        show(model_.rowInView());
    }
    if (std::exchange(selectedToBeSeen_, false)) {
        show(model_.listIndex());
    }
}

void ListPeer::show(int row) const noexcept {
    if (row < 0) {
        return;
    }
    RECT client{};
    GetClientRect(handle(), &client);
    const auto rowHeight = std::max(static_cast<int>(send(LB_GETITEMHEIGHT)), 1);
    const int wholeRows = std::max(static_cast<int>(client.bottom) / rowHeight, 1);
    const int top = static_cast<int>(send(LB_GETTOPINDEX));
    const int wanted = std::clamp(top, row - wholeRows + 1, row);
    if (wanted != top) {
        send(LB_SETTOPINDEX, static_cast<WPARAM>(wanted));
    }
}

int ListPeer::rowAt(POINT place) const noexcept {
    const auto nearest = LOWORD(send(LB_ITEMFROMPOINT, 0, MAKELPARAM(place.x, place.y)));
    RECT row{};
    const bool there = send(LB_GETITEMRECT, nearest, reinterpret_cast<LPARAM>(&row)) != LB_ERR;
    return there && place.y >= row.top && place.y < row.bottom ? nearest : controls::noSelection;
}

void ListPeer::onCommand(int code) {
    if (code == LBN_SELCHANGE && (!pressed_ || differs())) {
        choose(windowIndex());
    }
}

LRESULT ListPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (session().open() && readOnly() && onReading(message, wParam)) {
        return 0;
    }
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
            return onPress(message, wParam, lParam);
        case WM_LBUTTONUP: {
            // Some systems report a choice with the press, others with the release.
            const LRESULT result = ItemPeer::onMessage(message, wParam, lParam);
            pressed_ = false;
            return result;
        }
        case WM_MOUSEMOVE:
            // The release may have gone elsewhere.
            pressed_ = pressed_ && (wParam & MK_LBUTTON) != 0;
            break;
        case WM_KEYDOWN:
            pressed_ = false;
            break;
        default:
            break;
    }
    return ItemPeer::onMessage(message, wParam, lParam);
}

LRESULT ListPeer::onPress(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!session().userMayAct()) {
        return 0;
    }
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const bool left = message != WM_RBUTTONDOWN;
    const int row = rowAt(place);
    pressed_ = left;
    topAtPress_ = static_cast<int>(send(LB_GETTOPINDEX));
    model_.userMouseDown(row, left ? controls::ListBox::leftButton : controls::ListBox::rightButton, shiftState(wParam),
                         toTwips(place.x, look().dpi), toTwips(place.y, look().dpi));
    if (!session().open() || handle() == nullptr) {
        return 0;
    }
    LRESULT result = 0;
    if (left && row != controls::noSelection && row != model_.listIndex()) {
        // In the meantime the host has switched the list off or filled it anew: there is nothing left to take.
        pressed_ = false;
        SetFocus(handle());
    } else {
        result = ItemPeer::onMessage(message, wParam, lParam);
        selectedToBeSeen_ = false;
    }
    topAtPress_.reset();
    caughtUp();
    // A message box may have swallowed the release of the button: the list must not wait for it.
    const int button = GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
    if (left && handle() != nullptr && GetCapture() == handle() && GetAsyncKeyState(button) >= 0) {
        PostMessageW(handle(), WM_LBUTTONUP, 0, lParam);
    }
    return result;
}

ComboPeer::ComboPeer(Session& session, controls::ComboBox& model, ControlId id) noexcept
    : ItemPeer(session, model, id, comboMessages, controls::TypeAhead::Rows::Plain), model_(model) {}

Window::Making ComboPeer::making(HWND parent) const {
    return {L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0, parent, 0};
}

int ComboPeer::closedHeight() const noexcept {
    RECT place{};
    GetWindowRect(handle(), &place);
    return heightOf(place);
}

void ComboPeer::widthChanged(int widest) {
    const int wanted = widest + GetSystemMetrics(SM_CXVSCROLL);
    send(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(std::min(wanted, scaled(widestDropDown, look().dpi))));
}

Tip ComboPeer::tipAt(POINT /*place*/) {
    Tip tip;
    const int index = model_.listIndex();
    if (index < 0) {
        return tip;
    }
    GetClientRect(handle(), &tip.area);
    tip.text = text::toWide(model_.toolTip(index));
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(handle(), &info) != FALSE &&
        rowWidth(index) + scaled(rowInset, look().dpi) > widthOf(info.rcItem)) {
        tip.text = text::toWide(model_.item(index)) + (tip.text.empty() ? L"" : L"\r\n") + tip.text;
    }
    return tip;
}

void ComboPeer::onCommand(int code) {
    switch (code) {
        case CBN_DROPDOWN:
        case CBN_SELENDCANCEL:
            accepted_ = false;
            break;
        case CBN_SELENDOK:
            accepted_ = true;
            break;
        case CBN_CLOSEUP:
            // Only now is the drop-down list out of the way of what the choice may show.
            handled_ = std::exchange(accepted_, false) && differs();
            if (handled_) {
                choose(windowIndex());
            } else if (session().open()) {
                catchUp();
            }
            break;
        case CBN_SELCHANGE:
            // While the list is open the user is still looking around.
            if (!std::exchange(handled_, false) && !dropped()) {
                choose(windowIndex());
            }
            break;
        default:
            break;
    }
}

// The system draws the text of a disabled list too faintly to be read; what the method says is to be readable.
void ComboPeer::paintReadably() const {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(handle(), &info) == FALSE) {
        return;
    }
    RECT place = info.rcItem;
    const WindowContext context(handle());
    const Selected selected(context.get(), font());
    // The ground is the system's or its theme's: taken above the text, inside of the border.
    const int inside = scaled(borderWidth, look().dpi);
    SetBkColor(context.get(), GetPixel(context.get(), place.right - inside, place.top + inside));
    ExtTextOutW(context.get(), 0, 0, ETO_OPAQUE, &place, nullptr, 0, nullptr);
    SetTextColor(context.get(), GetSysColor(COLOR_WINDOWTEXT));
    SetBkMode(context.get(), TRANSPARENT);
    place.left += scaled(rowInset, look().dpi);
    const auto text = text::toWide(model_.text());
    DrawTextW(context.get(), text.c_str(), static_cast<int>(text.size()), &place,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void ComboPeer::typedTo(int row) {
    if (!dropped()) {
        choose(row);
        return;
    }
    // While the list is open the user is still looking around.
    send(CB_SETCURSEL, static_cast<WPARAM>(row));
}

LRESULT ComboPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MOUSEWHEEL && !dropped()) {
        // Who turns the wheel over a closed list scrolls what is around it.
        return DefWindowProcW(handle(), message, wParam, lParam);
    }
    if (message == WM_KEYDOWN || message == WM_CHAR || message == WM_LBUTTONDOWN || message == WM_MOUSEWHEEL) {
        handled_ = false;
        if (!session().userMayAct()) {
            return 0;
        }
    }
    const LRESULT result = ItemPeer::onMessage(message, wParam, lParam);
    if (message == WM_PAINT && session().open() && !model_.enabled()) {
        paintReadably();
    }
    return result;
}

}  // namespace vrn::activex
