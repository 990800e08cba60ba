#include "hosts/activex/form/FrameWindow.h"

#include "hosts/activex/form/FramePaint.h"
#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/Owners.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

Window::Making FrameWindow::making(HWND parent) const {
    caption_ = text::toWide(model_.caption());
    return {WindowClasses::frame, caption_.c_str(), WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent, 0};
}

void FrameWindow::lookChanged() { InvalidateRect(handle(), nullptr, FALSE); }

Tip FrameWindow::tipAt(POINT place) {
    Tip tip;
    HWND const below = ChildWindowFromPointEx(handle(), place, CWP_SKIPINVISIBLE);
    if (auto* const control = below == handle() ? nullptr : session().windowOf(below)) {
        MapWindowPoints(handle(), below, &place, 1);
        tip = control->tipAt(place);
        MapWindowPoints(below, handle(), reinterpret_cast<POINT*>(&tip.area), 2);
        return tip;
    }
    RECT client{};
    GetClientRect(handle(), &client);
    const WindowContext context(handle());
    const Selected font(context.get(), look().font);
    const RECT caption = groupCaption(context.get(), client, caption_, look());
    if (textWidth(context.get(), caption_) > widthOf(caption) && PtInRect(&caption, place) != FALSE) {
        tip = {caption, caption_};
    }
    return tip;
}

void FrameWindow::paint(HDC context) {
    RECT client{};
    GetClientRect(handle(), &client);
    if (caption_.empty()) {
        paintFieldBorder(context, client, model_.enabled(), look(), handle());
    } else {
        paintGroupBox(context, client, caption_, model_.enabled(), look(), handle());
    }
}

LRESULT FrameWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            const BufferedPaint buffer(handle());
            paint(buffer.context());
            return 0;
        }
        case WM_PRINTCLIENT:
            paint(reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_MOUSEMOVE:
            if (session().userMayAct()) {
                model_.userMouseMove();
            }
            return 0;
        case WM_CTLCOLORLISTBOX:
            if (const auto* const control = session().windowOf(reinterpret_cast<HWND>(lParam)); control != nullptr) {
                if (HBRUSH const brush = control->ground(reinterpret_cast<HDC>(wParam)); brush != nullptr) {
                    return reinterpret_cast<LRESULT>(brush);
                }
            }
            break;
        case WM_COMMAND:
            if (auto* const control = session().windowOf(reinterpret_cast<HWND>(lParam)); control != nullptr) {
                control->onCommand(HIWORD(wParam));
                return 0;
            }
            break;
        case WM_NOTIFY:
            if (const auto& report = *reinterpret_cast<const NMHDR*>(lParam);
                auto* const control = session().windowOf(report.hwndFrom)) {
                return control->onNotify(report);
            }
            break;
        default:
            break;
    }
    return byDefault(message, wParam, lParam);
}

}  // namespace vrn::activex
