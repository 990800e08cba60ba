#include "hosts/activex/form/HintWindow.h"

#include <algorithm>

#include "hosts/activex/form/GridWindow.h"
#include "hosts/activex/form/Metrics.h"
#include "text/windows/Wide.h"

namespace vrn::activex {

using controls::Change;

namespace {

constexpr int padding = 4;  // lengths at 96 dpi
constexpr int widest = 320;
constexpr UINT textFormat = DT_LEFT | DT_WORDBREAK | DT_NOPREFIX;

}  // namespace

Window::Making HintWindow::making(HWND parent) const { return {WindowClasses::hint, L"", 0, 0, parent, 0}; }

void HintWindow::lookChanged() { place(); }

void HintWindow::update(Change change) {
    if (change == Change::Text) {
        SetWindowTextW(handle(), text::toWide(model_.text()).c_str());
        InvalidateRect(handle(), nullptr, FALSE);
    }
    if (change == Change::Text || change == Change::Position) {
        place();
    }
}

std::wstring HintWindow::shownText() const {
    const auto cut = grid_.cutText(grid_.hoveredRow());
    return cut + (cut.empty() ? L"" : L"\r\n") + text::toWide(model_.text());
}

// At the model's place, but inside the form.
void HintWindow::place() {
    RECT form{};
    GetClientRect(GetParent(handle()), &form);
    const int dpi = look().dpi;
    const int edge = scaled(padding, dpi);
    const auto text = shownText();
    RECT size{0, 0, std::min<int>(scaled(widest, dpi), form.right - 2 * edge), 0};
    {
        const WindowContext context(handle());
        const Selected font(context.get(), look().font);
        DrawTextW(context.get(), text.c_str(), -1, &size, textFormat | DT_CALCRECT);
    }
    const int width = size.right + 2 * edge;
    const int height = size.bottom + 2 * edge;
    const int x = std::clamp(fromTwips(model_.left(), dpi), 0, std::max<int>(form.right - width, 0));
    const int y = std::clamp(fromTwips(model_.top(), dpi), 0, std::max<int>(form.bottom - height, 0));
    SetWindowPos(handle(), HWND_TOP, x, y, width, height, SWP_NOACTIVATE);
}

void HintWindow::paint(HDC context) const {
    RECT area{};
    GetClientRect(handle(), &area);
    FillRect(context, &area, GetSysColorBrush(COLOR_INFOBK));
    FrameRect(context, &area, GetSysColorBrush(COLOR_INFOTEXT));
    const int edge = scaled(padding, look().dpi);
    InflateRect(&area, -edge, -edge);
    const Selected font(context, look().font);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_INFOTEXT));
    const auto text = shownText();
    DrawTextW(context, text.c_str(), -1, &area, textFormat);
}

LRESULT HintWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCHITTEST:
            return HTTRANSPARENT;
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
        default:
            return byDefault(message, wParam, lParam);
    }
}

}  // namespace vrn::activex
