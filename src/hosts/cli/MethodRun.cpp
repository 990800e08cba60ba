#include "hosts/cli/MethodRun.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <system_error>
#include <thread>
#include <utility>

#include "errors/Error.h"
#include "hosts/cli/Jobs.h"
#include "hosts/cli/Json.h"
#include "hosts/cli/Names.h"
#include "hosts/cli/Output.h"
#include "hosts/cli/Progress.h"
#include "hosts/cli/System.h"

namespace vrn::cli {

namespace {

// Room for what is to be said when there is no more memory.
class Reserve {
  public:
    Reserve() { renew(); }
    void release() noexcept { memory_.reset(); }
    void renew() noexcept {
        constexpr std::size_t enough = 65536;
        memory_.reset(new (std::nothrow) char[enough]);
    }

  private:
    std::unique_ptr<char[]> memory_;
};

class Worker {
  public:
    Worker(const MethodRun& run, MethodWork work, bool isFirst)
        : run_(&run), work_(std::move(work)), isFirst_(isFirst) {}

    Outcome workOn(const MethodFile& file) {
        try {
            return outcomeOf(file);
        } catch (const std::bad_alloc&) {
            // The first thread tries again, once the others have given back what they hold.
            if (!isFirst_) {
                throw;
            }
            reserve_.release();
            auto outcome = fault(file, displayName(file.path) + ": " + notEnoughMemory);
            reserve_.renew();
            return outcome;
        }
    }

  private:
    Outcome outcomeOf(const MethodFile& file) {
        try {
            if (!work_) {
                work_ = run_->makeWork();
            }
            return file.fault.empty() ? work_(file) : fault(file, file.fault);
        } catch (const Fault& error) {
            return fault(file, error.what());
        } catch (const system::Interrupted&) {
            Outcome outcome;
            outcome.status = ExitStatus::Interrupted;
            return outcome;
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            return fault(file, displayName(file.path) + ": " + error.what());
        }
    }

    [[nodiscard]] Outcome fault(const MethodFile& file, const std::string& what) const {
        return faultOutcome(file, what, run_->arguments.json);
    }

    const MethodRun* run_;
    MethodWork work_;
    bool isFirst_;
    Reserve reserve_;
};

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

bool readsInput(const MethodArguments& arguments) {
    return std::find(arguments.methods.begin(), arguments.methods.end(), standardInput) != arguments.methods.end();
}

// A backup may have the name of a method or of a document of the set.
void noteInUse(const MethodRun& run, const std::vector<MethodFile>& methods) {
    if (!run.write->backupSuffix.empty()) {
        run.write->inUse->add(run.setFiles);
        std::for_each(methods.begin(), methods.end(),
                      [&run](const MethodFile& method) { run.write->inUse->add(method.path); });
    }
}

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
    std::optional<system::InterruptGuard> guard;
    Progress progress(run.console);
    auto status = ExitStatus::Well;
    std::size_t total = 0;
    std::size_t done = 0;
    Jobs<MethodFile, Outcome> jobs;
    jobs.count = usefulJobs(run.arguments);
    jobs.makeWork = [&](unsigned worker) {
        // Where there are more threads than processors, some may find nothing to do: those make theirs when they do.
        const bool isEager = worker < std::max(1U, std::thread::hardware_concurrency());
        auto work = worker == 0 ? run.makeWork() : isEager ? madeIfPossible(run) : nullptr;
        return [it = std::make_shared<Worker>(run, std::move(work), worker == 0)](const MethodFile& file) {
            return it->workOn(file);
        };
    };
    jobs.find = [&](const std::function<void(MethodFile)>& add) {
        std::vector<MethodFile> toWrite;
        findMethodFiles(run.arguments.methods, run.setFiles, [&](MethodFile file) {
            ++total;
            if (run.write != nullptr) {
                toWrite.push_back(std::move(file));
            } else {
                add(std::move(file));
            }
        });
        // What is written may lie in a folder that is still to be read: backups are no methods.
        if (run.write != nullptr) {
            noteInUse(run, toWrite);
            guard.emplace();
            std::for_each(toWrite.begin(), toWrite.end(), [&add](MethodFile& file) { add(std::move(file)); });
        }
        progress.setTotal(total);
    };
    // Who redirects a method's output wants nothing else there.
    auto& reports = run.write != nullptr && readsInput(run.arguments) ? run.console.err : run.console.out;
    jobs.take = [&](Outcome outcome) {
        if (outcome.status == ExitStatus::Interrupted) {
            return;
        }
        status = worse(status, outcome.status);
        ++done;
        if (run.beforeOutput) {
            run.beforeOutput(outcome);
        }
        if (!outcome.out.empty() || !outcome.err.empty() || !outcome.method.empty()) {
            progress.hide();
            run.console.out << outcome.method;
            reports << outcome.out;
            run.console.out << std::flush;
            run.console.err << outcome.err << std::flush;
        }
        progress.show(done);
    };
    jobs.stop = [&run] { return run.write != nullptr && system::interrupted(); };
    jobs.run();
    progress.hide();
    if (done < total) {
        run.console.err << "vrnmethod: interrupted: " << done << " of " << counted(total, "method") << " done\n";
        return ExitStatus::Interrupted;
    }
    return status;
}

}  // namespace vrn::cli
