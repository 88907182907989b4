// Giving up a shape that takes too long.
#pragma once

#include <cstdint>
#include <limits>

namespace ozcg {

/// Thrown while a shape is accumulated, to give it up.
struct Interrupted {};

/// Counts work, and asks now and then whether to go on.
class Patience {
public:
    /// Nobody is asked.
    Patience() = default;
    /// `isDue(info)` is asked, unless it is NULL.
    Patience(bool (*isDue)(void* info), void* info) : m_isDue(isDue), m_info(info) { renew(); }

    /// Starts to count anew.
    void renew() { m_left = m_isDue ? kWorkBetweenQuestions : std::numeric_limits<int64_t>::max(); }
    /// `work`: pixel rows crossed by an edge, or as much. Throws Interrupted.
    void spend(int64_t work) {
        if ((m_left -= work) < 0) ask();
    }

private:
    static constexpr int64_t kWorkBetweenQuestions = 2'000'000; // each 5 to 20 ns

    [[gnu::cold, gnu::noinline]] void ask() {
        renew();
        if (m_isDue && m_isDue(m_info)) throw Interrupted();
    }

    bool (*m_isDue)(void* info) = nullptr;
    void* m_info = nullptr;
    int64_t m_left = std::numeric_limits<int64_t>::max();
};

} // namespace ozcg
