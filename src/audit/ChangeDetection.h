// What differs between the baseline method and the method as the editor would now write it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "method/EditorState.h"

namespace vrn::audit {

/// The name of the method's first step; the whole text of a step without "(".
[[nodiscard]] std::string Cycle_name(const method::EditorState& state,
                                     const std::optional<xml::Document>& method) noexcept;
[[nodiscard]] std::string Syringe_size(const method::EditorState& state,
                                       const std::optional<xml::Document>& method) noexcept;
/// The values of the first step, separated by ",".
[[nodiscard]] std::string Params_List(const method::EditorState& state,
                                      const std::optional<xml::Document>& method) noexcept;
/// The parameter's name in an embedded macro line; "" without a line.
[[nodiscard]] std::string Param_name(const method::EditorState& state, const xml::Node& line) noexcept;

/// Tells whether the value changed and, only then, hands back the new one.
void Cycle_name_changed(const method::EditorState& state, std::string& newName, bool& changed) noexcept;
void Syringe_size_changed(const method::EditorState& state, std::string& newSize, bool& changed) noexcept;

/// Adds an entry to the audit document for every value of the first step that changed. Values are matched by position.
void Update_param_changes(const method::EditorState& state, const xml::Document& audit) noexcept;
/// The comparison proper. A new list that is shorter than the old, and not empty, ends it at its end with error 9.
void Compare_params(const method::EditorState& state, const xml::Document& audit, const std::string& oldList,
                    const std::string& newList) noexcept;

}  // namespace vrn::audit
