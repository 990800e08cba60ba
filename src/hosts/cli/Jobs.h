// Work on many things side by side, its results in the order of the things.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace vrn::cli {

/// Runs `work(worker, index)` for every index below `count` on up to `jobs` threads, this one among them, and `take(index, result)`
/// for each result on this thread, in order of the indexes. `worker` numbers the threads from 0; each calls `leave(worker)` when
/// there is no more work for it. No further work begins once `stop` answers true; what was done by then is taken. `work` and
/// `leave` must not throw.
template <typename Result>
void forEachInOrder(std::size_t count, unsigned jobs, const std::function<Result(unsigned, std::size_t)>& work,
                    const std::function<void(unsigned)>& leave, const std::function<void(std::size_t, Result)>& take,
                    const std::function<bool()>& stop) {
    if (jobs <= 1 || count <= 1) {
        for (std::size_t i = 0; i < count && !stop(); ++i) {
            take(i, work(0, i));
        }
        leave(0);
        return;
    }
    // Taken and handed over in batches, and nobody waits while there is work: waking each other costs threads more than small
    // things do.
    constexpr std::size_t largestBatch = 16;
    std::mutex mutex;
    std::size_t next = 0;
    std::condition_variable finished;
    struct Batch {
        std::size_t end = 0;  // results may be fewer: work was stopped
        std::vector<Result> results;
    };
    std::map<std::size_t, Batch> finishedBatches;  // by the index of each one's first
    unsigned othersWorking = jobs - 1;

    // Batches become smaller towards the end, so that all threads come to it together.
    const auto nextBatch = [&] {
        const std::scoped_lock lock(mutex);
        const auto first = next;
        if (first < count) {
            next += std::clamp<std::size_t>((count - first) / (std::size_t{4} * jobs), 1, largestBatch);
        }
        return std::pair(first, std::min(next, count));
    };
    const auto workOn = [&](unsigned worker, const auto& afterEach) {
        while (!stop()) {
            const auto [first, end] = nextBatch();
            if (first == end) {
                break;
            }
            Batch batch{end, {}};
            for (auto i = first; i < end && (batch.results.empty() || !stop()); ++i) {
                batch.results.push_back(work(worker, i));
                afterEach();
            }
            const std::scoped_lock lock(mutex);
            finishedBatches.emplace(first, std::move(batch));
            finished.notify_one();
        }
        leave(worker);
    };
    std::size_t due = 0;  // the batch whose turn it is
    const auto takeNext = [&](std::unique_lock<std::mutex> lock) {
        const auto found = finishedBatches.find(due);
        if (found == finishedBatches.end()) {
            return false;
        }
        auto batch = std::move(found->second);
        finishedBatches.erase(found);
        lock.unlock();
        for (auto& result : batch.results) {
            take(due++, std::move(result));
        }
        due = batch.end;
        return true;
    };

    std::vector<std::jthread> threads;
    for (unsigned worker = 1; worker < jobs; ++worker) {
        threads.emplace_back([&, worker] {
            workOn(worker, [] {});
            const std::scoped_lock lock(mutex);
            --othersWorking;
            finished.notify_one();
        });
    }
    const auto takeWhatIsThere = [&] {
        while (takeNext(std::unique_lock(mutex))) {
        }
    };
    workOn(0, takeWhatIsThere);
    for (bool more = true; more;) {
        std::unique_lock lock(mutex);
        finished.wait(lock, [&] { return finishedBatches.contains(due) || othersWorking == 0; });
        more = takeNext(std::move(lock));
    }
}

}  // namespace vrn::cli
