// Text on any device. A metafile of the old kind takes text down but cannot measure it, so that the system's DrawText draws
// nothing there; another context measures for it then.
#pragma once

#include <windows.h>

#include <string_view>

namespace vrn::activex {

/// Whether the context takes calls down without being able to measure, see above.
[[nodiscard]] bool isMetafile(HDC context) noexcept;

/// DrawText with these of its formats: DT_LEFT, DT_CENTER, DT_VCENTER, DT_SINGLELINE, DT_WORDBREAK, DT_END_ELLIPSIS, DT_NOPREFIX,
/// DT_HIDEPREFIX. `metrics` measures in the units of `context`, and may be the same; each has the font selected.
void drawText(HDC context, HDC metrics, std::wstring_view text, RECT place, UINT format);

}  // namespace vrn::activex
