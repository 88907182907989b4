#pragma once

#include <Ozmira/ozmPath.h>

#include <bit>
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
    static constexpr uint8_t kMost = 255; // of each length

    std::vector<T> m_lists[kLongest][kMost];
    uint8_t m_counts[kLongest] = {};
};

/// Empty lists of path commands, by the room that they have: powers of two.
class CommandLists {
public:
    static constexpr size_t kLargest = 64;

    /// Gives an empty list room for at least `count` commands.
    static void Reserve(size_t count, std::vector<PathCommand>& list, CommandLists* spares) {
        if (count == 0 || count > kLargest) {
            list.reserve(count);
        } else if (!spares || !spares->Take(count, list)) {
            list.reserve(std::bit_ceil(count));
        }
    }

    /// Leaves a list without room behind if there is a place for one like it. Destroys the commands.
    void Keep(std::vector<PathCommand>& list) noexcept {
        const size_t capacity = list.capacity();
        if (capacity > kLargest || !std::has_single_bit(capacity)) return;
        const auto size = static_cast<size_t>(std::countr_zero(capacity));
        if (m_counts[size] == kMost) return;
        list.clear();
        m_lists[size][m_counts[size]++] = std::move(list);
    }

private:
    bool Take(size_t count, std::vector<PathCommand>& list) noexcept {
        const auto size = static_cast<size_t>(std::countr_zero(std::bit_ceil(count)));
        if (m_counts[size] == 0) return false;
        list = std::move(m_lists[size][--m_counts[size]]);
        return true;
    }

    static constexpr size_t kSizes = std::bit_width(kLargest);
    static constexpr uint8_t kMost = 8; // of each size

    std::vector<PathCommand> m_lists[kSizes][kMost];
    uint8_t m_counts[kSizes] = {};
};

/// What a thread keeps of the paths that it destroys. Drawings are made of lists of one, two or three
/// entries, tens to an icon, and allocators take several times as long. Each thread has its own, so that
/// nothing is shared.
class SpareLists {
public:
    /// Those of this thread. Null when it has kept nothing so far.
    static SpareLists* OfThread() noexcept;
    /// Takes what is worth keeping out of a path that is about to be destroyed.
    static void Keep(Path& path) noexcept;

    /// `ListsByLength` of points or curves, or `CommandLists`.
    template <typename Lists>
    Lists& Get() {
        return std::get<Lists>(m_lists);
    }

private:
    std::tuple<ListsByLength<TVec2<double>>, ListsByLength<BezierCurve>, CommandLists> m_lists;
};

/// Turns an empty list into one of `count` entries that hold anything; `spares` may be null.
template <typename T>
void MakeList(std::vector<T>& list, size_t count, SpareLists* spares) {
    if (!spares || !spares->Get<ListsByLength<T>>().Take(count, list)) list = std::vector<T>(count);
}

} // namespace ozm
