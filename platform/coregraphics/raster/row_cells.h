// How an edge is added to one row of the accumulator.
#pragma once

#include "base/float_min_max.h"

#include <cmath>
#include <cstdint>

namespace ozcg {

/// Cells are tracked in blocks of 16.
constexpr int kBlockShift = 4;

/// One row of the accumulator.
struct RowCells {
    float* cells;
    uint64_t* touched;

    void mark(int cell) const {
        const int block = cell >> kBlockShift;
        touched[block >> 6] |= uint64_t{1} << (block & 63);
    }
    void markBoth(int first, int second) const {
        mark(first);
        mark(second);
    }
    void markAll(int from, int to) const {
        for (int cell = from; cell < to; cell += 1 << kBlockShift) mark(cell);
        mark(to);
    }
};

/// A row of cells by itself: nobody asks which may be nonzero.
struct UnmarkedCells {
    float* cells;

    void markBoth(int, int) const {}
    void markAll(int, int) const {}
};

// A piece of an edge inside a row distributes its signed height over the row's cells such that their prefix
// sums are the area to the right of the piece. Row: RowCells or UnmarkedCells.

/// The columns that a piece of an edge crosses.
struct Columns {
    int first;
    float start, end; ///< Relative to the left side of the first column.

    Columns(float xa, float xb) {
        const float left = minOf(xa, xb), right = maxOf(xa, xb);
        first = static_cast<int>(left);
        start = left - static_cast<float>(first);
        end = right - static_cast<float>(first);
    }
};

// A piece within two columns. The third cell gets the triangle that reaches beyond the second column's start,
// which lies over a part of the piece; `steepness` is the height per width of the whole edge.
template <class Row>
inline void addNarrowPiece(Row row, Columns x, float height, float steepness) {
    const float over = maxOf(x.end - 1.0f, 0.0f);
    // At most 1. The comparison is written so that a NaN, from infinity times 0, counts as 1.
    const float share = over * steepness < 1.0f ? over * steepness : 1.0f;
    const float third = std::copysign(0.5f, height) * over * share;
    const float moment = 0.5f * height * (x.start + x.end);
    float* const c = row.cells + x.first;
    c[0] += height - moment + third;
    c[1] += moment - 2.0f * third;
    c[2] += third;
    row.markBoth(x.first, x.first + 2);
}

// A piece that crosses more than two columns. The area grows quadratically in the first and the last column
// and linearly in between.
template <class Row>
inline void addWidePiece(Row row, int first, float start, float end, float height, float steepness) {
    int columns = static_cast<int>(end);
    if (static_cast<float>(columns) < end) ++columns;
    const float step = std::copysign(steepness, height); // of the area per column
    const float inFirst = 1.0f - start, inLast = end - static_cast<float>(columns - 1);
    const float areaFirst = 0.5f * step * inFirst * inFirst, areaSecond = step * (1.5f - start);
    const float areaLast = 0.5f * step * inLast * inLast;
    float* const c = row.cells + first;
    c[0] += areaFirst;
    c[1] += areaSecond - areaFirst;
    for (int i = 2; i < columns - 1; ++i) c[i] += step;
    c[columns - 1] += height - areaSecond - static_cast<float>(columns - 3) * step - areaLast;
    c[columns] += areaLast;
    row.markAll(first, first + columns);
}

template <class Row>
inline void addPiece(Row row, Columns x, float height, float steepness) {
    if (x.end <= 2.0f)
        addNarrowPiece(row, x, height, steepness);
    else
        addWidePiece(row, x.first, x.start, x.end, height, steepness);
}

// An edge that is shorter than a row.
template <class Row>
inline void addShortEdge(Row row, float x0, float x1, float height) {
    const Columns x(x0, x1);
    addPiece(row, x, height, std::abs(height / (x1 - x0)));
}

} // namespace ozcg
