// The small language of edit scripts: one edit a line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

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
    bool isBefore = false;  ///< whether `Insert` puts the new step before that one, and not behind it
    std::string text;       ///< the macro, the syringe, or the description with CR LF between its lines
    std::vector<Assignment> values;

    static constexpr std::size_t atEnd = static_cast<std::size_t>(-1);
};

/// The commands of a script. Throws `Fault` that names script, line and position.
[[nodiscard]] std::vector<EditCommand> parseEditScript(const std::string& name, std::string_view script);

/// What a script may hold, for help.
extern const std::string_view editScriptHelp;

}  // namespace vrn::cli
