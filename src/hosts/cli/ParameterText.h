// What a parameter takes, in words and as JSON.
#pragma once

#include <string>

#include "catalogue/ParameterModel.h"
#include "hosts/cli/Json.h"

namespace vrn::cli {

/// "1 to 10, default 5", "one of: Tray 1, Tray 2", "any text". With `full` lists are not shortened.
[[nodiscard]] std::string limitsText(const catalogue::Parameter& parameter, bool full);

/// Adds unit, range, default, types and list to an object.
void addLimits(Json& json, const catalogue::Parameter& parameter);

}  // namespace vrn::cli
