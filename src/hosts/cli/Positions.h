// Where in a file the things stand that findings are about.
#pragma once

#include <vector>

#include "hosts/cli/Findings.h"

namespace vrn::cli {

/// Gives every finding about a part of the method the position of that part, or of what should have it. Takes time linear to the
/// text that the document was parsed from, as long as findings come in the order of the steps.
void locate(std::vector<Finding>& findings, const xml::Document& document);

/// The place of a parameter definition of a cycle, from 0. That of the cycle when it has no such definition.
[[nodiscard]] xml::Position definitionPosition(const xml::Node& macro, std::size_t definition);

}  // namespace vrn::cli
