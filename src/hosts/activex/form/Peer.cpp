#include "hosts/activex/form/Peer.h"

#include <windowsx.h>

namespace vrn::activex {

using controls::Change;

void Peer::create(HWND parent) {
    auto how = making(parent);
    how.style |= WS_CHILD | WS_CLIPSIBLINGS;
    if (model_.visible()) {
        how.style |= WS_VISIBLE;
    }
    if (!model_.enabled() && !model_.isContainer() && !readable()) {
        how.style |= WS_DISABLED;
    }
    how.id = static_cast<int>(id_);
    make(how);
    lookChanged();
    if (readOnly()) {
        showReadOnly();
    }
    model_.observe(this);
}

// Others find out by the property what a disabled window would show.
void Peer::showReadOnly() {
    if (readOnly()) {
        SetPropW(handle(), readOnlyProperty, reinterpret_cast<HANDLE>(1));
    } else {
        RemovePropW(handle(), readOnlyProperty);
    }
    setReadOnly(readOnly());
    InvalidateRect(handle(), nullptr, TRUE);
    NotifyWinEvent(EVENT_OBJECT_STATECHANGE, handle(), OBJID_CLIENT, CHILDID_SELF);
}

void Peer::ending() noexcept {
    toolTip_.end();
    RemovePropW(handle(), readOnlyProperty);
}

void Peer::mouseCame(UINT message, WPARAM wParam, LPARAM lParam) {
    // The wheel's place is one on the screen; what it scrolls has another tip at the next move.
    if (message != WM_MOUSEWHEEL && message != WM_MOUSEHWHEEL) {
        toolTip_.follow(handle(), session().module(), tipAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}), look().dpi,
                        message, wParam, lParam);
    }
}

void Peer::lookChanged() { send(WM_SETFONT, reinterpret_cast<WPARAM>(look().font), FALSE); }

void Peer::updateEnabled() {
    // A frame that is switched off is drawn so. Its controls count by themselves, so its window stays as it is.
    if (model_.isContainer()) {
        InvalidateRect(handle(), nullptr, FALSE);
        return;
    }
    if (readable()) {
        showReadOnly();
        return;
    }
    const HWND focus = GetFocus();
    if (!model_.enabled() && (focus == handle() || IsChild(handle(), focus) != FALSE)) {
        session().focusAdrift();
    }
    EnableWindow(handle(), model_.enabled() ? TRUE : FALSE);
}

void Peer::updateVisible() noexcept {
    if (!model_.visible() && GetFocus() == handle()) {
        session().focusAdrift();
    }
    ShowWindow(handle(), model_.visible() ? SW_SHOWNA : SW_HIDE);
    if (takesPlace()) {
        session().placesChanged();
    }
}

void Peer::controlChanged(controls::Control& /*control*/, Change change) noexcept {
    if (handle() == nullptr) {
        return;
    }
    try {
        switch (change) {
            case Change::Enabled:
                updateEnabled();
                break;
            case Change::Visible:
                updateVisible();
                break;
            case Change::Repaint:
                InvalidateRect(handle(), nullptr, TRUE);
                break;
            default:
                break;
        }
        update(change);
    } catch (...) {
        // Short of memory: the window is drawn again from the model as soon as it can be.
        InvalidateRect(handle(), nullptr, TRUE);
    }
}

}  // namespace vrn::activex
