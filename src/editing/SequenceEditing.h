// Insert, Replace and Delete: list rows and sequence records kept in step.
#pragma once

#include "method/EditorState.h"

namespace vrn::editing {

/// Puts the macro chosen in the catalogue, with the grid's values, behind the selected row, or at the end when none is selected. Does
/// nothing without a chosen macro or when a value is refused.
void cmdInsert_Click(method::EditorState& state) noexcept;

/// Puts the chosen macro with the grid's values in place of the selected row.
void cmdReplace_Click(method::EditorState& state) noexcept;

/// Takes the selected row out.
void cmdDelete_Click(method::EditorState& state) noexcept;

}  // namespace vrn::editing
