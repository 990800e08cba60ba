// Options that several commands have, named and explained in one place.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "hosts/cli/Engine.h"
#include "hosts/cli/MethodRun.h"
#include "hosts/cli/Rewrite.h"

namespace vrn::cli {

void addSetOptions(CLI::App& command, SetArguments& set);
void addMethodOptions(CLI::App& command, MethodArguments& methods);
void addWriteOptions(CLI::App& command, WriteArguments& write);

/// What a command of the tool works with, and how the call ended.
struct Session {
    Console console;
    ExitStatus status = ExitStatus::Well;
};

}  // namespace vrn::cli
