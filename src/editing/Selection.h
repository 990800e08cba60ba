// What the grid shows: a step of the sequence or an entry of the catalogue, with the chosen syringe.
#pragma once

#include <string>

#include "method/EditorState.h"

namespace vrn::editing {

/// A row of the sequence was selected: the grid takes the step's macro and values.
void lstMethodMacroList_Click(method::EditorState& state) noexcept;

/// A mouse button went down on the sequence list: 1 left, 2 right; place in twips.
void lstMethodMacroList_MouseDown(method::EditorState& state, int button, int shift, float x, float y) noexcept;

/// An entry of the catalogue was selected: the grid takes the macro with its defaults.
void cboSelectedMacro_Click(method::EditorState& state) noexcept;

/// "Initial Cycle": the grid takes the selected step again.
void cmdDefCycle_Click(method::EditorState& state) noexcept;

/// The user chose another syringe: ranges and defaults of the shown macro follow it, its values stay.
void cboSyringe_click(method::EditorState& state) noexcept;

/// The position of the catalogue entry with exactly this name; `index` stays as it is without one.
void GetMacroIndex(const method::EditorState& state, const std::string& name, int& index) noexcept;

}  // namespace vrn::editing
