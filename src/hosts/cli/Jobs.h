// Work on many things side by side, its results in the order of the things.
#pragma once

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
/// true; what has begun is ended and taken. `work` must not throw.
template <typename Result>
void forEachInOrder(std::size_t count, unsigned jobs, const std::function<Result(unsigned, std::size_t)>& work,
                    const std::function<void(std::size_t, Result)>& take, const std::function<bool()>& stop) {
    if (jobs <= 1 || count <= 1) {
        for (std::size_t i = 0; i < count && !stop(); ++i) {
            take(i, work(0, i));
        }
        return;
    }
    std::mutex mutex;
    std::condition_variable finished;
    std::map<std::size_t, Result> results;
    std::size_t next = 0;
    unsigned working = jobs;
    const auto run = [&](unsigned worker) {
        std::unique_lock lock(mutex);
        while (next < count && !stop()) {
            const auto index = next++;
            lock.unlock();
            auto result = work(worker, index);
            lock.lock();
            results.emplace(index, std::move(result));
            finished.notify_one();
        }
        --working;
        finished.notify_one();
    };
    std::vector<std::jthread> threads;
    for (unsigned worker = 0; worker < jobs; ++worker) {
        threads.emplace_back(run, worker);
    }
    std::unique_lock lock(mutex);
    for (std::size_t index = 0;;) {
        finished.wait(lock, [&] { return results.contains(index) || working == 0; });
        const auto found = results.find(index);
        if (found == results.end()) {
            return;
        }
        auto result = std::move(found->second);
        results.erase(found);
        lock.unlock();
        take(index++, std::move(result));
        lock.lock();
    }
}

}  // namespace vrn::cli
