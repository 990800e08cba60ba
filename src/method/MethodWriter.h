// Building the method that the editor would now write.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/Configuration.h"
#include "method/EditorState.h"
#include "method/Verification.h"

namespace vrn::method {

/// The method as a new signed document, or none: when the user's pending edit is refused, when unsaved edits do not pass
/// validation, when the sequence is empty, or after a failure (which is reported).
[[nodiscard]] std::optional<xml::Document> BuildMethod(EditorState& state) noexcept;

/// The public operation: builds, brings the cycle warning up to date and, from the second call on, makes the result the baseline.
[[nodiscard]] std::optional<xml::Document> GetMethodXml(EditorState& state) noexcept;

/// The user-defined names among the values of each macro's steps.
using UdonsByMacro = std::unordered_map<std::string, catalogue::UdonCollection>;

/// The content of `MacroData` for the macros of a list text; hands back the `OBJECT` elements of their configuration arguments.
[[nodiscard]] std::string MacrosData(EditorState& state, const std::string& names, const UdonsByMacro& udons,
                                     std::string& configObjects) noexcept;
/// The same for one macro.
[[nodiscard]] std::string OneMaroData(EditorState& state, const std::string& name, const UdonsByMacro& udons,
                                      std::string& configObjects) noexcept;
/// `OBJECT` elements from two list texts: the i-th name with the i-th user-defined name.
[[nodiscard]] std::string FillLocalConfigXml(EditorState& state, const std::string& names,
                                             const std::string& udons) noexcept;

/// Inserts `Description` with one line element per line of the text before the syringe.
void AppendArgumentsNode(EditorState& state, const xml::Document& method, std::string_view description) noexcept;
/// Inserts `Arguments` with one element per user-defined name before the version.
void AppendArgumentsNode(EditorState& state, const xml::Document& method, const xml::Document& configuration,
                         const std::vector<std::string>& udons) noexcept;
/// Collects the user-defined names that the method uses and inserts them.
void AddUdonsToMethodDOMDocument(EditorState& state, const xml::Document& method,
                                 const xml::Document& configuration) noexcept;

/// The fingerprint of the method's timing: changes with every value but those that a busy or overlap wait names.
[[nodiscard]] std::string AddTimingInformationID(EditorState& state, const xml::Document& method,
                                                 MethodSigner& signer) noexcept;

/// Sets an attribute on the node that the path selects; nothing when it selects none.
void AddAttribute(const EditorState& state, const xml::Document& document, std::string_view path, std::string_view name,
                  std::string_view value) noexcept;

}  // namespace vrn::method
