// What the layout of the form depends on, measured in the fonts in use.
#pragma once

#include <windows.h>

#include "hosts/activex/form/Layout.h"
#include "hosts/activex/form/Session.h"

namespace vrn::activex {

/// All but the heights of lists and grid, which depend on how they are drawn.
[[nodiscard]] LayoutInput measuredTexts(HDC context, const SIZE& client, const Look& look,
                                        const method::EditorState& state);

}  // namespace vrn::activex
