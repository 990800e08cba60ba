#include "hosts/cli/MethodRun.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <system_error>
#include <thread>
#include <utility>

#include "hosts/cli/Output.h"
#include "hosts/cli/Rewrite.h"
#include "hosts/cli/System.h"

namespace vrn::cli {

namespace {

// Room for the report that there is no more memory.
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

// What a thread works with. A fault of a file becomes its outcome.
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

// How many threads can find something to do, as far as that is known before folders are walked.
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

// One line at the terminal that shows how far the work is, once it takes longer than a moment.
class Progress {
  public:
    explicit Progress(const Console& console) : console_(&console) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { hide(); }

    // Nothing before it is known how much there is to do, and then only for more than one thing.
    void show(std::size_t done, std::size_t total) {
        using namespace std::chrono_literals;
        constexpr auto patience = 1s;
        constexpr auto pause = 100ms;
        constexpr std::size_t longestBar = 40;
        const auto now = Clock::now();
        if (!console_->errIsTerminal || total <= 1 || now - started_ < patience || now - shown_ < pause) {
            return;
        }
        shown_ = now;
        const auto counts = " " + std::to_string(done) + "/" + std::to_string(total);
        const auto room = static_cast<std::size_t>(system::terminalWidth());
        const auto width = std::min(longestBar, room > counts.size() + 4 ? room - counts.size() - 4 : 1);
        const auto filled = width * done / total;
        console_->err << "\r[" << std::string(filled, '#') << std::string(width - filled, '.') << "]" << counts
                      << std::flush;
        isVisible_ = true;
    }

    // Takes the line away, so that something else can be written.
    void hide() {
        if (isVisible_) {
            console_->err << "\r\x1B[K" << std::flush;
            isVisible_ = false;
        }
    }

  private:
    using Clock = std::chrono::steady_clock;
    const Console* console_;
    Clock::time_point started_ = Clock::now();
    Clock::time_point shown_;
    bool isVisible_ = false;
};

class Run {
  public:
    // Who redirects a method's output wants nothing else there.
    explicit Run(const MethodRun& run)
        : run_(&run),
          reports_(run.write != nullptr && readsInput(run.arguments) ? &run.console.err : &run.console.out),
          progress_(run.console) {}

    ExitStatus carryOut() {
        Jobs jobs;
        jobs.count = usefulJobs(run_->arguments);
        jobs.makeWork = [this](unsigned worker) { return makeWork(worker); };
        jobs.find = [this](const MethodFound& add) { find(add); };
        jobs.take = [this](Outcome outcome) { take(std::move(outcome)); };
        jobs.stop = [this] { return run_->write != nullptr && system::interrupted(); };
        jobs.run();
        progress_.hide();
        if (done_ < total_) {
            run_->console.err << "vrnmethod: interrupted: " << done_ << " of " << counted(total_, "method")
                              << " done\n";
            return ExitStatus::Interrupted;
        }
        return status_;
    }

  private:
    [[nodiscard]] MethodWork makeWork(unsigned worker) const {
        // Where there are more threads than processors, some may find nothing to do: those make theirs when they do.
        const bool isFirst = worker == 0;
        const bool isEager = worker < std::max(1U, std::thread::hardware_concurrency());
        auto work = isFirst ? run_->makeWork() : isEager ? madeIfPossible(*run_) : nullptr;
        return [it = std::make_shared<Worker>(*run_, std::move(work), isFirst)](const MethodFile& file) {
            return it->workOn(file);
        };
    }

    void find(const MethodFound& add) {
        std::size_t found = 0;
        std::vector<MethodFile> toWrite;
        findMethodFiles(run_->arguments.methods, run_->setFiles, [&](MethodFile file) {
            ++found;
            if (run_->write != nullptr) {
                toWrite.push_back(std::move(file));
            } else {
                add(std::move(file));
            }
        });
        // What is written may be in a folder that is still to be read: backups are no methods.
        if (run_->write != nullptr) {
            noteInUse(*run_, toWrite);
            guard_.emplace();
            std::for_each(toWrite.begin(), toWrite.end(), [&add](MethodFile& file) { add(std::move(file)); });
        }
        total_ = found;
    }

    void take(Outcome outcome) {
        if (outcome.status == ExitStatus::Interrupted) {
            return;
        }
        status_ = worse(status_, outcome.status);
        ++done_;
        if (run_->beforeOutput) {
            run_->beforeOutput(outcome);
        }
        if (!outcome.out.empty() || !outcome.err.empty() || !outcome.method.empty()) {
            progress_.hide();
            print(outcome);
        }
        progress_.show(done_, total_);
    }

    void print(const Outcome& outcome) const {
        const auto& console = run_->console;
        console.out << outcome.method;
        *reports_ << outcome.out;
        console.out << std::flush;
        console.err << outcome.err << std::flush;
    }

    const MethodRun* run_;
    std::ostream* reports_;
    std::optional<system::InterruptGuard> guard_;
    Progress progress_;
    ExitStatus status_ = ExitStatus::Well;
    std::size_t total_ = 0;  // 0 as long as folders are read
    std::size_t done_ = 0;
};

}  // namespace

ExitStatus runOverMethods(const MethodRun& run) { return Run(run).carryOut(); }

}  // namespace vrn::cli
