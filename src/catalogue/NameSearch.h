// Which names occur inside which: the substring rules of the units list, without searching every text for every name.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/Indexes.h"

namespace vrn::catalogue {

/// The positions of the macros that a walk through the catalogue selects by a list text of names: a macro is selected when its name
/// occurs anywhere in what remains of the text, and all its occurrences are taken out of it then. Error 91 for a macro
/// without name that the walk meets.
[[nodiscard]] std::vector<std::size_t> macrosNamedIn(const std::string& names, const MacroIndex& macros);

/// The names that do not occur inside those before them, as a list text.
[[nodiscard]] std::string withoutContainedNames(const std::vector<std::string>& names);

}  // namespace vrn::catalogue
