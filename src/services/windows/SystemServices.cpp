#include "services/windows/SystemServices.h"

#include <windows.h>

#include <array>

#include "text/Ansi.h"
#include "text/windows/Wide.h"

namespace vrn::services {

namespace {

class SystemLocale final : public LocaleService {
  public:
    std::string decimalSeparator() override {
        std::array<char, 8> separator{};
        const int length =
            GetLocaleInfoA(GetThreadLocale(), LOCALE_SDECIMAL, separator.data(), static_cast<int>(separator.size()));
        return length > 1 ? text::fromAnsi(separator.data()) : ".";
    }
    std::uint32_t systemDefaultLcid() override { return GetSystemDefaultLCID(); }
};

class SystemMessageBox final : public errors::MessageBoxService {
  public:
    std::int32_t MessageBoxExA(std::intptr_t hWnd, const std::string& text, const std::string& caption,
                               std::int32_t flags) override {
        SetLastError(0);
        // Without an owner a box blocks nobody; as task-modal it is modal to its thread all the same.
        const auto style = static_cast<UINT>(flags) | (hWnd == 0 ? MB_TASKMODAL : 0U);
        const int button = ::MessageBoxExA(reinterpret_cast<HWND>(hWnd), text.c_str(), caption.c_str(), style, 0);
        lastError_ = button == 0 ? GetLastError() : 0;
        return button;
    }
    errors::ErrorState lastError() override {
        errors::ErrorState state;
        state.lastSystemError = lastError_;
        return state;
    }
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override {
        MessageBoxW(nullptr, text::toWide(text).c_str(), text::toWide(caption).c_str(),
                    static_cast<UINT>(style) | MB_TASKMODAL);
    }

  private:
    DWORD lastError_ = 0;
};

}  // namespace

std::shared_ptr<LocaleService> systemLocale() { return std::make_shared<SystemLocale>(); }

std::shared_ptr<errors::MessageBoxService> systemMessageBox() { return std::make_shared<SystemMessageBox>(); }

}  // namespace vrn::services
