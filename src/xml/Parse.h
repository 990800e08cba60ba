// From text to tree: the one place where XML is parsed.
#pragma once

#include <string_view>

#include "xml/Dom.h"
#include "xml/Tree.h"

namespace vrn::xml {

/// Parses `text` (UTF-8) into an empty tree. On an error the tree's record says where, the answer is false, and the tree holds
/// whatever was read before it. Throws std::bad_alloc and nothing else.
[[nodiscard]] bool parse(std::string_view text, Tree& tree);

}  // namespace vrn::xml
