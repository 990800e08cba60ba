// What makes controls for COM.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <unknwn.h>

namespace vrn::activex {

/// An interface of the one class factory; E_NOINTERFACE for one that it does not have.
[[nodiscard]] HRESULT classFactory(REFIID iid, void** factory) noexcept;

}  // namespace vrn::activex
