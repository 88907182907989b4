// Exact coverage of a pixel row in which windings of different effect meet.
#pragma once

#include "raster/fill_rule.h"
#include "raster/row_cells.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ozcg {

/// An edge as it was accumulated.
struct Edge {
    float x0, y0, x1, y1;
};

/// Pixels of a row: begin <= x < end.
struct PixelSpan {
    int begin, end;
};

/// Accumulates only what of a shape's edges separates its inside from its outside, in single rows. A line
/// passes over the row from top to bottom, and the windings along it are counted from left to right. They
/// change where edges begin, end or cross, as in Bentley and Ottmann's search for crossings (1979).
class RowResolver {
public:
    /// Rows with more edges than this cannot be resolved.
    static constexpr size_t kMaxEdgesInRow = 1 << 16;

    /// Begins a shape of which no row has been asked for. The edges must stay until its last row. Throws
    /// std::bad_alloc; the other functions do not.
    void begin(std::span<const Edge> edges, int rows);

    /// Makes `y`, which must be greater than before, the row to resolve. Returns the number of its edges, or
    /// more than kMaxEdgesInRow if this row or an earlier one has more.
    size_t moveTo(int y);
    /// The number of edges of the row to resolve.
    size_t edgesInRow() const { return m_active.size(); }
    /// Begins a span of the row. Not for rows of more than kMaxEdgesInRow edges. Returns the winding that
    /// edges wholly to the left of the span give to it, or nothing if they give several at different heights:
    /// then edges cross the span's left side.
    std::optional<int> enterSpan(PixelSpan span);
    /// Adds the boundary within that span to cells that are zero. Edges wholly to its left do not count but
    /// by `before`, the winding there.
    void addBoundary(float* cells, FillRule rule, int before);
    /// What the last span has cost beyond its edges: how often the line met one.
    size_t strandsPassed() const { return m_strandsPassed; }

private:
    /// An edge that runs down.
    struct DownEdge {
        float x0, y0, x1, y1, slope;
        int direction; ///< 1; -1 for one that ran up.
        uint32_t edge;
    };
    /// What lies of an edge in the row. Heights are relative to the row's top.
    struct Part {
        float x0, y0, x1, y1, slope;
        float least, greatest; ///< Of x.
        float since;           ///< Where its effect begins.
        int direction;
        int effect; ///< From left to right: 1 where it enters the inside, -1 where it leaves it, or 0.
        uint32_t edge;
        bool continues; ///< Begins where another ends, as the next edge of a contour.
        Part* next;     ///< The part that continues this one, or NULL.

        float xAt(float y) const;
    };
    /// A part that the line crosses.
    struct Strand {
        Part* part;
        float event;    ///< The height at which the part ends, or earlier changes places with the next.
        float crossing; ///< The height of the latter, if at all.
        float key;      ///< The order from left to right.
        int before;     ///< The winding to its left.
    };

    /// The winding that edges give to a point to the right of them all, on average over the row's height.
    struct MeanWinding {
        float mean = 0;
        float weighted = 0; ///< By twice the height.

        void add(int direction, float y0, float y1);
        std::optional<int> winding(size_t edges) const;
    };

    void indexEdges();
    void cutParts(float left, float right);
    void linkParts();
    float pass(float y, float line);
    bool passStrand(size_t strand, float y, float line);
    Part* continuation(Part* part, float y, float line) const;
    float reorder(float y, float line);
    void sortStrands(float y);
    void findCrossing(size_t strand, float y);
    void exchange(size_t strand, float y);
    float nextStart() const;
    void setEffect(Part& part, int before, float y) const;
    void addPart(const Part& part, float until) const;

    std::span<const Edge> m_edges;
    int m_rows = 0;
    float m_left = 0, m_right = 0; // of the span
    MeanWinding m_before;          // to its left
    int m_windingBefore = 0;
    bool m_isIndexed = false, m_isOverfull = false;
    std::vector<int32_t> m_first;   // for each row, the first edge that begins there; -1: none
    std::vector<int32_t> m_next;    // for each edge, the next that begins in the same row
    std::vector<DownEdge> m_active; // reach the row
    int m_nextRow = 0;              // the first whose edges have not become active
    float m_top = 0;                // of the row
    std::vector<Part> m_parts;
    std::vector<uint32_t> m_partOf; // for each edge of a part, the part
    std::vector<Strand> m_strands;  // from left to right
    std::vector<Part*> m_starts;    // parts that begin in the row and continue no other, from top to bottom
    size_t m_partCount = 0, m_strandCount = 0, m_startCount = 0, m_nextStart = 0;
    size_t m_crossingsLeft = 0; // that may still be taken into account
    size_t m_strandsPassed = 0;
    int m_mask = -1; // the bits of a winding that make it inside
    UnmarkedCells m_cells{};
};

} // namespace ozcg
