// Edits of steps that the editor cannot read. It reads a method no further than to the first of them, so they are taken out or replaced
// in the document before the editor loads it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/cli/Checker.h"
#include "hosts/cli/EditScript.h"

namespace vrn::cli {

struct RepairedMethod {
    std::string text;                   ///< a method that the editor loads whole
    std::vector<EditCommand> commands;  ///< what is left to do in the editor
};

/// Carries out what the script does to steps that cannot be read; nothing when the method has none. Only deletions, syringe and
/// description may stand before that in the script. Throws `Fault`, also when such a step would be left.
[[nodiscard]] std::optional<RepairedMethod> repaired(Engine& engine, const XmlFile& method,
                                                     const method::Inspection& inspection, const std::string& script,
                                                     const std::vector<EditCommand>& commands);

}  // namespace vrn::cli
