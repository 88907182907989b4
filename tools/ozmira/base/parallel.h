#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

namespace ozm::tool {

/// Calls `work(index, worker)` for every index below `count`, on up to `jobs` threads, this one among them,
/// which take the next index from a common counter; `worker` is the number of the thread. `work` must not
/// throw.
template <typename Work>
void ForEachInParallel(size_t count, unsigned jobs, Work work) {
    std::atomic<size_t> next = 0;
    const auto run = [&](size_t worker) {
        for (size_t i = next++; i < count; i = next++) work(i, worker);
    };
    const size_t workers = std::clamp<size_t>(count, 1, jobs);
    std::vector<std::jthread> others;
    others.reserve(workers);
    for (size_t worker = 1; worker < workers; ++worker) {
        try {
            others.emplace_back(run, worker);
        } catch (const std::exception&) {
            break; // threads or memory are short: the ones that run do it all
        }
    }
    run(0);
}

} // namespace ozm::tool
