#include "services/windows/SystemServices.h"

#include <windows.h>

#include <array>
#include <utility>

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
    explicit SystemMessageBox(std::function<std::intptr_t()> owner) : owner_(std::move(owner)) {}

    std::int32_t MessageBoxExA(std::intptr_t hWnd, const std::string& text, const std::string& caption,
                               std::int32_t flags) override {
        HWND const owner = ownerFor(hWnd);
        SetLastError(0);
        const int button = ::MessageBoxExA(owner, text.c_str(), caption.c_str(), styleOf(flags, owner), 0);
        lastError_ = button == 0 ? GetLastError() : 0;
        // The user has seen a box that went with its owner: what the box said is no news any more.
        return button == 0 && owner != nullptr && IsWindow(owner) == FALSE ? errors::buttonOk : button;
    }
    errors::ErrorState lastError() override {
        errors::ErrorState state;
        state.lastSystemError = lastError_;
        return state;
    }
    void fallback(const std::string& text, const std::string& caption, std::int32_t style) override {
        HWND const owner = ownerFor(0);
        MessageBoxW(owner, text::toWide(text).c_str(), text::toWide(caption).c_str(), styleOf(style, owner));
    }

  private:
    [[nodiscard]] HWND ownerFor(std::intptr_t wanted) const {
        return reinterpret_cast<HWND>(wanted == 0 && owner_ ? owner_() : wanted);
    }
    // Without an owner a box blocks nobody; as task-modal it is modal to its thread.
    static UINT styleOf(std::int32_t style, HWND owner) noexcept {
        return static_cast<UINT>(style) | (owner == nullptr ? MB_TASKMODAL : 0U);
    }

    std::function<std::intptr_t()> owner_;
    DWORD lastError_ = 0;
};

}  // namespace

std::shared_ptr<LocaleService> systemLocale() { return std::make_shared<SystemLocale>(); }

std::shared_ptr<errors::MessageBoxService> systemMessageBox(std::function<std::intptr_t()> owner) {
    return std::make_shared<SystemMessageBox>(std::move(owner));
}

}  // namespace vrn::services
