// Enabling and disabling the child controls, and the grid's look that goes with it.
#pragma once

#include "method/EditorState.h"

namespace vrn::method {

/// Enables or disables the container and all below it. Only frames and picture boxes are containers; anything else changes
/// nothing. Never reports: a control without the property is passed over.
void EnableControlsUserControl(EditorState& state, controls::Control& container, bool enable) noexcept;

/// Enables the grid and colours it as an editable or a greyed window.
void EnableGrid(EditorState& state, bool enable) noexcept;

/// Brings the grid's usability in line with its rows: without any it is switched off. Does not look at `booDisable`.
void ChangeGridTopRow(EditorState& state) noexcept;

/// The `DisableMethod` write: stores the flag and switches the whole editor frame. Disabling ends a pending edit.
void DisableMethod(EditorState& state, bool disable);

/// Enables or disables the buttons that change a step. In a method that is disabled nothing is enabled.
void EnableStepButtons(EditorState& state, bool enable);

/// Empties the grid before it is filled again.
void CleanGrdMacro(EditorState& state) noexcept;

}  // namespace vrn::method
