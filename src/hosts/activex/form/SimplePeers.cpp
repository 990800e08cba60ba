#include "hosts/activex/form/SimplePeers.h"

#include "text/windows/Wide.h"

namespace vrn::activex {

using controls::Change;

namespace {

constexpr WPARAM controlA = 1;  // the character that Ctrl+A makes

}  // namespace

std::wstring windowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    if (!text.empty()) {
        // The announced length may be more than what there is.
        text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    }
    return text;
}

Window::Making ButtonPeer::making(HWND parent) const {
    caption_ = text::toWide(model_.caption());
    return {L"BUTTON", caption_.c_str(), WS_TABSTOP | BS_PUSHBUTTON, 0, parent, 0};
}

void ButtonPeer::onCommand(int code) {
    if (code == BN_CLICKED) {
        press();
    }
}

void ButtonPeer::press() {
    if (session().userMayAct()) {
        model_.userClick();
    }
}

wchar_t ButtonPeer::mnemonicOf(const controls::Button& model) {
    const auto caption = text::toWide(model.caption());
    const auto mark = caption.find(L'&');
    if (mark == std::wstring::npos || mark + 1 >= caption.size()) {
        return 0;
    }
    // The function takes a single character in place of a pointer.
    return static_cast<wchar_t>(
        reinterpret_cast<ULONG_PTR>(CharUpperW(reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(caption[mark + 1])))));
}

Window::Making LabelPeer::making(HWND parent) const { return {L"STATIC", L"", SS_LEFT | SS_NOPREFIX, 0, parent, 0}; }

void LabelPeer::update(Change change) {
    if (change == Change::Text) {
        SetWindowTextW(handle(), text::toWide(model_.caption()).c_str());
        session().placesChanged();
    }
}

Window::Making TextPeer::making(HWND parent) const {
    return {L"EDIT",          L"",    WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | ES_LEFT,
            WS_EX_CLIENTEDGE, parent, 0};
}

void TextPeer::lookChanged() {
    Peer::lookChanged();
    // As long as the system allows: its own limit would cut what is pasted.
    send(EM_SETLIMITTEXT, 0);
}

void TextPeer::update(Change change) {
    if (change == Change::Text) {
        show();
    }
}

void TextPeer::show() {
    const auto wanted = text::toWide(model_.text());
    if (windowText(handle()) == wanted) {
        return;
    }
    DWORD from = 0;
    DWORD to = 0;
    send(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    showing_ = true;
    SetWindowTextW(handle(), wanted.c_str());
    showing_ = false;
    if (GetFocus() == handle()) {
        send(EM_SETSEL, from, static_cast<LPARAM>(to));
        send(EM_SCROLLCARET);
    }
}

void TextPeer::onCommand(int code) {
    if (code != EN_CHANGE || showing_ || !session().open()) {
        return;
    }
    if (session().userMayAct()) {
        model_.userType(text::fromWide(windowText(handle())));
    }
    if (session().open() && handle() != nullptr) {
        show();
    }
}

LRESULT TextPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CHAR && wParam == controlA) {
        send(EM_SETSEL, 0, -1);
        return 0;
    }
    return byDefault(message, wParam, lParam);
}

}  // namespace vrn::activex
