#include "hosts/activex/form/FramePaint.h"

#include <vssym32.h>

#include <algorithm>

#include "hosts/activex/form/Metrics.h"
#include "hosts/activex/form/TextPaint.h"

namespace vrn::activex {

namespace {

constexpr int captionPadding = 3;  // at 96 dpi
constexpr UINT captionFormat = DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;

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

// What a frame holds can be read while it cannot be used; so can its caption.
void paintCaption(HDC context, HDC metrics, const RECT& place, const std::wstring& caption, HTHEME theme) {
    RECT text = place;
    SetBkMode(context, TRANSPARENT);
    if (theme != nullptr) {
        DrawThemeText(theme, context, BP_GROUPBOX, GBS_NORMAL, caption.c_str(), -1, captionFormat, 0, &text);
        return;
    }
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    drawText(context, metrics, caption, text, captionFormat);
}

}  // namespace

RECT groupCaption(HDC context, const RECT& place, const std::wstring& caption, const Look& look) noexcept {
    const int inset = std::min(scaled(frameCaptionInset, look.dpi), widthOf(place) / 2);
    RECT text = place;
    text.left += inset;
    text.right = std::min<LONG>(text.left + textWidth(context, caption), place.right - inset);
    text.bottom = text.top + textSize(context, look.font).lineHeight;
    return text;
}

void paintGroupBox(HDC context, const RECT& place, const std::wstring& caption, bool enabled, const Look& look,
                   HWND window) {
    FillRect(context, &place, GetSysColorBrush(COLOR_BTNFACE));
    const auto theme = themeOf(look, window, L"BUTTON");
    HDC const metrics = look.measuring(context);
    const Selected font(context, look.font);
    const Selected measuredFont(metrics, look.font);
    const RECT text = groupCaption(metrics, place, caption, look);
    RECT line = place;
    line.top += heightOf(text) / 2;
    {
        const SavedContext saved(context);
        const int padding = scaled(captionPadding, look.dpi);
        ExcludeClipRect(context, text.left - padding, text.top, text.right + padding, text.bottom);
        paintLine(context, line, enabled, theme.get());
    }
    paintCaption(context, metrics, text, caption, theme.get());
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
