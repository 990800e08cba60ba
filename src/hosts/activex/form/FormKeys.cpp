// The keyboard: which control has the focus, who gets it next, and the keys that are not for one control alone.
#include <algorithm>

#include "hosts/activex/form/FormWindows.h"

namespace vrn::activex {

namespace {

wchar_t upperCase(wchar_t character) noexcept {
    // The function takes a single character in place of a pointer.
    return static_cast<wchar_t>(
        reinterpret_cast<ULONG_PTR>(CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(character)))));
}

bool isDown(int key) noexcept { return GetKeyState(key) < 0; }

}  // namespace

bool FormWindows::owns(HWND handle) const noexcept {
    return handle != nullptr && root_.handle() != nullptr &&
           (handle == root_.handle() || IsChild(root_.handle(), handle) != FALSE);
}

bool FormWindows::hasFocus() const noexcept { return owns(GetFocus()); }

int FormWindows::orderOf(HWND handle) const noexcept {
    const auto found = std::find_if(tabOrder_.begin(), tabOrder_.end(), [&](const Peer* peer) {
        return peer->handle() == handle || IsChild(peer->handle(), handle) != FALSE;
    });
    return found == tabOrder_.end() ? -1 : static_cast<int>(found - tabOrder_.begin());
}

// In a form that is too small for everything, some controls have no place.
bool FormWindows::placedVisibly(const Peer& peer) const noexcept {
    return !placed_ || !layout_.of(peer.controlId()).empty();
}

Peer* FormWindows::peerFrom(int start, int step) const noexcept {
    for (int i = start; i >= 0 && i < static_cast<int>(tabOrder_.size()); i += step) {
        auto* const peer = tabOrder_[static_cast<std::size_t>(i)];
        if (peer->takesFocus() && placedVisibly(*peer)) {
            return peer;
        }
    }
    return nullptr;
}

