// Timestamps of cycles: what the method recorded against what the catalogue holds now.
#pragma once

#include <string>
#include <string_view>

#include "method/EditorState.h"

namespace vrn::method {

inline constexpr std::string_view cycleDateWarning =
    "The cycle on disk is different to the cycle embedded in this method, saving the method will automatically update the "
    "embedded cycle with the newer cycle.";

/// The `LastModifiedTimestamp` of the first element that `path` selects below `node`; "" without such an element or attribute.
[[nodiscard]] std::string Timestamp(const EditorState& state, std::string_view path, const xml::Node& node) noexcept;

/// The timestamp of the catalogue's macro of this name, as `Timestamp` finds it at "/Macros/Macro[MacroName="name"]/MacroName".
[[nodiscard]] std::string CatalogueTimestamp(const EditorState& state, const std::string& macroName) noexcept;

/// The name of the first cycle embedded in a method; "" when there is none. Error 5 for a name element without "]".
[[nodiscard]] std::string EmbeddedCycleName(const xml::Document& method);

/// Whether the catalogue's copy of the method's embedded cycle differs from it by timestamp. Never for a method without a recorded
/// timestamp or a cycle that the catalogue does not have.
[[nodiscard]] bool CycleIsDifferent(const EditorState& state, const xml::Document& method);

/// Runs the check for this method and shows or hides the warning.
void UpdateCycleDateLabel(EditorState& state, const xml::Document& method);

/// Shows or hides the warning as the last check left it.
void RefreshCycleDateNotice(EditorState& state);

}  // namespace vrn::method
