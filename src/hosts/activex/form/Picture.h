// The form as a picture, drawn from the models without windows.
#pragma once

#include <windows.h>

#include "hosts/activex/form/Form.h"
#include "method/EditorState.h"
#include "shell/modMethod.h"

namespace vrn::activex {

/// `font` is that of everything but grid and list, for the screen; null for the system's.
void drawForm(const Canvas& canvas, const method::EditorState& state, const shell::FontRule& rule, HFONT font);

}  // namespace vrn::activex
