#include "hosts/activex/form/SimplePeers.h"

#include <algorithm>

#include "hosts/activex/form/Metrics.h"

#include "text/windows/Wide.h"

namespace vrn::activex {

using controls::Change;

namespace {

constexpr WPARAM controlA = 1;  // the character that Ctrl+A makes
constexpr UINT labelFormat = DT_LEFT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;

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

void ButtonPeer::lookChanged() {
    Peer::lookChanged();
    fitCaption();
}

// A push button of the system's cuts its caption at both ends: one that does not fit ends in an ellipsis instead.
void ButtonPeer::fitCaption() {
    RECT client{};
    GetClientRect(handle(), &client);
    const int room = captionRoom(controlId(), {client.left, client.top, client.right, client.bottom}, look().dpi);
    auto shown = caption_;
    {
        const WindowContext context(handle());
        const Selected font(context.get(), look().font);
        cut_ = client.right > 0 && captionWidth(context.get(), caption_) > room;
        if (cut_) {
            std::erase(shown, L'&');
            while (!shown.empty() && textWidth(context.get(), shown + ellipsis) > room) {
                shown.pop_back();
            }
            shown += ellipsis;
        }
    }
    SetWindowTextW(handle(), shown.c_str());
}

Tip ButtonPeer::tipAt(POINT /*place*/) {
    Tip tip;
    if (cut_) {
        GetClientRect(handle(), &tip.area);
        tip.text = caption_;
        std::erase(tip.text, L'&');
    }
    return tip;
}

LRESULT ButtonPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            fitCaption();
            break;
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(caption_.size());
        case WM_GETTEXT: {
            // Whoever asks gets the whole caption, whatever of it is drawn.
            if (wParam == 0) {
                return 0;
            }
            const auto length = std::min<std::size_t>(caption_.size(), wParam - 1);
            auto* const buffer = reinterpret_cast<wchar_t*>(lParam);
            std::copy_n(caption_.begin(), length, buffer);
            buffer[length] = L'\0';
            return static_cast<LRESULT>(length);
        }
        default:
            break;
    }
    return byDefault(message, wParam, lParam);
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

// Without SS_NOTIFY the mouse would not come to it, and no tip either.
Window::Making LabelPeer::making(HWND parent) const {
    return {L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_NOTIFY, 0, parent, 0};
}

void LabelPeer::update(Change change) {
    if (change == Change::Text) {
        SetWindowTextW(handle(), text::toWide(model_.caption()).c_str());
        session().placesChanged();
        InvalidateRect(handle(), nullptr, FALSE);
    }
}

// The system's label drops the words that do not fit; here the last line that does ends in an ellipsis.
void LabelPeer::paint(HDC context) const {
    RECT client{};
    GetClientRect(handle(), &client);
    FillRect(context, &client, GetSysColorBrush(COLOR_BTNFACE));
    const Selected font(context, look().font);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    auto text = windowText(handle());
    DrawTextW(context, text.data(), static_cast<int>(text.size()), &client, labelFormat | DT_END_ELLIPSIS);
}

Tip LabelPeer::tipAt(POINT /*place*/) {
    Tip tip;
    GetClientRect(handle(), &tip.area);
    RECT whole = tip.area;
    const WindowContext context(handle());
    const Selected font(context.get(), look().font);
    auto text = windowText(handle());
    DrawTextW(context.get(), text.data(), static_cast<int>(text.size()), &whole, labelFormat | DT_CALCRECT);
    if (whole.bottom > tip.area.bottom || whole.right > tip.area.right) {
        tip.text = std::move(text);
    }
    return tip;
}

LRESULT LabelPeer::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            InvalidateRect(handle(), nullptr, FALSE);
            break;
        case WM_PAINT: {
            const BufferedPaint buffer(handle());
            paint(buffer.context());
            return 0;
        }
        case WM_PRINTCLIENT:
            paint(reinterpret_cast<HDC>(wParam));
            return 0;
        default:
            break;
    }
    return byDefault(message, wParam, lParam);
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
