// Loading the host's documents.
#pragma once

#include <string_view>

#include "method/EditorState.h"

namespace vrn::method {

/// Takes the host's documents over and shows the method. Each argument is a node's serialised XML text; an empty one stands for
/// a node without children. Every failure is shown to the user or reported to the host, and the call returns normally.
void SetXmlDocuments(EditorState& state, std::string_view domMacros, std::string_view domlatestKex,
                     std::string_view domMethod, std::string_view domConfig) noexcept;

/// Another method with the documents that are loaded: as `SetXmlDocuments` with the same three texts again, their reports
/// included, but they are neither parsed nor indexed anew.
void SetMethod(EditorState& state, std::string_view domMethod) noexcept;

}  // namespace vrn::method
