// Work on many things side by side, its results in the order of the things.
#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace vrn::cli {

/// Runs `work(worker, index)` for every index below `count` on up to `jobs` threads, and `take(index, result)` for each result on
/// the calling thread, in order of the indexes. `worker` numbers the threads from 0. No further work begins once `stop` answers
/// true; what was done by then is taken. `work` must not throw.
template <typename Result>
void forEachInOrder(std::size_t count, unsigned jobs, const std::function<Result(unsigned, std::size_t)>& work,
                    const std::function<void(std::size_t, Result)>& take, const std::function<bool()>& stop) {
    if (jobs <= 1 || count <= 1) {
        for (std::size_t i = 0; i < count && !stop(); ++i) {
            take(i, work(0, i));
        }
        return;
    }
    // Taken and handed over in batches: waking each other for every single thing would cost threads more than small things do.
    constexpr std::size_t largestBatch = 16;
    const auto batch = std::clamp<std::size_t>(count / (std::size_t{8} * jobs), 1, largestBatch);
    std::atomic<std::size_t> next = 0;
    std::mutex mutex;
    std::condition_variable finished;
    std::map<std::size_t, std::vector<Result>> results;  // by the index of each batch's first
    unsigned working = jobs;
    const auto run = [&](unsigned worker) {
        while (!stop()) {
            const auto first = next.fetch_add(batch);
            if (first >= count) {
                break;
            }
            std::vector<Result> own;
            for (auto i = first; i < std::min(first + batch, count) && (own.empty() || !stop()); ++i) {
                own.push_back(work(worker, i));
            }
            const std::scoped_lock lock(mutex);
            results.emplace(first, std::move(own));
            finished.notify_one();
        }
        const std::scoped_lock lock(mutex);
        --working;
        finished.notify_one();
    };
    std::vector<std::jthread> threads;
    for (unsigned worker = 0; worker < jobs; ++worker) {
        threads.emplace_back(run, worker);
    }
    for (std::size_t first = 0;; first += batch) {
        std::unique_lock lock(mutex);
        finished.wait(lock, [&] { return results.contains(first) || working == 0; });
        const auto found = results.find(first);
        if (found == results.end()) {
            return;
        }
        auto taken = std::move(found->second);
        results.erase(found);
        lock.unlock();
        for (std::size_t i = 0; i < taken.size(); ++i) {
            take(first + i, std::move(taken[i]));
        }
    }
}

}  // namespace vrn::cli
