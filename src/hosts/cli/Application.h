// The tool as a function: arguments in, exit status out.
#pragma once

#include "hosts/cli/Options.h"

namespace vrn::cli {

/// Adds all commands.
void describeTool(CLI::App& tool, Session& session);

/// Runs the tool; the first of the arguments is the program's name. Never throws.
[[nodiscard]] ExitStatus runTool(const std::vector<std::string>& arguments, const Console& console) noexcept;

}  // namespace vrn::cli
