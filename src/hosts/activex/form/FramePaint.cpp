#include "hosts/activex/form/FramePaint.h"

#include <vssym32.h>

#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/TextPaint.h"

namespace vrn::activex {

namespace {

constexpr int captionInset = 8;  // lengths at 96 dpi
constexpr int captionPadding = 3;

UniqueTheme themeOf(const Look& look, HWND window, const wchar_t* part) noexcept {
    return UniqueTheme(look.themed && window != nullptr ? OpenThemeData(window, part) : nullptr);
}

void paintLine(HDC context, const RECT& line, bool enabled, HTHEME theme) noexcept {
    if (theme != nullptr) {
        DrawThemeBackground(theme, context, BP_GROUPBOX, enabled ? GBS_NORMAL : GBS_DISABLED, &line, nullptr);
    } else {
        RECT edge = line;
        DrawEdge(context, &edge, EDGE_ETCHED, BF_RECT);
    }
}

void paintCaption(HDC context, HDC metrics, const RECT& place, const std::wstring& caption, bool enabled,
                  HTHEME theme) {
    RECT text = place;
    SetBkMode(context, TRANSPARENT);
    if (theme != nullptr) {
        DrawThemeText(theme, context, BP_GROUPBOX, enabled ? GBS_NORMAL : GBS_DISABLED, caption.c_str(), -1,
                      DT_SINGLELINE | DT_NOPREFIX, 0, &text);
        return;
    }
    SetTextColor(context, GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    drawText(context, metrics, caption, text, DT_SINGLELINE | DT_NOPREFIX);
}

}  // namespace

void paintGroupBox(HDC context, const RECT& place, const std::wstring& caption, bool enabled, const Look& look,
                   HWND window) {
    FillRect(context, &place, GetSysColorBrush(COLOR_BTNFACE));
    const auto theme = themeOf(look, window, L"BUTTON");
    HDC const metrics = look.measuring(context);
    const Selected font(context, look.font);
    const Selected measuredFont(metrics, look.font);
    const int lineHeight = textSize(metrics, look.font).lineHeight;
    RECT text = place;
    text.left += scaled(captionInset, look.dpi);
    text.right = text.left + textWidth(metrics, caption);
    text.bottom = text.top + lineHeight;
    RECT line = place;
    line.top += lineHeight / 2;
    {
        const SavedContext saved(context);
        const int padding = scaled(captionPadding, look.dpi);
        ExcludeClipRect(context, text.left - padding, text.top, text.right + padding, text.bottom);
        paintLine(context, line, enabled, theme.get());
    }
    paintCaption(context, metrics, text, caption, enabled, theme.get());
}

void paintFieldBorder(HDC context, const RECT& place, bool enabled, const Look& look, HWND window) {
    if (const auto theme = themeOf(look, window, L"EDIT")) {
        DrawThemeBackground(theme.get(), context, EP_EDITTEXT, enabled ? ETS_NORMAL : ETS_DISABLED, &place, nullptr);
        return;
    }
    RECT edge = place;
    DrawEdge(context, &edge, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    FillRect(context, &edge, GetSysColorBrush(enabled ? COLOR_WINDOW : COLOR_BTNFACE));
}

}  // namespace vrn::activex
