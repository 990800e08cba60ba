// Edit scripts: the small language in which a call says how a method is to change, one edit a line, and its carrying out.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/cli/Engine.h"
#include "hosts/cli/Files.h"
#include "method/Inspection.h"

namespace vrn::cli {

struct Assignment {
    std::string parameter;
    std::string value;
};

struct EditCommand {
    enum class Verb { Description, Syringe, Insert, Replace, Delete, Set };
    Verb verb = Verb::Description;
    std::size_t line = 0;   ///< in the script, from 1
    std::size_t step = 0;   ///< the one that is meant, from 1; of `Insert` the one beside the new one, or `atEnd`
    bool isBefore = false;  ///< whether `Insert` puts the new step before that one rather than after it
    std::string text;       ///< the macro, the syringe, or the description with CR LF between its lines
    std::vector<Assignment> values;

    static constexpr std::size_t atEnd = static_cast<std::size_t>(-1);
};

/// What a script may hold, for help.
extern const std::string_view editScriptHelp;

/// The commands of a script. Throws `Fault` that names script, line and position.
[[nodiscard]] std::vector<EditCommand> parseEditScript(const std::string& name, std::string_view script);

struct RepairedMethod {
    std::string text;                   ///< a method that the editor loads whole
    std::vector<EditCommand> commands;  ///< what is left to do in the editor
};

/// Carries out what the script does to steps that the editor cannot read; nothing when the method has none. The editor reads a method
/// no further than to the first of them, so they are taken out or replaced in the document before it loads that. Only deletions,
/// syringe and description may come before that in the script. Throws `Fault`, also when such a step would be left.
[[nodiscard]] std::optional<RepairedMethod> repaired(Engine& engine, const XmlFile& method,
                                                     const method::Inspection& inspection, const std::string& script,
                                                     const std::vector<EditCommand>& commands);

/// Carries out the commands on the method that the engine has loaded as a user at the window would: by choosing, typing and pressing,
/// with all that the window checks. Throws `Fault` that names the script's line at the first edit that the editor refuses.
void carryOut(Engine& engine, const std::string& script, const std::vector<EditCommand>& commands);

}  // namespace vrn::cli
