// The popup menu of values in the grid, and the hint that is shown on hover.
#pragma once

#include "method/EditorState.h"

namespace vrn::editing {

/// A press of the mouse in the grid's current row: shows the values that the parameter may take when the press was within the
/// part of the cell that opens the menu.
void grdMacro_OnMouseDown(method::EditorState& state, int position) noexcept;

/// An entry of the menu was chosen: it becomes the value of the row, as if the user had typed it.
void mnuIndexItem_Click(method::EditorState& state, int index) noexcept;

/// The mouse is over a grid row, or out of the grid with -1: shows or hides the hint. Failures go to the caller.
void grdMacro_OnMouseMove(method::EditorState& state, int row);

/// Puts the hint of a row into the hint box. Failures go to the caller.
void FillToolTipText(method::EditorState& state, int row);

/// The mouse moved over a frame: the hint goes.
void HideToolTip(method::EditorState& state) noexcept;

}  // namespace vrn::editing
