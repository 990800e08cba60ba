// What a user could see and a debugger could read of an editor, as JSON.
#pragma once

#include <nlohmann/json.hpp>

#include "method/EditorState.h"

namespace vrn::script {

/// Keys keep the order in which they are documented.
using Json = nlohmann::ordered_json;

[[nodiscard]] Json snapshot(const method::EditorState& state);

}  // namespace vrn::script
