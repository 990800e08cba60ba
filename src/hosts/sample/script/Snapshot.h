// What a user sees of the control's windows, in the form of the scripted host's snapshot. What no window shows is left out.
#pragma once

#include <windows.h>

#include "hosts/script/Protocol.h"

namespace vrn::sample {

/// `form` is the control's outermost window.
[[nodiscard]] script::Json snapshot(HWND form);

}  // namespace vrn::sample
