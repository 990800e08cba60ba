// One owner type per kind of COM value, and the way a failing HRESULT becomes the editor's error. Windows only.
//
// Interface pointers are owned by `ComPtr` (wrl/client.h of the system's headers).
#pragma once

#include <windows.h>
// After windows.h, which they build on.
#include <oleauto.h>
#include <wrl/client.h>

#include <string>
#include <string_view>
#include <utility>

namespace vrn::com {

using Microsoft::WRL::ComPtr;

/// Throws `errors::Error` with the HRESULT as its number and the system's text, or the text of the thread's COM error
/// information when `failed` supports it (null: no error information is asked for).
[[noreturn]] void throwFailure(HRESULT result, IUnknown* failed = nullptr, const IID* interfaceId = nullptr);

inline void require(HRESULT result) {
    if (FAILED(result)) {
        throwFailure(result);
    }
}

/// A text as COM passes it. Null and empty are the same text.
class Bstr {
  public:
    Bstr() = default;
    /// Throws std::bad_alloc.
    explicit Bstr(std::string_view utf8);
    explicit Bstr(std::wstring_view wide);
    ~Bstr() { SysFreeString(text_); }
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;

    [[nodiscard]] BSTR get() const noexcept { return text_; }
    [[nodiscard]] std::wstring_view view() const noexcept {
        return {text_ == nullptr ? L"" : text_, SysStringLen(text_)};
    }
    [[nodiscard]] std::string utf8() const;
    /// For a call that gives a text away.
    [[nodiscard]] BSTR* put() noexcept {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    [[nodiscard]] BSTR release() noexcept { return std::exchange(text_, nullptr); }

  private:
    BSTR text_ = nullptr;
};

/// The text of a BSTR that somebody else owns.
[[nodiscard]] std::string utf8Of(BSTR text);

/// A value of any automation type.
class Variant {
  public:
    Variant() noexcept { VariantInit(&value_); }
    explicit Variant(std::string_view utf8);
    explicit Variant(std::int32_t number) noexcept;
    explicit Variant(IUnknown* object) noexcept;
    ~Variant() { VariantClear(&value_); }
    Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    Variant& operator=(Variant&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    [[nodiscard]] const VARIANT& get() const noexcept { return value_; }
    /// For a call that only reads, but whose declaration does not say so.
    [[nodiscard]] VARIANT* readOnly() const noexcept { return const_cast<VARIANT*>(&value_); }
    /// For a call that reads and writes.
    [[nodiscard]] VARIANT& ref() noexcept { return value_; }
    [[nodiscard]] VARIANT* put() noexcept {
        VariantClear(&value_);
        return &value_;
    }

  private:
    VARIANT value_{};
};

}  // namespace vrn::com
