// What a user could see and a debugger could read of an editor, as JSON.
#pragma once

#include "hosts/script/Protocol.h"
#include "method/EditorState.h"

namespace vrn::script {

[[nodiscard]] Json snapshot(const method::EditorState& state);

}  // namespace vrn::script
