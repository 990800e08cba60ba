// Calls of objects that are known by their members' names only.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "com/Com.h"

namespace vrn::com {

/// What EXCEPINFO says as `errors::Error`; frees its texts. `result` stands in where it has no number.
[[noreturn]] void throwException(EXCEPINFO& exception, HRESULT result);

/// An object behind IDispatch. Failures are `errors::Error`s: with the object's own description, source and help where
/// it gives them.
class Object {
  public:
    Object() = default;
    explicit Object(ComPtr<IDispatch> object) : object_(std::move(object)) {}
    /// Of anything that answers to IDispatch; none for any other object.
    explicit Object(IUnknown* object);

    explicit operator bool() const noexcept { return object_ != nullptr; }
    [[nodiscard]] IDispatch* get() const noexcept { return object_.Get(); }

    /// Whether the object has a member of this name.
    [[nodiscard]] bool has(std::wstring_view member) const;
    /// Calls a method. An argument that is to come back is passed as `byReference`.
    Variant call(std::wstring_view member, std::initializer_list<VARIANT> arguments = {}) const;
    /// Reads a property, or calls a method that stands in for one.
    [[nodiscard]] Variant read(std::wstring_view member) const;

  private:
    [[nodiscard]] DISPID idOf(std::wstring_view member) const;
    Variant invoke(DISPID member, WORD kind, std::initializer_list<VARIANT> arguments) const;

    ComPtr<IDispatch> object_;
};

/// An argument that the called method may write to.
[[nodiscard]] VARIANT byReference(Variant& value) noexcept;

/// The value as a text, number or truth. `errors::Error` (type mismatch) when it cannot be converted.
[[nodiscard]] std::string textOf(const Variant& value);
[[nodiscard]] std::int32_t numberOf(const Variant& value);
[[nodiscard]] bool truthOf(const Variant& value);
/// The elements of a one-dimensional array of texts or of values that convert to texts.
[[nodiscard]] std::vector<std::string> textsOf(const Variant& value);

}  // namespace vrn::com
