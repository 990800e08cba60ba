// Where in a file the things stand that findings are about.
#pragma once

#include <string_view>
#include <vector>

#include "hosts/cli/Findings.h"

namespace vrn::cli {

/// Gives every finding about a part of the method the position of that part, or of what should have it. `text` is what `document`
/// was parsed from. Takes time linear to the text, however many findings there are.
void locate(std::vector<Finding>& findings, std::string_view text, const xml::Document& document);

}  // namespace vrn::cli