void FormWindows::give(const Peer& peer) noexcept {
    SetFocus(peer.handle());
    // As dialogs do once the keyboard is used: focus rectangles and mnemonics are shown from now on.
    SendMessageW(root_.handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
}

void FormWindows::takeFocus(Form::FocusTarget target) noexcept {
    if (!open() || root_.handle() == nullptr) {
        return;
    }
    const Peer* peer = nullptr;
    if (target == Form::FocusTarget::Previous && lastFocus_ != nullptr && lastFocus_->takesFocus()) {
        peer = lastFocus_;
    } else if (target == Form::FocusTarget::Last) {
        peer = peerFrom(static_cast<int>(tabOrder_.size()) - 1, -1);
    } else {
        peer = peerFrom(0, 1);
    }
    SetFocus(peer != nullptr ? peer->handle() : root_.handle());
}

bool FormWindows::goOn(HWND from, bool backwards) noexcept {
    const int order = orderOf(from);
    const int step = backwards ? -1 : 1;
    const int start = order >= 0 ? order + step : backwards ? static_cast<int>(tabOrder_.size()) - 1 : 0;
    const Peer* const next = peerFrom(start, step);
    if (next == nullptr) {
        return false;
    }
    give(*next);
    return true;
}

void FormWindows::focusCame(HWND to) noexcept {
    if (!open()) {
        return;
    }
    adrift_ = false;
    if (const int order = orderOf(to); order >= 0) {
        lastFocus_ = tabOrder_[static_cast<std::size_t>(order)];
    }
    if (!focusIn_) {
        focusIn_ = true;
        site_.focusChanged(true);
    } else {
        site_.userActs();
    }
}

void FormWindows::userActs() noexcept {
    if (open() && focusIn_) {
        site_.userActs();
    }
}

void FormWindows::focusWent(HWND to) noexcept {
    // Inside the form, or nowhere for a moment because the control was switched off.
    if (!open() || owns(to) || (to == nullptr && adrift_)) {
        return;
    }
    if (focusIn_) {
        focusIn_ = false;
        site_.focusChanged(false);
    }
}

void FormWindows::focusAdrift() noexcept {
    if (open() && !adrift_) {
        adrift_ = true;
        root_.post(RootWindow::Later::SettleFocus);
    }
}

void FormWindows::settleFocus() noexcept {
    const bool wasAdrift = std::exchange(adrift_, false);
    const HWND focus = GetFocus();
    if (!open() || !wasAdrift || IsWindowVisible(root_.handle()) == FALSE || (focus != nullptr && !owns(focus))) {
        return;
    }
    const int at = focus == nullptr ? -1 : orderOf(focus);
    if (at >= 0 && IsWindowVisible(focus) != FALSE && tabOrder_[static_cast<std::size_t>(at)]->takesFocus()) {
        return;
    }
    // The control may be usable again by now; otherwise the next one in the order is.
    const int order = lastFocus_ == nullptr ? 0 : orderOf(lastFocus_->handle());
    const Peer* peer = peerFrom(order, 1);
    if (peer == nullptr) {
        peer = peerFrom(order, -1);
    }
    SetFocus(peer != nullptr ? peer->handle() : root_.handle());
}

bool FormWindows::pressMnemonic(wchar_t key) noexcept {
    for (auto* const button : {&cmdInsert_, &cmdReplace_, &cmdDelete_, &cmdDefCycle_}) {
        try {
            if (button->takesFocus() && button->mnemonic() == upperCase(key)) {
                give(*button);
                if (open()) {
                    button->press();
                }
                return true;
            }
        } catch (...) {
            return true;  // the engine has reported what failed
        }
    }
    return false;
}

// Keys that the control with the focus wants for itself: without this a container may take them for its own.
bool FormWindows::dispatchWanted(const MSG& message) const noexcept {
    const auto wants = SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    bool wanted = (wants & DLGC_WANTALLKEYS) != 0;
    switch (message.wParam) {
        case VK_LEFT:
        case VK_RIGHT:
        case VK_UP:
        case VK_DOWN:
            wanted = wanted || (wants & DLGC_WANTARROWS) != 0;
            break;
        case VK_RETURN:
        case VK_ESCAPE:
            wanted = wanted || message.hwnd == grdMacro_.handle() || message.hwnd == txtMethodDescription_.handle() ||
                     cboSyringe_.dropped() || cboSelectedMacro_.dropped();
            // The description and the grid have no use for Escape; it closes the container's dialog as usual.
            if (message.wParam == VK_ESCAPE &&
                (message.hwnd == grdMacro_.handle() || message.hwnd == txtMethodDescription_.handle())) {
                wanted = false;
            }
            break;
        case VK_HOME:
        case VK_END:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_DELETE:
        case VK_F2:
        case VK_F4:
            wanted = wanted || (wants & (DLGC_WANTARROWS | DLGC_WANTCHARS)) != 0;
            break;
        default:
            wanted = false;
            break;
    }
    if (wanted) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return wanted;
}

bool FormWindows::onTab(HWND focus) noexcept {
    const bool backwards = isDown(VK_SHIFT);
    if (focus == grdMacro_.editor().window() && focus != nullptr) {
        // The editor goes on from row to row; behind the last one it comes back here as the grid.
        SendMessageW(focus, WM_KEYDOWN, VK_TAB, 0);
        return true;
    }
    return goOn(focus, backwards);
}

bool FormWindows::translateKey(const MSG& message) noexcept {
    if (!open() || message.message < WM_KEYFIRST || message.message > WM_KEYLAST || !owns(message.hwnd)) {
        return false;
    }
    if (message.message == WM_SYSCHAR) {
        return pressMnemonic(static_cast<wchar_t>(message.wParam));
    }
    if (message.message != WM_KEYDOWN || isDown(VK_MENU)) {
        return false;
    }
    if (message.wParam == VK_TAB) {
        return !isDown(VK_CONTROL) && onTab(message.hwnd);
    }
    if (message.wParam == VK_RETURN) {
        for (auto* const button : {&cmdInsert_, &cmdReplace_, &cmdDelete_, &cmdDefCycle_}) {
            if (message.hwnd == button->handle()) {
                SendMessageW(message.hwnd, BM_CLICK, 0, 0);
                return true;
            }
        }
    }
    return dispatchWanted(message);
}

}  // namespace vrn::activex
