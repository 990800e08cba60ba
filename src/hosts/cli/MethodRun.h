// What all commands over methods share: files one after the other or side by side, results in order, one exit status.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/cli/Console.h"
#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/MethodFiles.h"
#include "hosts/cli/Outcome.h"
#include "hosts/cli/Rewrite.h"

namespace vrn::cli {

/// Which methods, and how.
struct MethodArguments {
    std::vector<std::string> methods;
    unsigned jobs = 1;
    bool json = false;
};

using MethodWork = std::function<Outcome(const MethodFile& file)>;

struct MethodRun {
    const Console& console;
    const MethodArguments& arguments;
    std::vector<std::string> setFiles;      ///< no methods, though they lie in a folder of them
    std::function<MethodWork()> makeWork;   ///< called by each thread, side by side
    const WriteArguments* write = nullptr;  ///< of a command that writes: interruptions wait for the method at hand
    std::function<void(Outcome&)> beforeOutput;  ///< may look at every outcome, in order, and take its output away
};

/// A fault of a file becomes its outcome, as a line on the error stream and with `json` as an object with the key "error".
[[nodiscard]] ExitStatus runOverMethods(const MethodRun& run);

/// The outcome of a file at fault.
[[nodiscard]] Outcome faultOutcome(const MethodFile& file, const std::string& what, bool json);

}  // namespace vrn::cli
