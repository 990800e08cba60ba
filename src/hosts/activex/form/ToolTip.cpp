#include "hosts/activex/form/ToolTip.h"

// After windows.h, which it builds on.
#include <commctrl.h>

#include <utility>

#include "hosts/activex/form/Metrics.h"

namespace vrn::activex {

namespace {

constexpr int widest = 400;         // at 96 dpi
constexpr short stays = 30 * 1000;  // milliseconds: long enough to read the longest text

TOOLINFOW toolOf(HWND owner, const RECT& area) noexcept {
    TOOLINFOW tool{};
    // The size before the field that only themed controls know.
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.hwnd = owner;
    tool.uId = 1;
    tool.rect = area;
    return tool;
}

}  // namespace

void ToolTip::begin(HWND window, HINSTANCE module) noexcept {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    owner_ = window;
    tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0,
                           window, nullptr, module, nullptr);
    auto tool = toolOf(window, {});
    std::wstring none;
    tool.lpszText = none.data();
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_AUTOPOP, stays);
}

void ToolTip::end() noexcept {
    if (tip_ != nullptr) {
        DestroyWindow(tip_);
        tip_ = nullptr;
        shown_ = {};
    }
}

void ToolTip::set(Tip tip, int dpi) noexcept {
    while (!tip.text.empty() && (tip.text.back() == L'\r' || tip.text.back() == L'\n')) {
        tip.text.pop_back();
    }
    if (tip.text == shown_.text && EqualRect(&tip.area, &shown_.area) != FALSE) {
        return;
    }
    SendMessageW(tip_, TTM_POP, 0, 0);
    auto tool = toolOf(owner_, tip.area);
    tool.lpszText = tip.text.data();
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, scaled(widest, dpi));
    SendMessageW(tip_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    shown_ = std::move(tip);
}

void ToolTip::follow(HWND window, HINSTANCE module, Tip tip, int dpi, UINT message, WPARAM wParam,
                     LPARAM lParam) noexcept {
    if (tip_ == nullptr) {
        if (tip.text.empty()) {
            return;
        }
        begin(window, module);
    }
    set(std::move(tip), dpi);
    MSG event{};
    event.hwnd = window;
    event.message = message;
    event.wParam = wParam;
    event.lParam = lParam;
    SendMessageW(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&event));
}

}  // namespace vrn::activex
