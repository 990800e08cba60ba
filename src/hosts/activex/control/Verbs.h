// What a container can ask an embedded object to do, and what of it stands in a menu.
#pragma once

#include <windows.h>
// After windows.h, which it builds on.
#include <oleidl.h>

namespace vrn::activex {

/// A new enumerator of the control's verbs.
[[nodiscard]] IEnumOLEVERB* enumerateVerbs();

}  // namespace vrn::activex
