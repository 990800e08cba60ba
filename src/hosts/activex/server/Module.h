// The DLL as a whole: its handle, how many things keep it loaded, its type library.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleauto.h>

#include "com/Com.h"

namespace vrn::activex::module {

/// The module that holds this code and its resources: the DLL, or a program that links it for a test.
[[nodiscard]] HINSTANCE instance() noexcept;

/// Every object and every server lock holds one of these; the DLL may be unloaded when there is none.
class Reference {
  public:
    Reference() noexcept;
    ~Reference();
    Reference(const Reference&) = delete;
    Reference& operator=(const Reference&) = delete;
};
void lock(bool keep) noexcept;
[[nodiscard]] bool isIdle() noexcept;

/// The full path of the module.
[[nodiscard]] std::wstring path();

/// The type library that the module carries, registered or not.
[[nodiscard]] com::ComPtr<ITypeLib> typeLibrary();
/// What it says of one interface or class.
[[nodiscard]] com::ComPtr<ITypeInfo> typeInfo(const GUID& id);

}  // namespace vrn::activex::module
