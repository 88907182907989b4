#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace ozm {

/// A queue of the numbers of path data that no command has taken yet. It allocates only when they are many.
class ArgumentList {
public:
    /// The most numbers that can be reserved at a time.
    static constexpr size_t kMaxReserve = 40;

    ArgumentList() = default;
    ArgumentList(const ArgumentList&) = delete;
    ArgumentList& operator=(const ArgumentList&) = delete;

    void Clear() { m_begin = m_end = m_room; }

    /// Makes room for `count` numbers after the last one and returns where it begins. Moves the numbers of
    /// the list.
    double* Reserve(size_t count) {
        if (static_cast<size_t>(m_limit - m_end) < count) MakeRoom();
        return m_end;
    }
    /// Appends the numbers before `end`, which have been written to the room reserved last.
    void GrowTo(double* end) { m_end = end; }

    /// The oldest number, or the end of an empty list.
    double* First() { return m_begin; }
    /// Removes the numbers before `first`.
    void DropTo(double* first) { m_begin = first; }
    /// Removes all numbers. They stay valid until room is reserved.
    std::span<const double> TakeAll() { return {std::exchange(m_begin, m_end), m_end}; }

private:
    /// Frees at least half of the room: moves the numbers to its beginning, or to twice as much room.
    void MakeRoom() {
        const auto capacity = static_cast<size_t>(m_limit - m_room);
        const std::span<const double> numbers = TakeAll();
        std::vector<double> larger;
        if (numbers.size() > capacity / 2) {
            larger.resize(2 * capacity);
            m_room = larger.data();
            m_limit = m_room + larger.size();
        }
        m_begin = m_room;
        m_end = std::copy(numbers.begin(), numbers.end(), m_room);
        if (!larger.empty()) m_heap = std::move(larger);
    }

    double m_inPlace[4 * kMaxReserve];
    std::vector<double> m_heap;
    double* m_room = m_inPlace;
    double* m_limit = std::end(m_inPlace);
    double* m_begin = m_inPlace;
    double* m_end = m_inPlace;
};

} // namespace ozm
