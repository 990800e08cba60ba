// The control's entries in the registry.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleidl.h>

namespace vrn::activex {

/// The status of the control as containers read it before they create one: recompose on resize, cannot link inside, inside
/// out, activate when visible, set client site first.
inline constexpr DWORD miscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                    OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

/// Writes all entries, or leaves everything as it was before: another copy of the file that was registered stays so.
[[nodiscard]] HRESULT registerServer() noexcept;
/// Takes all entries away. What is not there is no failure.
[[nodiscard]] HRESULT unregisterServer() noexcept;

}  // namespace vrn::activex
