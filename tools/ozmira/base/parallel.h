#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

namespace ozm::tool {

/// Asks the threads of `ForEachInParallel` to take no further index.
class StopRequest {
public:
    /// Returns true the first time.
    bool Request() { return !m_isRequested.exchange(true); }
    bool IsRequested() const { return m_isRequested; }

private:
    std::atomic<bool> m_isRequested = false;
};

/// Calls `work(index, worker)` for every index below `count`, on up to `jobs` threads, this one among them,
/// which take the next index from a common counter; `worker` is the number of the thread. `work` must not
/// throw. Once a stop is requested, no further index is taken; `stop` may be null.
template <typename Work>
void ForEachInParallel(size_t count, unsigned jobs, Work work, const StopRequest* stop = nullptr) {
    std::atomic<size_t> next = 0;
    const auto run = [&](size_t worker) {
        for (size_t i = next++; i < count && !(stop && stop->IsRequested()); i = next++) work(i, worker);
    };
    const size_t workers = std::clamp<size_t>(count, 1, jobs);
    std::vector<std::thread> others;
    others.reserve(workers);
    for (size_t worker = 1; worker < workers; ++worker) {
        try {
            others.emplace_back(run, worker);
        } catch (const std::exception&) {
            break; // threads or memory are short: the ones that run do it all
        }
    }
    run(0);
    for (std::thread& other : others) other.join();
}

} // namespace ozm::tool
