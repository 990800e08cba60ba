// XML text to a tree: the parse of `Document::loadXML`.
#pragma once

#include <string_view>

#include "xml/Dom.h"
#include "xml/msxml/Tree.h"

namespace vrn::xml {

/// Reads the text into the tree, which is empty. On false the error record is filled and the tree is not to be used.
[[nodiscard]] bool parseText(std::string_view text, tree::Tree& tree, ParseError& error);

}  // namespace vrn::xml
