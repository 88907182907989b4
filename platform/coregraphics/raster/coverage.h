#pragma once

#include "base/int_rect.h"
#include "raster/fill_rule.h"
#include "raster/interrupt.h"
#include "raster/row_cells.h"
#include "raster/row_resolver.h"
#include "raster/row_window.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace ozcg {

/// How much of a pixel a shape covers: the area, or all of it where the shape covers its centre (without
/// antialiasing).
enum class Sampling : uint8_t { area, centre };

/// Exact signed-area accumulation of edges over a box of pixels (the scheme of font-rs and of stb_truetype's
/// second version): every edge adds to each pixel row the derivative of the area to its right, and a prefix
/// sum along the row gives the winding-weighted coverage. Where windings of different effect meet in a pixel,
/// that is not the coverage; a sweep has such rows resolved by the edges that separate inside from outside.
///
/// Coordinates are relative to the box's top left pixel. One bit per block of cells tells which may be
/// nonzero; a sweep reads and clears only those, after which all cells are zero again.
class CoverageAccumulator {
public:
    /// Sets what may interrupt the accumulation of shapes from now on.
    void setInterrupt(const InterruptPoll& poll) { m_interrupt = poll; }
    const InterruptPoll& interrupt() const { return m_interrupt; }

    /// Opens the box for a new shape, with all cells zero. Throws std::bad_alloc.
    ///
    /// Until the box is swept, the functions that add to it throw Interrupted when an interrupt is due.
    void begin(const IntRect& box, Sampling sampling = Sampling::area);

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

    /// Has pixels of the box resolved: their sums may not show that windings of different effect meet there.
    /// Throws std::bad_alloc.
    void doubtSums(const IntRect& pixels);

    /// The rows that may hold nonzero cells: [firstRow, endRow).
    int firstRow() const { return m_firstRow; }
    int endRow() const { return m_endRow; }
    float* row(int y) { return m_cells.get() + static_cast<size_t>(y) * m_stride; }
    /// One bit per block of the row's cells, the lowest bit first; set where the block may be nonzero.
    std::span<uint64_t> touched(int y) { return {words(y), m_wordsPerRow}; }

    /// To be called by a sweep before its first row. Allocates what the sweep needs. Throws std::bad_alloc.
    void beginSweep();
    RowWindow& window() { return m_window; }
    /// Whether rows can and may need to be resolved.
    bool mayResolve() const { return m_sampling == Sampling::area && !m_missesEdges; }
    /// Whether the sums of any pixels are doubted, and which of a row then.
    bool doubtsSums() const { return m_doubtsSums; }
    PixelSpan doubted(int y) const { return m_doubted[static_cast<size_t>(y)]; }
    /// Makes `y` the row to resolve. Rows have to be resolved from top to bottom. Returns false if it has too
    /// many edges.
    bool beginResolving(int y);
    /// Begins a span of that row's pixels. Returns the winding to its left, or nothing if edges cross its
    /// left side.
    std::optional<int> enterSpan(PixelSpan span) { return m_resolver.enterSpan(span); }
    /// Replaces the sums of that span by their coverage. `before`: the winding to its left. Throws
    /// Interrupted.
    void resolveSpan(int y, FillRule rule, PixelSpan span, int before);
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
    static constexpr int64_t kWorkOfResolvedEdge = 4;
    // How many meetings of edges with the resolver's line are a unit of work.
    static constexpr int64_t kStrandsPerWork = 2;

    void clearRow(int y);
    void discardRows(int from);
    void makeRoomForEdges();
    void addCentres(float x0, float y0, float x1, float y1);
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

    Sampling m_sampling = Sampling::area;
    bool m_doubtsSums = false, m_missesEdges = false;
    std::vector<Edge> m_edges; // the room for edges
    size_t m_edgeCount = 0;
    std::vector<PixelSpan> m_doubted; // for each row, if sums are doubted
    RowResolver m_resolver;
    RowWindow m_window;
    std::vector<float> m_spanCells; // of the span that is resolved; else zeros
};

} // namespace ozcg
