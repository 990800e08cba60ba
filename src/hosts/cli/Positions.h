// Where in a file the things stand that findings are about.
#pragma once

#include <string_view>
#include <vector>

#include "hosts/cli/Findings.h"

namespace vrn::cli {

/// Gives every finding about a part of the method the position of that part, or of what should have it. `text` is what `document`
/// was parsed from. Takes time linear to the text, however many findings there are.
void locate(std::vector<Finding>& findings, std::string_view text, const xml::Document& document);

/// The place of a parameter definition in the text of a macro catalogue; both numbers from 0. That of the macro when it has no such
/// definition.
[[nodiscard]] Position definitionPosition(std::string_view macros, std::size_t macro, std::size_t definition);

}  // namespace vrn::cli
