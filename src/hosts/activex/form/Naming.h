// Names for assistive technology.
#pragma once

#include <windows.h>

#include <string>

namespace vrn::activex {

/// Gives a window that has no text of its own, such as a list, the name that screen readers announce. Only a convenience:
/// where the system does not know such names, nothing happens.
void nameForAssistance(HWND window, const std::wstring& name) noexcept;

/// The state of a window that can be read but not used: read-only. `focused`: whether it has the keyboard. Otherwise the
/// system's own account of it holds again.
void showStateForAssistance(HWND window, bool readOnly, bool focused = false) noexcept;

/// Takes name and state back before the window goes.
void forgetName(HWND window) noexcept;

}  // namespace vrn::activex
