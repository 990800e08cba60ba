#include "hosts/cli/MethodRun.h"

#include <algorithm>
#include <future>
#include <memory>
#include <new>
#include <ostream>

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

// Interruptions wait while something is being written.
class InterruptGuard {
  public:
    explicit InterruptGuard(bool active) : active_(active) {
        if (active_) {
            system::deferInterrupts();
        }
    }
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
    ~InterruptGuard() {
        if (active_) {
            system::restoreInterrupts();
        }
    }
    [[nodiscard]] bool interrupted() const { return active_ && system::interrupted(); }

  private:
    bool active_;
};

}  // namespace

Outcome faultOutcome(const MethodFile& file, const std::string& what, bool json) {
    Outcome outcome;
    outcome.status = ExitStatus::Fault;
    outcome.err = "vrnmethod: " + what + "\n";
    if (json) {
        outcome.out = jsonLine({{"file", displayName(file.path)}, {"error", what}});
    }
    return outcome;
}

ExitStatus runOverMethods(const MethodRun& run) {
    // Folders are walked while the first editor is made. That one is made here, where a set that cannot be used ends the call; the
    // others are made on their own threads.
    auto found = std::async(run.arguments.jobs > 1 ? std::launch::async : std::launch::deferred,
                            [&run] { return methodFiles(run.arguments.methods, run.setFiles); });
    auto first = run.makeWork();
    const auto files = found.get();
    const auto jobs = static_cast<unsigned>(std::clamp<std::size_t>(files.size(), 1, run.arguments.jobs));
    std::vector<MethodWork> workers(jobs);
    workers.front() = std::move(first);
    const InterruptGuard guard(run.writes);
    Progress progress(run.console, files.size());
    auto status = ExitStatus::Well;
    std::size_t done = 0;
    forEachInOrder<Outcome>(
        files.size(), jobs,
        [&](unsigned worker, std::size_t index) { return outcomeOf(run, workers[worker], files[index]); },
        // Taking an editor down takes its time: each thread its own.
        [&](unsigned worker) { workers[worker] = nullptr; },
        [&](std::size_t /*index*/, Outcome outcome) {
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
        },
        [&] { return guard.interrupted(); });
    progress.hide();
    if (done < files.size()) {
        run.console.err << "vrnmethod: interrupted: " << done << " of " << counted(files.size(), "method") << " done\n";
        return ExitStatus::Interrupted;
    }
    return status;
}

}  // namespace vrn::cli
