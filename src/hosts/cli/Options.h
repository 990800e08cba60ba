// Options that several commands have, named and explained in one place.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/cli/Command.h"
#include "hosts/cli/Engine.h"
#include "hosts/cli/MethodRun.h"
#include "hosts/cli/Rewrite.h"

namespace vrn::cli {

void addSetOptions(Command& command, SetArguments& set);
void addMethodOptions(Command& command, MethodArguments& methods);
void addWriteOptions(Command& command, WriteArguments& write);

/// What a command of the tool works with, and how the call ended.
struct Session {
    Console console;
    ExitStatus status = ExitStatus::Well;
    /// Which files a call is about that ends with a fault, for its line of JSON.
    std::vector<std::pair<std::string, std::string>> about = {};
    bool outputIsTaken = false;  ///< the output is a document: lines about it go to the error stream
};

/// For a command that prints one text: adds `--json`, and gives what prints the text as it stands or, with that option, as an
/// object that has it under `key`.
[[nodiscard]] std::function<void(std::string_view text)> textPrinter(Command& command, Session& session,
                                                                     std::string key);

}  // namespace vrn::cli
