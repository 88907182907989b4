#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace ozm {

/// A queue of the numbers of path data that no command has consumed yet. Allocates memory only if they are
/// many.
class ArgumentList {
public:
    /// The largest `count` for `Reserve`.
    static constexpr size_t kMaxReserve = 40;

    ArgumentList() = default;
    ArgumentList(const ArgumentList&) = delete;
    ArgumentList& operator=(const ArgumentList&) = delete;

    void Clear() { m_begin = m_end = m_storage; }

    /// Makes room for `count` numbers after the last one and returns the first free place. May move the
    /// numbers of the list.
    double* Reserve(size_t count) {
        if (static_cast<size_t>(m_storageEnd - m_end) < count) MakeRoom();
        return m_end;
    }
    /// Appends the numbers that have been written to the reserved room, up to `end`.
    void GrowTo(double* end) { m_end = end; }

    /// The first number, or the end of an empty list.
    double* First() { return m_begin; }
    /// Removes the numbers before `first`.
    void DropTo(double* first) { m_begin = first; }
    /// Removes and returns all numbers, which stay valid until the next `Reserve`.
    std::span<const double> TakeAll() { return {std::exchange(m_begin, m_end), m_end}; }

private:
    /// Moves the numbers to the front of the storage, or of twice as much, so that at least half of it is
    /// free.
    void MakeRoom() {
        const auto capacity = static_cast<size_t>(m_storageEnd - m_storage);
        const std::span<const double> numbers = TakeAll();
        std::vector<double> larger;
        if (numbers.size() > capacity / 2) {
            larger.resize(2 * capacity);
            m_storage = larger.data();
            m_storageEnd = m_storage + larger.size();
        }
        m_begin = m_storage;
        m_end = std::copy(numbers.begin(), numbers.end(), m_storage);
        if (!larger.empty()) m_heapStorage = std::move(larger);
    }

    double m_inlineStorage[4 * kMaxReserve];
    std::vector<double> m_heapStorage;
    double* m_storage = m_inlineStorage;
    double* m_storageEnd = std::end(m_inlineStorage);
    double* m_begin = m_inlineStorage;
    double* m_end = m_inlineStorage;
};

} // namespace ozm
