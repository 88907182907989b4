#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ozcg {

/// What a sweep knows of the rows around the one that it composites.
class RowWindow {
public:
    /// Begins a sweep at `firstRow` of rows of that many cells. Throws std::bad_alloc.
    void begin(int firstRow, size_t cells) {
        m_stride = cells + 2 * kPadding;
        if (m_sums.size() < kRows * m_stride) m_sums.resize(kRows * m_stride);
        if (m_zeros.size() < m_stride) m_zeros.resize(m_stride);
        m_held.fill(-1);
        m_excess = 0;
        next = firstRow;
    }

    /// Adds how the sums of the next row leave the range between 0 and 1, as SumRow() says.
    void addExcess(uint32_t ofRow) { m_excess = m_excess << kExcessBits | ofRow; }
    /// That of three successive rows together: the last ones, or those that end `before` rows earlier.
    uint32_t excess(int before) const {
        const uint32_t rows = m_excess >> before * kExcessBits;
        return (rows | rows >> kExcessBits | rows >> 2 * kExcessBits) & ((1U << kExcessBits) - 1);
    }

    /// Room for the sums of a row's pixels, with some more on either side. Those of the last rows are kept.
    float* sums(int y) { return m_sums.data() + slot(y) * m_stride + kPadding; }
    const float* zeros() const { return m_zeros.data() + kPadding; }
    /// Whether the sums of the row are there.
    bool holds(int y) const { return m_held[slot(y)] == y; }
    void setHeld(int y) { m_held[slot(y)] = y; }

    int next = 0; ///< The first row whose cells have not been summed up.

    /// Bits of SumRow()'s result.
    static constexpr int kExcessBits = 3;

private:
    static constexpr int kRows = 4; // a power of two, for slot()
    static constexpr size_t kPadding = 64;

    static size_t slot(int y) { return static_cast<size_t>(y) % kRows; }

    size_t m_stride = 0;
    uint32_t m_excess = 0; // of the last row in the lowest bits
    std::array<int, kRows> m_held{};
    std::vector<float> m_sums, m_zeros;
};

} // namespace ozcg
