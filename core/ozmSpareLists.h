#pragma once

#include <Ozmira/ozmPath.h>

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

namespace ozm {

/// Short lists of one type, by their length.
template <typename T>
class ListsByLength {
public:
    /// Turns an empty list into one of `count` entries that hold anything. False when none is there.
    bool Take(size_t count, std::vector<T>& list) noexcept {
        if (count - 1 >= kLongest || m_counts[count - 1] == 0) return false;
        list = std::move(m_lists[count - 1][--m_counts[count - 1]]);
        return true;
    }

    /// Leaves an empty list behind if there is room for one of its length.
    void Keep(std::vector<T>& list) noexcept {
        const size_t count = list.size();
        if (count - 1 >= kLongest || list.capacity() != count || m_counts[count - 1] == kMost) return;
        m_lists[count - 1][m_counts[count - 1]++] = std::move(list);
    }

private:
    static constexpr size_t kLongest = 4;
    static constexpr uint8_t kMost = 64; // of each length

    std::vector<T> m_lists[kLongest][kMost];
    uint8_t m_counts[kLongest] = {};
};

/// What a thread keeps of the paths that it destroys. Drawings are made of lists of one, two or three
/// entries, tens to an icon, and allocators take several times as long. Each thread has its own, so that
/// nothing is shared.
class SpareLists {
public:
    /// Those of this thread. Null when it has kept nothing so far.
    static SpareLists* OfThread() noexcept;
    /// Takes what is worth keeping out of commands that are about to be destroyed.
    static void Keep(std::vector<PathCommand>& commands) noexcept;

    template <typename T>
    ListsByLength<T>& Of() {
        return std::get<ListsByLength<T>>(m_lists);
    }

private:
    std::tuple<ListsByLength<TVec2<double>>, ListsByLength<BezierCurve>> m_lists;
};

/// Turns an empty list into one of `count` entries that hold anything; `spares` may be null.
template <typename T>
void MakeList(std::vector<T>& list, size_t count, SpareLists* spares) {
    if (!spares || !spares->Of<T>().Take(count, list)) list = std::vector<T>(count);
}

} // namespace ozm
