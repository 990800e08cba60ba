// The methods of the committed sets, as drafts.
#pragma once

#include "Installation.h"

namespace vrn::samples {

[[nodiscard]] MethodDraft tutorialMethod();
/// Three steps; the odd methods of the instrument are made from it. No text of its cycles holds a "-", so that the first
/// step's busy time stays out of the method's timing identifier.
[[nodiscard]] MethodDraft simpleMethod();
[[nodiscard]] MethodDraft multiStepMethod();

}  // namespace vrn::samples
