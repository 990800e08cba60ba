// Names for assistive technology.
#pragma once

#include <windows.h>

#include <string>

namespace vrn::activex {

/// Gives a window that has no text of its own, such as a list, the name that screen readers announce. Only a convenience:
/// where the system does not know such names, nothing happens.
void nameForAssistance(HWND window, const std::wstring& name) noexcept;

/// Takes the name back before the window goes.
void forgetName(HWND window) noexcept;

}  // namespace vrn::activex
