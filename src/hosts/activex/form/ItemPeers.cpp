#include "hosts/activex/form/ItemPeers.h"

#include <windowsx.h>

#include <algorithm>

#include "hosts/activex/form/Metrics.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

using controls::Change;

namespace {

constexpr ItemMessages listMessages{LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT,
                                    LB_SETCURSEL,    LB_GETCURSEL,    LB_INITSTORAGE};
constexpr ItemMessages comboMessages{CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT,
                                     CB_SETCURSEL,    CB_GETCURSEL,    CB_INITSTORAGE};
constexpr int rowPadding = 8;  // lengths at 96 dpi
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
    if (change == Change::Items || change == Change::Index) {
        rowsStale_ = rowsStale_ || change == Change::Items;
        indexStale_ = true;
        InvalidateRect(handle(), nullptr, FALSE);
    }
}

LRESULT ItemPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (indexStale_ && !catchingUp_ && session().open()) {
        catchUp();
    }
    return byDefault(message, wParam, lParam);
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
    : ItemPeer(session, model, id, listMessages), model_(model) {}

Window::Making ListPeer::making(HWND parent) const {
    return {L"LISTBOX",       L"",    WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
            WS_EX_CLIENTEDGE, parent, 0};
}

void ListPeer::widthChanged(int widest) { send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest)); }

void ListPeer::onCommand(int code) {
    if (code == LBN_SELCHANGE) {
        choose(windowIndex());
    }
}

LRESULT ListPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool pressed = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDOWN;
    if (!pressed) {
        return ItemPeer::onMessage(message, wParam, lParam);
    }
    if (!session().userMayAct()) {
        return 0;
    }
    const bool left = message != WM_RBUTTONDOWN;
    model_.userMouseDown(left ? 1 : 2, shiftState(wParam), toTwips(GET_X_LPARAM(lParam), look().dpi),
                         toTwips(GET_Y_LPARAM(lParam), look().dpi));
    if (!session().open() || handle() == nullptr) {
        return 0;
    }
    const LRESULT result = ItemPeer::onMessage(message, wParam, lParam);
    // A message box may have swallowed the release of the button: the list must not wait for it.
    const int button = GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
    if (left && handle() != nullptr && GetCapture() == handle() && GetAsyncKeyState(button) >= 0) {
        PostMessageW(handle(), WM_LBUTTONUP, 0, lParam);
    }
    return result;
}

ComboPeer::ComboPeer(Session& session, controls::ComboBox& model, ControlId id) noexcept
    : ItemPeer(session, model, id, comboMessages), model_(model) {}

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

void ComboPeer::lookChanged() {
    ItemPeer::lookChanged();
    if (!toolTip_) {
        toolTip_.begin(handle(), session().module());
    }
}

void ComboPeer::caughtUp() {
    const int index = model_.listIndex();
    toolTip_.setText(index < 0 ? std::wstring() : text::toWide(model_.toolTip(index)), look().dpi);
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

LRESULT ComboPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        toolTip_.end();
    } else if (message == WM_KEYDOWN || message == WM_CHAR || message == WM_LBUTTONDOWN || message == WM_MOUSEWHEEL) {
        handled_ = false;
        if (!session().userMayAct()) {
            return 0;
        }
    }
    return ItemPeer::onMessage(message, wParam, lParam);
}

}  // namespace vrn::activex
