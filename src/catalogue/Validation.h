// Checks of entered values against the parameter model of the shown macro.
#pragma once

#include <string>

#include "method/EditorState.h"

namespace vrn::catalogue {

enum class Verdict { Accepted, NotANumber, OutOfRange };

/// What the window's checks say to a value of a value parameter. `param` must not be a part of `state` that a host's message
/// loop may replace.
[[nodiscard]] Verdict checkValue(method::EditorState& state, const method::MacroParam& param, const std::string& value);

/// Whether every value in the grid is allowed. The first that is not is shown to the user and replaced by its default. False
/// without a message while the method is disabled. Failures go to the caller.
[[nodiscard]] bool ValidateParams(method::EditorState& state);

/// Whether the pending edit may become the cell's value; a refused one is shown to the user. An accepted change marks the
/// method as changed. True when there is no pending edit.
[[nodiscard]] bool grdMacro_OnValidate(method::EditorState& state) noexcept;

/// Brings a number that was typed with the locale's decimal separator into the form that a method keeps: a comma would
/// part the value in two.
void grdMacro_OnSetEditText(method::EditorState& state, int row, std::string& text) noexcept;

}  // namespace vrn::catalogue
