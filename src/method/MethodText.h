// What the user reads about a document that cannot be parsed.
#pragma once

#include <string>
#include <string_view>

#include "xml/Dom.h"

namespace vrn::method {

/// The seven lines that tell the user why a document could not be parsed, under a heading.
[[nodiscard]] std::string parseErrorReport(std::string_view heading, const xml::ParseError& error);

}  // namespace vrn::method
