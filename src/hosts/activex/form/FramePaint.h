// How frames look: a group box with a caption, or the border around a control without one.
#pragma once

#include <windows.h>

#include <string>

#include "hosts/activex/form/Session.h"

namespace vrn::activex {

/// Where the caption of a group box stands. The box's font must be selected.
[[nodiscard]] RECT groupCaption(HDC context, const RECT& place, const std::wstring& caption, const Look& look) noexcept;

/// Draws a group box with its line and caption. `window` lends its theme; null draws as without one.
void paintGroupBox(HDC context, const RECT& place, const std::wstring& caption, bool enabled, const Look& look,
                   HWND window);

/// Draws the border of an entry field along the edge of `place`, and fills what is inside.
void paintFieldBorder(HDC context, const RECT& place, bool enabled, const Look& look, HWND window);

}  // namespace vrn::activex
