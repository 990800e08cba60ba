// XML text to a tree: the parse of `Document::loadXML`.
#pragma once

#include <string_view>

#include "xml/Dom.h"
#include "xml/libxml2/Tree.h"

namespace vrn::xml {

/// The tree of the text, or null and the error record filled. Throws std::bad_alloc and nothing else.
[[nodiscard]] tree::DocPtr parseText(std::string_view text, ParseError& error);

}  // namespace vrn::xml
