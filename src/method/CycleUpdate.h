// Steps that were written for an older form of their cycle, brought to the catalogue's.
#pragma once

#include <string>
#include <vector>

#include "method/EditorState.h"

namespace vrn::method {

/// One thing that became of a step's values.
struct ValueChange {
    enum class Kind {
        Added,        ///< a parameter that is new: it has the value that the grid begins with
        Dropped,      ///< a parameter that is gone, with its value
        UnitChanged,  ///< kept, but its unit is another now
    };
    Kind kind = Kind::Added;
    std::size_t step = 0;  ///< from 0
    std::string macro;
    std::string parameter;
    std::string value;
};

/// Rearranges the values of the sequence by parameter name: a value goes to the catalogue's parameter that has the name of the one
/// that the loaded method embeds at the value's position. Where the cycle is not embedded, or its parameters are still the same, values stay
/// where they are, and those after the last parameter are dropped. The list's first row is shown anew when any were rearranged.
[[nodiscard]] std::vector<ValueChange> adoptCatalogueCycles(EditorState& state);

}  // namespace vrn::method
