#pragma once

#include "base/int_rect.h"
#include "raster/interrupt.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace ozcg {

/// Cells are tracked in blocks of 16.
constexpr int kBlockShift = 4;

/// Which winding numbers are inside.
enum class FillRule : uint8_t { nonZero, evenOdd };

/// Exact signed-area accumulation of edges over a box of pixels (the scheme of font-rs and of stb_truetype's
/// second version): every edge adds to each pixel row the derivative of the area to its right, and a prefix
/// sum along the row gives the winding-weighted coverage.
///
/// Coordinates are relative to the box's top left pixel. One bit per block of cells tells which may be
/// nonzero; a sweep reads and clears only those, after which all cells are zero again.
class CoverageAccumulator {
public:
    /// Sets what may interrupt the accumulation of shapes from now on.
    void setInterrupt(const InterruptPoll& poll) { m_interrupt = poll; }

    /// Opens the box for a new shape, with all cells zero. Throws std::bad_alloc.
    ///
    /// Until the box is swept, the functions that add to it throw Interrupted when an interrupt is due.
    void begin(const IntRect& box);

    const IntRect& box() const { return m_box; }
    int width() const { return m_width; }
    int height() const { return m_height; }

    /// To be called for each piece of an outline. Counts work even where no edge of the piece reaches the
    /// box.
    void startPiece() { m_interrupt.count(kWorkOfPiece); }
    /// Adds an edge whose points lie within the box, up to the rounding error of a float.
    void addInside(float x0, float y0, float x1, float y1);
    /// Adds an edge anywhere, clipped to the box in double precision. Points must be finite.
    void addClipped(double x0, double y0, double x1, double y1);

    /// The rows that may hold nonzero cells: [firstRow, endRow).
    int firstRow() const { return m_firstRow; }
    int endRow() const { return m_endRow; }
    float* row(int y) { return m_cells.get() + static_cast<size_t>(y) * m_stride; }
    /// One bit per block of the row's cells, the lowest bit first; set where the block may be nonzero.
    std::span<uint64_t> touched(int y) { return {words(y), m_wordsPerRow}; }

    /// To be called by a sweep that has cleared all cells.
    void end() { m_firstRow = m_endRow = 0; }
    /// Clears all cells without a sweep.
    void discard() { discardRows(m_firstRow); }
    /// Clears the rows below the box, where rounding may have put something.
    void discardPadding() { discardRows(std::max(m_firstRow, m_height)); }

private:
    struct Free {
        void operator()(void* p) const;
    };

    static constexpr int64_t kWorkOfPiece = 16;

    void discardRows(int from);
    void addLongEdge(float x0, float y0, float x1, float y1, float direction);
    uint64_t* words(int y) { return m_words.get() + static_cast<size_t>(y) * m_wordsPerRow; }

    InterruptPoll m_interrupt;
    IntRect m_box;
    int m_width = 0, m_height = 0;
    int m_firstRow = 0, m_endRow = 0;
    size_t m_stride = 0, m_wordsPerRow = 1;
    size_t m_cellCapacity = 0, m_wordCapacity = 0;
    std::unique_ptr<float[], Free> m_cells;
    std::unique_ptr<uint64_t[], Free> m_words;
};

} // namespace ozcg
