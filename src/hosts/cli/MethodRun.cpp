#include "hosts/cli/MethodRun.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <optional>
#include <ostream>
#include <system_error>
#include <thread>

#include "errors/Error.h"
#include "hosts/cli/Jobs.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Names.h"
#include "hosts/cli/Output.h"
#include "hosts/cli/Progress.h"
#include "hosts/cli/System.h"

namespace vrn::cli {

namespace {

Outcome outcomeOf(const MethodRun& run, MethodWork& work, const MethodFile& file) {
    const bool json = run.arguments.json;
    try {
        if (!work) {
            work = run.makeWork();
        }
        return file.fault.empty() ? work(file) : faultOutcome(file, file.fault, json);
    } catch (const Fault& fault) {
        return faultOutcome(file, fault.what(), json);
    } catch (const std::bad_alloc&) {
        return faultOutcome(file, displayName(file.path) + ": there is not enough memory for it", json);
    } catch (const std::exception& error) {
        return faultOutcome(file, displayName(file.path) + ": " + error.what(), json);
    }
}

// A set that cannot be used ends the call, which is for one thread to say.
MethodWork madeIfPossible(const MethodRun& run) noexcept {
    try {
        return run.makeWork();
    } catch (...) {
        return nullptr;
    }
}

// How many threads can find something to do, as far as that can be told before folders are walked.
unsigned usefulJobs(const MethodArguments& arguments) {
    const auto isFolder = [](const std::string& path) {
        std::error_code error;
        return std::filesystem::is_directory(path, error);
    };
    const bool isAnyFolder = std::any_of(arguments.methods.begin(), arguments.methods.end(), isFolder);
    return isAnyFolder ? arguments.jobs
                       : static_cast<unsigned>(std::min<std::size_t>(arguments.jobs, arguments.methods.size()));
}

// Interruptions wait while something is being written.
class InterruptGuard {
  public:
    InterruptGuard() { system::deferInterrupts(); }
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
    ~InterruptGuard() { system::restoreInterrupts(); }
};

}  // namespace

Outcome faultOutcome(const MethodFile& file, const std::string& what, bool json) {
    Outcome outcome;
    outcome.status = ExitStatus::Fault;
    outcome.file = file.path;
    outcome.fault = what;
    outcome.err = "vrnmethod: " + what + "\n";
    if (json) {
        outcome.out = jsonLine({{"file", displayName(file.path)}, {"error", what}});
    }
    return outcome;
}

ExitStatus runOverMethods(const MethodRun& run) {
    std::optional<InterruptGuard> guard;
    Progress progress(run.console);
    auto status = ExitStatus::Well;
    std::size_t total = 0;
    std::size_t done = 0;
    Jobs<MethodFile, Outcome> jobs;
    jobs.count = usefulJobs(run.arguments);
    jobs.makeWork = [&](unsigned worker) {
        // Where there are more threads than processors, some may find nothing to do: those make theirs when they do.
        const bool isEager = worker < std::max(1U, std::thread::hardware_concurrency());
        return [&, work = worker == 0 ? run.makeWork()
                          : isEager   ? madeIfPossible(run)
                                      : nullptr](const MethodFile& file) mutable { return outcomeOf(run, work, file); };
    };
    jobs.find = [&](const std::function<void(MethodFile)>& add) {
        std::vector<MethodFile> toWrite;
        findMethodFiles(run.arguments.methods, run.setFiles, [&](MethodFile file) {
            ++total;
            if (run.writes) {
                toWrite.push_back(std::move(file));
            } else {
                add(std::move(file));
            }
        });
        // What is written may lie in a folder that is still to be read: backups are no methods.
        if (run.writes) {
            guard.emplace();
            std::for_each(toWrite.begin(), toWrite.end(), [&add](MethodFile& file) { add(std::move(file)); });
        }
        progress.setTotal(total);
    };
    jobs.take = [&](Outcome outcome) {
        status = worse(status, outcome.status);
        ++done;
        if (run.beforeOutput) {
            run.beforeOutput(outcome);
        }
        if (!outcome.out.empty() || !outcome.err.empty()) {
            progress.hide();
            run.console.out << outcome.out << std::flush;
            run.console.err << outcome.err << std::flush;
        }
        progress.show(done);
    };
    jobs.stop = [&run] { return run.writes && system::interrupted(); };
    jobs.run();
    progress.hide();
    if (done < total) {
        run.console.err << "vrnmethod: interrupted: " << done << " of " << counted(total, "method") << " done\n";
        return ExitStatus::Interrupted;
    }
    return status;
}

}  // namespace vrn::cli
