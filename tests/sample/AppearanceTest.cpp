// The program's window hands the system's news on: to the control, whose form takes new fonts and finds new places.
#include <gtest/gtest.h>

#include "activex/support/ControlFile.h"
#include "hosts/sample/Window.h"
#include "hosts/sample/script/UserInput.h"
#include "sample/ActivationContext.h"

namespace vrn::test {
namespace {

NONCLIENTMETRICSW systemMetrics() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    return metrics;
}

/// Another size of the system's message font for as long as this lives. No window is notified.
class OtherMessageFont {
  public:
    explicit OtherMessageFont(LONG height) : before_(systemMetrics()) {
        auto metrics = before_;
        metrics.lfMessageFont.lfHeight = -height;
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    }
    ~OtherMessageFont() { SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, before_.cbSize, &before_, 0); }
    OtherMessageFont(const OtherMessageFont&) = delete;
    OtherMessageFont& operator=(const OtherMessageFont&) = delete;

  private:
    NONCLIENTMETRICSW before_;
};

HWND descendantOfClass(HWND window, const wchar_t* windowClass) {
    HWND found = FindWindowExW(window, nullptr, windowClass, nullptr);
    for (HWND child = GetWindow(window, GW_CHILD); found == nullptr && child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        found = descendantOfClass(child, windowClass);
    }
    return found;
}

LONG fontHeight(HWND window) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
    return std::abs(font.lfHeight);
}

TEST(AppearanceTest, NewFontsReachTheControl) {
    const Apartment apartment;
    const ActivationContext context;
    sample::Window window;
    window.show();
    HWND const form = descendantOfClass(window.frameWindow(), L"vrnMethodForm");
    ASSERT_NE(form, nullptr);
    HWND const button = sample::ChildWindow(form, "cmdReplace").handle();
    HWND const toolBar = FindWindowExW(window.frameWindow(), nullptr, L"ToolbarWindow32", nullptr);
    const auto heightOf = [](HWND of) {
        RECT place{};
        GetWindowRect(of, &place);
        return place.bottom - place.top;
    };
    const LONG buttonBefore = heightOf(button);
    const LONG barBefore = heightOf(toolBar);
    {
        const OtherMessageFont large(40);
        SendMessageW(window.frameWindow(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
        EXPECT_EQ(fontHeight(button), 40);
        EXPECT_GT(heightOf(button), 40);
        EXPECT_GT(heightOf(toolBar), barBefore);
    }
    SendMessageW(window.frameWindow(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
    EXPECT_EQ(heightOf(button), buttonBefore);
    EXPECT_EQ(heightOf(toolBar), barBefore);
}

}  // namespace
}  // namespace vrn::test
