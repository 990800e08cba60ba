// What all commands over methods share: which files a call means, worked on one after the other or side by side, their results in
// order, one exit status.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "hosts/cli/Call.h"

namespace vrn::cli {

struct WriteArguments;

/// Which methods, and how.
struct MethodArguments {
    std::vector<std::string> methods;
    unsigned jobs = 1;
    bool json = false;
};

struct MethodFile {
    std::string path;
    std::string fault;  ///< why there is nothing to read; empty when there is
};

/// What came of one method.
struct Outcome {
    std::string out;
    std::string err;
    ExitStatus status = ExitStatus::Well;
    std::string file;                     ///< of a file at fault, its path
    std::string fault;                    ///< and what is wrong with it
    std::vector<std::string> once;        ///< output about what methods have in common, for the command to print once
    std::array<std::size_t, 3> counts{};  ///< whatever the command adds up over all methods
    std::string method;                   ///< the method itself, for the output; reports go elsewhere then
};

using MethodWork = std::function<Outcome(const MethodFile& file)>;

struct MethodRun {
    const Console& console;
    const MethodArguments& arguments;
    std::vector<std::string> setFiles;      ///< no methods, though they may be in a folder of them
    std::function<MethodWork()> makeWork;   ///< called by each thread, side by side
    const WriteArguments* write = nullptr;  ///< of a command that writes: interruptions wait for the method at hand
    std::function<void(Outcome&)> beforeOutput;  ///< may look at every outcome, in order, and take its output away
};

/// A fault of a file becomes its outcome, as a line on the error stream and with `json` as an object with the key "error".
[[nodiscard]] ExitStatus runOverMethods(const MethodRun& run);

using MethodFound = std::function<void(MethodFile)>;

/// Calls `found` for the files that the arguments mean, each once: of a folder those below it that end in ".xml", in order of their
/// names, without hidden ones, without `setFiles`, and without the documents of a set where all three of them have their usual names.
void findMethodFiles(const std::vector<std::string>& arguments, const std::vector<std::string>& setFiles,
                     const MethodFound& found);

/// Work on many methods side by side. An exception on any thread ends all, each with the method at hand, and goes to the caller. Only
/// lack of memory on another thread than the caller's ends that thread alone.
struct Jobs {
    unsigned count = 1;  ///< threads, this one among them

    /// Makes what a thread works with; called by each, side by side. Worker 0 is this thread: nothing is worked on before it is ready.
    /// Released as soon as there is no more to do.
    std::function<MethodWork(unsigned worker)> makeWork;
    /// Names the methods, on this thread, while others already work on the first.
    std::function<void(const MethodFound& add)> find;
    /// Gets the results, on this thread, in order of the methods.
    std::function<void(Outcome)> take;
    /// Once it answers true, no further work begins; what was done by then is taken.
    std::function<bool()> stop;

    void run() const;
};

}  // namespace vrn::cli
