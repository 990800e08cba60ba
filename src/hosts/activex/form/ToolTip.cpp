#include "hosts/activex/form/ToolTip.h"

// After windows.h, which it builds on.
#include <commctrl.h>

#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

namespace {

constexpr int widest = 400;  // at 96 dpi

TOOLINFOW toolOf(HWND window) noexcept {
    TOOLINFOW tool{};
    // The size before the field that only themed controls know.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = GetParent(window);
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    return tool;
}

}  // namespace

void ToolTip::begin(HWND window, HINSTANCE module) noexcept {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    window_ = window;
    tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0,
                           window, nullptr, module, nullptr);
    auto tool = toolOf(window);
    std::wstring none;
    tool.lpszText = none.data();
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTip::end() noexcept {
    if (tip_ != nullptr) {
        DestroyWindow(tip_);
        tip_ = nullptr;
    }
}

void ToolTip::setText(std::wstring text, int dpi) noexcept {
    while (!text.empty() && (text.back() == L'\r' || text.back() == L'\n')) {
        text.pop_back();
    }
    auto tool = toolOf(window_);
    tool.lpszText = text.data();
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, scaled(widest, dpi));
    SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace vrn::activex
