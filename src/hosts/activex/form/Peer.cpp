#include "hosts/activex/form/Peer.h"

namespace vrn::activex {

using controls::Change;

void Peer::create(HWND parent) {
    auto how = making(parent);
    how.style |= WS_CHILD | WS_CLIPSIBLINGS;
    if (model_.visible()) {
        how.style |= WS_VISIBLE;
    }
    if (!model_.enabled() && !model_.isContainer()) {
        how.style |= WS_DISABLED;
    }
    how.id = static_cast<int>(id_);
    make(how);
    lookChanged();
    model_.observe(this);
}

void Peer::lookChanged() { send(WM_SETFONT, reinterpret_cast<WPARAM>(look().font), FALSE); }

void Peer::updateEnabled() noexcept {
    // A frame that is switched off is drawn so. Its controls count by themselves, so its window stays as it is.
    if (model_.isContainer()) {
        InvalidateRect(handle(), nullptr, FALSE);
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
