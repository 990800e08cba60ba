#include "hosts/activex/form/Metrics.h"

#include <algorithm>

#include "text/windows/Wide.h"

namespace vrn::activex {

namespace {

// Functions that came with Windows 10: looked up, so that the file loads on systems before it.
template <typename Function>
Function userFunction(const char* name) noexcept {
    const HMODULE user = GetModuleHandleW(L"user32.dll");
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(user, name)));
}

int screenDpi() noexcept {
    const WindowContext screen(nullptr);
    return GetDeviceCaps(screen.get(), LOGPIXELSY);
}

LOGFONTW messageLogFont(int dpi) noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    static const auto forDpi = userFunction<BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
    if (forDpi != nullptr &&
        forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi)) != FALSE) {
        return metrics.lfMessageFont;
    }
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, screenDpi());
    return metrics.lfMessageFont;
}

}  // namespace

int dpiOf(HWND window) noexcept {
    static const auto forWindow = userFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const int dpi = forWindow == nullptr ? 0 : static_cast<int>(forWindow(window));
    return dpi > 0 ? dpi : screenDpi();
}

UniqueFont messageFont(int dpi) noexcept {
    const LOGFONTW font = messageLogFont(dpi);
    return UniqueFont(CreateFontIndirectW(&font));
}

UniqueFont fontAt(HFONT font, int dpi) noexcept {
    LOGFONTW description{};
    GetObjectW(font, sizeof description, &description);
    description.lfHeight = MulDiv(description.lfHeight, dpi, screenDpi());
    description.lfWidth = MulDiv(description.lfWidth, dpi, screenDpi());
    return UniqueFont(CreateFontIndirectW(&description));
}

UniqueFont ruleFont(const shell::FontRule& rule, int dpi) {
    LOGFONTW font = messageLogFont(dpi);
    font.lfHeight = -MulDiv(rule.Size, dpi, 72);
    font.lfWidth = 0;
    font.lfCharSet = rule.Charset;
    if (!rule.Name.empty()) {
        const auto name = text::toWide(rule.Name);
        const auto length = std::min<std::size_t>(name.size(), LF_FACESIZE - 1);
        std::copy_n(name.begin(), length, font.lfFaceName);
        font.lfFaceName[length] = L'\0';
    }
    return UniqueFont(CreateFontIndirectW(&font));
}

TextSize textSize(HDC context, HFONT font) noexcept {
    const Selected selected(context, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    return {metrics.tmHeight, metrics.tmAveCharWidth};
}

int textWidth(HDC context, std::wstring_view text) noexcept {
    SIZE size{};
    GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

int captionWidth(HDC context, std::wstring caption) {
    std::erase(caption, L'&');
    return textWidth(context, caption);
}

}  // namespace vrn::activex
