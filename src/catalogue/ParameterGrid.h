// The parameter model: one macro of the catalogue as rows of the grid, and the catalogue lists that fill the combo boxes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "method/EditorState.h"

namespace vrn::catalogue {

/// Fills `cboSelectedMacro` with the catalogue's macros; a macro's description is its entry's tool tip.
void FillMacros(method::EditorState& state) noexcept;

/// Fills `cboSyringe` with the syringes and selects the first.
void fillSyringesize(method::EditorState& state) noexcept;

/// The value of a property of an object, or, with an empty name, the list of the objects of a type (that have the property
/// `filterProperty`, unless that is empty). Types, names and properties are compared in the ANSI code page.
[[nodiscard]] std::string ObjectPropertyValue(method::EditorState& state, const std::string& objectType,
                                              const std::string& objectName, const std::string& propertyName,
                                              const std::string& filterProperty = {});

/// The number behind a range field that is a reference to a property of the chosen syringe, such as "SYR.MaxVolume", divided by the
/// unit factor; 0 when it cannot be resolved.
[[nodiscard]] float ReturnValue(method::EditorState& state, const std::string& field, std::int32_t unitFactor) noexcept;

/// Builds parameter model, atom line and grid rows for the macro of this name. Without such a macro only the grid's usability
/// is brought in line.
void macroParams(method::EditorState& state, const std::string& name) noexcept;

/// Whether the grid row is an object parameter.
[[nodiscard]] bool IsObjectPosition(const method::EditorState& state, int row) noexcept;

/// The values in the grid, joined with ",".
[[nodiscard]] std::string GetCurrenMacroParams(const method::EditorState& state);

/// Whether the text is a number as the thread's locale writes it.
[[nodiscard]] bool isNumberText(const method::EditorState& state, std::string_view text);

}  // namespace vrn::catalogue
