#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <exception>
#include <map>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "hosts/cli/MethodRun.h"

namespace vrn::cli {

namespace {

// The state of `Jobs` on several threads. Methods are given out and results handed over in batches, and nobody waits while there is
// work: waking each other costs threads more than small methods do.
class Crew {
  public:
    explicit Crew(const Jobs& jobs) : jobs_(jobs) {}

    void run() {
        std::vector<std::jthread> threads;
        try {
            begin(threads);
            auto work = jobs_.makeWork(0);
            jobs_.find([this](MethodFile file) { add(std::move(file)); });
            endOfQueue();
            Batch batch;
            workOn(work, batch, [this] { takeWhatIsThere(); });
            while (takeTheRest()) {
                workOn(work, batch, [this] { takeWhatIsThere(); });
            }
        } catch (...) {
            isCancelled_ = true;
            endOfQueue();
            throw;
        }
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

  private:
    using Lock = std::unique_lock<std::mutex>;
    struct Batch {
        std::size_t number = 0;
        std::vector<MethodFile> files;
        std::vector<Outcome> results;  // of the first of them
    };

    void begin(std::vector<std::jthread>& threads) {
        threads.reserve(jobs_.count - 1);
        handedBack_.reserve(jobs_.count);
        for (unsigned worker = 1; worker < jobs_.count; ++worker) {
            addToOthers(1);
            try {
                threads.emplace_back([this, worker] {
                    Batch batch;
                    try {
                        workOn(jobs_.makeWork(worker), batch, [] {});
                    } catch (const std::bad_alloc&) {
                        handBack(std::move(batch));
                    } catch (...) {
                        fail(std::current_exception());
                    }
                    addToOthers(-1);
                    finished_.notify_one();
                });
            } catch (const std::system_error&) {
                addToOthers(-1);
                break;  // the system gives no more threads: those that there are will do
            }
        }
    }

    void addToOthers(int change) {
        const std::scoped_lock lock(mutex_);
        othersWorking_ += change;
    }

    void add(MethodFile file) {
        const std::scoped_lock lock(mutex_);
        queue_.push_back(std::move(file));
        queued_.notify_one();
    }

    void endOfQueue() {
        const std::scoped_lock lock(mutex_);
        isQueueComplete_ = true;
        queued_.notify_all();
    }

    void fail(std::exception_ptr failure) {
        const std::scoped_lock lock(mutex_);
        failure_ = std::move(failure);
        isCancelled_ = true;
    }

    // A thread that has run out of memory ends, so that the others get what it had; the first one does the rest of its work.
    void handBack(Batch batch) {
        const std::scoped_lock lock(mutex_);
        if (!batch.files.empty()) {
            handedBack_.push_back(std::move(batch));
        }
    }

    [[nodiscard]] bool isOver() const { return isCancelled_ || jobs_.stop(); }

    // Empty when there will be no more. Batches become smaller towards the end, so that all threads come to it together.
    Batch nextBatch() {
        constexpr std::size_t largest = 16;
        Lock lock(mutex_);
        queued_.wait(lock, [this] { return isQueueComplete_ || !queue_.empty(); });
        if (queue_.empty() && !handedBack_.empty() && std::this_thread::get_id() == first_) {
            Batch batch = std::move(handedBack_.back());
            handedBack_.pop_back();
            return batch;
        }
        const auto size = std::min(queue_.size(),
                                   std::clamp<std::size_t>(queue_.size() / (std::size_t{4} * jobs_.count), 1, largest));
        const auto end = queue_.begin() + static_cast<std::ptrdiff_t>(size);
        Batch batch{batches_, {std::move_iterator(queue_.begin()), std::move_iterator(end)}, {}};
        queue_.erase(queue_.begin(), end);
        batches_ += size > 0 ? 1 : 0;
        return batch;
    }

    // `batch` holds what is not handed over yet when this throws.
    void workOn(const MethodWork& work, Batch& batch, const auto& afterEach) {
        while (!isOver()) {
            batch = nextBatch();
            if (batch.files.empty()) {
                break;
            }
            batch.results.reserve(batch.files.size());
            while (batch.results.size() < batch.files.size() && (batch.results.empty() || !isOver())) {
                batch.results.push_back(work(batch.files[batch.results.size()]));
                afterEach();
            }
            const std::scoped_lock lock(mutex_);
            results_[batch.number] = std::move(batch.results);
            finished_.notify_one();
        }
    }

    // Whether there was a batch whose turn it is.
    bool takeNext(Lock lock) {
        const auto found = results_.find(due_);
        if (found == results_.end()) {
            return false;
        }
        auto results = std::move(found->second);
        results_.erase(found);
        lock.unlock();
        ++due_;
        for (auto& result : results) {
            jobs_.take(std::move(result));
        }
        return true;
    }

    void takeWhatIsThere() {
        while (takeNext(Lock(mutex_))) {
        }
    }

    // Until all is taken, or until there is work that was handed back.
    bool takeTheRest() {
        for (bool more = true; more;) {
            Lock lock(mutex_);
            finished_.wait(lock, [this] { return results_.contains(due_) || othersWorking_ == 0; });
            more = takeNext(std::move(lock));
        }
        const std::scoped_lock lock(mutex_);
        return !handedBack_.empty() && !isOver();
    }

    const Jobs& jobs_;
    std::mutex mutex_;
    std::condition_variable queued_;
    std::deque<MethodFile> queue_;
    bool isQueueComplete_ = false;
    std::size_t batches_ = 0;
    std::condition_variable finished_;
    std::map<std::size_t, std::vector<Outcome>> results_;  // by the batch's number
    std::size_t due_ = 0;                                  // the batch whose turn it is
    std::vector<Batch> handedBack_;
    std::thread::id first_ = std::this_thread::get_id();
    int othersWorking_ = 0;
    std::exception_ptr failure_;  // of another thread
    std::atomic<bool> isCancelled_ = false;
};

}  // namespace

void Jobs::run() const {
    if (count > 1) {
        Crew(*this).run();
        return;
    }
    const auto work = makeWork(0);
    std::vector<MethodFile> files;
    find([&files](MethodFile file) { files.push_back(std::move(file)); });
    for (auto file = files.cbegin(); file != files.cend() && !stop(); ++file) {
        take(work(*file));
    }
}

}  // namespace vrn::cli
