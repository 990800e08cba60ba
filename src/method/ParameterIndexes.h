// Routines over the positions of parameters in a step's value list, used when the method's timing is fingerprinted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "xml/Dom.h"

namespace vrn::method {

/// An index list as numbers; entries that are none are left out.
struct ParamIndexes {
    explicit ParamIndexes(const std::vector<std::string>& indexList);

    std::unordered_set<double> numbers;
};

/// Whether some entry of the list, read as a number, is this index.
[[nodiscard]] bool CanRemoveParamIndexFromMacroValues(std::int16_t index, const ParamIndexes& indexes);

/// The step text "head(item,item,)" without the items at the listed zero-based positions. The item list is expected to end with ",":
/// that separator goes.
[[nodiscard]] std::string RemoveParamIndexFromMacroValues(const std::string& line,
                                                          const std::vector<std::string>& indexList);

/// The embedded macro lines of a method, read once for any number of searches.
struct MacroDataLines {
    /// Error 91 for a method without macro data.
    explicit MacroDataLines(const xml::Document& method);

    std::vector<std::string> texts;
    std::size_t searches = 0;  ///< one for every piece between "+" that has no "-"; all find the same
};

/// The positions of the lines that contain item `position` (from 1) of a parameter text such as "(Hold Time)", each once; none when
/// the lines are not searched at all.
[[nodiscard]] std::vector<std::string> PositionsInMacroData(const MacroDataLines& lines,
                                                            const std::string& parameterText, std::int16_t position);

/// Adds these positions to the list once for every search. A list that is only asked whether a position is in it is better
/// made from `PositionsInMacroData`. A method that is not well-formed leaves the list alone.
void FindIndexOfParamInMacroData(const std::string& methodText, const std::string& parameterText, std::int16_t position,
                                 std::vector<std::string>& indexList);

}  // namespace vrn::method
