// The hand-made installation of an autosampler for liquids, headspace and SPME, in tables by family. Everything is made up:
// no product's cycles, values or names stand here.
#pragma once

#include <vector>

#include "Installation.h"

namespace vrn::samples {

[[nodiscard]] std::vector<Macro> liquidMacros();
[[nodiscard]] std::vector<Macro> headspaceMacros();
[[nodiscard]] std::vector<Macro> spmeMacros();
[[nodiscard]] std::vector<Macro> preparationMacros();
[[nodiscard]] std::vector<Macro> handlingMacros();
[[nodiscard]] std::vector<Macro> controlMacros();

[[nodiscard]] std::vector<Object> instrumentObjects();
[[nodiscard]] std::vector<Atom> instrumentAtoms();
[[nodiscard]] std::vector<NameGroup> instrumentNames();

/// The small installation that the tutorial set shows.
[[nodiscard]] Installation tutorialInstallation();

}  // namespace vrn::samples
