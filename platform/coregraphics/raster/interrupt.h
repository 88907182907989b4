// Abandoning a shape that takes too long.
#pragma once

#include <cstdint>
#include <limits>

namespace ozcg {

/// Thrown while a shape is accumulated, to abandon it.
struct Interrupted {};

/// Counts work and, at intervals, asks a callback whether to stop.
class InterruptPoll {
public:
    /// Never stops.
    InterruptPoll() = default;
    /// Stops when `isDue(info)` returns true; NULL never does.
    InterruptPoll(bool (*isDue)(void* info), void* info) : m_isDue(isDue), m_info(info) { restart(); }

    /// Begins a new interval.
    void restart() { m_left = m_isDue ? kWorkPerPoll : std::numeric_limits<int64_t>::max(); }
    /// Counts `work`, in pixel rows crossed by an edge or their equivalent. Throws Interrupted.
    void count(int64_t work) {
        if ((m_left -= work) < 0) poll();
    }

private:
    static constexpr int64_t kWorkPerPoll = 2'000'000; // each 5 to 20 ns

    [[gnu::cold, gnu::noinline]] void poll() {
        restart();
        if (m_isDue && m_isDue(m_info)) throw Interrupted();
    }

    bool (*m_isDue)(void* info) = nullptr;
    void* m_info = nullptr;
    int64_t m_left = std::numeric_limits<int64_t>::max();
};

} // namespace ozcg
