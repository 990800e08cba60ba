// The audit trail: an XML document that names what changed against the method as handed over.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "method/EditorState.h"

namespace vrn::audit {

/// The serialised audit trail of the editor as it stands, or "" when it could not be produced. Builds the method anew.
[[nodiscard]] std::string AuditTrail(method::EditorState& state) noexcept;

/// The audit trail of the editor's method against another one, which becomes the baseline.
[[nodiscard]] std::string AuditTrailAgainst(method::EditorState& state, const xml::Document& baseline) noexcept;

/// A new audit document: declaration and empty root.
[[nodiscard]] std::optional<xml::Document> Create_AuditTrail(const method::EditorState& state) noexcept;

/// Puts an attribute on the root's child of this name, which is made when it is missing.
void Add_Node_To_MethodAuditTrail(const method::EditorState& state, const xml::Document& audit,
                                  std::string_view element, std::string_view attribute,
                                  std::string_view value) noexcept;

/// Appends a `Parameter` entry.
void Add_Param_To_MethodAuditTrail(const method::EditorState& state, const xml::Document& audit, std::string_view name,
                                   std::string_view value) noexcept;

/// Makes an element and appends it to the document itself.
void Create_Node(const method::EditorState& state, const xml::Document& audit, std::string_view element) noexcept;

}  // namespace vrn::audit
