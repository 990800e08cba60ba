// What the parameter grid looks like.
#pragma once

#include <windows.h>

#include "controls/Grid.h"
#include "hosts/activex/form/GridGeometry.h"
#include "hosts/activex/form/Owners.h"

namespace vrn::activex {

/// Between the edge of a cell and its text, at 96 dpi.
inline constexpr int gridTextInset = 5;

struct GridPicture {
    const GridGeometry& geometry;
    const controls::Grid& model;
    HFONT font = nullptr;
    bool focused = false;   ///< whether the keyboard is in the grid
    int currentRow = 0;     ///< the row that the user is at
    int editedRow = 0;      ///< the row whose value is under the open editor
    HDC metrics = nullptr;  ///< measures text for a context that cannot; null for none
    int hotMenu = 0;        ///< the row whose menu field the mouse is on
    bool pressed = false;   ///< and is held down on
    HTHEME buttons = nullptr;
};

/// Draws all rows that touch `area`, and the empty ground below them. The header is a window of its own.
void paintGrid(HDC context, const GridPicture& picture, const RECT& area);

/// Draws the header row where there is no window for it.
void paintGridHeader(HDC context, const GridPicture& picture);

/// A colour as controls have them: a plain one, or the number of a system colour with the highest bit set.
[[nodiscard]] COLORREF colourOf(std::uint32_t colour) noexcept;

}  // namespace vrn::activex
