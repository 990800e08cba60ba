// A parameter definition resolved for the instrument and the chosen syringe: what a value of it may be.
#pragma once

#include <string>
#include <vector>

#include "method/EditorState.h"

namespace vrn::catalogue {

struct Parameter {
    method::MacroParam model;     ///< range and default, or nothing of both for an object
    controls::GridRow row;        ///< display name, the value to begin with, an object's items
    std::string unit;             ///< the service's text for the unit code, else the code itself; may be empty
    bool isObject = false;        ///< the value is the name of an object
    bool followsSyringe = false;  ///< range or default are properties of the chosen syringe
};

/// The parameter that a definition text describes. Failures go to the caller.
[[nodiscard]] Parameter parameterOf(method::EditorState& state, const std::string& definitionText);

/// All parameters of a macro in grid order.
[[nodiscard]] std::vector<Parameter> parametersOf(method::EditorState& state, const xml::Node& macro);

}  // namespace vrn::catalogue
