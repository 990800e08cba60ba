// The rules that hand-written tables must keep. A slip in a table stops the generator instead of becoming a sample.
#pragma once

#include "Installation.h"

namespace vrn::samples {

/// Throws std::runtime_error that names the first thing wrong: a name used twice or with a character that separates
/// values, a type without objects, an atom that the instrument does not have, an atom's argument that its cycle cannot
/// give, a reference to a property that no syringe has, a limit that is no whole number, a default out of its range.
void checkTables(const Installation& installation);

/// Throws unless every step's cycle is in the catalogue and has a value for each of its parameters.
void checkDraft(const Installation& installation, const MethodDraft& draft);

}  // namespace vrn::samples
