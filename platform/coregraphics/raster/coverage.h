#pragma once

#include "base/int_rect.h"
#include "raster/interrupt.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace ozcg {

/// Cells are looked after in blocks of 16.
constexpr int kBlockShift = 4;

enum class FillRule : uint8_t { nonZero, evenOdd };

/// Exact signed-area accumulation of edges over a box of pixels (the scheme of font-rs and of stb_truetype's
/// second version): every edge adds to each pixel row the derivative of the area to its right, and a prefix
/// sum along the row gives the winding-weighted coverage.
///
/// Coordinates are relative to the box's top left pixel. A bit per block of cells notes which ones hold
/// anything; a sweep reads and clears those alone, so the cells are all zero again after each shape.
class CoverageAccumulator {
public:
    /// With this much patience shapes are accumulated from now on.
    void setPatience(const Patience& patience) { m_patience = patience; }

    /// Opens the box for a new shape. The cells are zero. Throws std::bad_alloc.
    ///
    /// What follows until the box is swept throws Interrupted when patience runs out.
    void begin(const IntRect& box);

    const IntRect& box() const { return m_box; }
    int width() const { return m_width; }
    int height() const { return m_height; }

    /// To be called for each piece of an outline whose edges may all lie outside, or take long to find.
    void startPiece() { m_patience.spend(kWorkOfPiece); }
    /// Adds an edge whose points lie within the box, give or take the rounding of a float.
    void addInside(float x0, float y0, float x1, float y1);
    /// Adds an edge anywhere, clipped to the box in double precision. Points must be finite.
    void addClipped(double x0, double y0, double x1, double y1);

    /// The rows that hold anything: [firstRow, endRow).
    int firstRow() const { return m_firstRow; }
    int endRow() const { return m_endRow; }
    float* row(int y) { return m_cells.get() + static_cast<size_t>(y) * m_stride; }
    /// One bit per block of cells of the row that may hold anything, the lowest bit first.
    std::span<uint64_t> touched(int y) { return {words(y), m_wordsPerRow}; }

    /// To be called by a sweep when it has cleared everything.
    void end() { m_firstRow = m_endRow = 0; }
    /// Clears everything without looking at it.
    void discard() { discardRows(m_firstRow); }
    /// Clears the rows below the box, which hold what rounding put there.
    void discardPadding() { discardRows(std::max(m_firstRow, m_height)); }

private:
    struct Free {
        void operator()(void* p) const;
    };

    static constexpr int64_t kWorkOfPiece = 16;

    void discardRows(int from);
    void addLongEdge(float x0, float y0, float x1, float y1, float direction);
    uint64_t* words(int y) { return m_words.get() + static_cast<size_t>(y) * m_wordsPerRow; }

    Patience m_patience;
    IntRect m_box;
    int m_width = 0, m_height = 0;
    int m_firstRow = 0, m_endRow = 0;
    size_t m_stride = 0, m_wordsPerRow = 1;
    size_t m_cellCapacity = 0, m_wordCapacity = 0;
    std::unique_ptr<float[], Free> m_cells;
    std::unique_ptr<uint64_t[], Free> m_words;
};

} // namespace ozcg
