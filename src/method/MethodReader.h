// Reading a method into the editor.
#pragma once

#include "method/EditorState.h"

namespace vrn::method {

/// Turns `domMethod` into what the user sees and edits: description, syringe, sequence list and `arrMethodMacros`. Runs after
/// the combo boxes have been filled. An unknown cycle ends the reading of the sequence at that step.
void FillMethod(EditorState& state) noexcept;

/// Makes the sequence empty: no row, one empty record.
void ResetSequence(EditorState& state);

}  // namespace vrn::method
