// Routines over the positions of parameters in a step's value list, used when the method's timing is fingerprinted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "xml/Dom.h"

namespace vrn::method {

/// Whether some entry of the list, read as a number, is this index.
[[nodiscard]] bool CanRemoveParamIndexFromMacroValues(std::int16_t index, const std::vector<std::string>& indexList);

/// The step text "head(item,item,)" without the items at the listed zero-based positions. The item list is expected to end with ",":
/// that separator goes.
[[nodiscard]] std::string RemoveParamIndexFromMacroValues(const std::string& line, const std::vector<std::string>& indexList);

/// Adds to the list the positions of the embedded macro lines that contain item `position` (from 1) of a parameter text such as
/// "(Hold Time)". A macro data text that holds "-" between two "+", or at all without "+", adds nothing for that piece.
void FindIndexOfParamInMacroData(const std::string& methodText, const std::string& parameterText, std::int16_t position,
                                 std::vector<std::string>& indexList);
/// The same for a method that is loaded already.
void FindIndexOfParamInMacroData(const xml::Document& method, const std::string& parameterText, std::int16_t position,
                                 std::vector<std::string>& indexList);

}  // namespace vrn::method
