// Sweeps over accumulated edges: the pass along each row that sums areas up to coverage and uses it.
#pragma once

#include "raster/coverage.h"
#include "raster/solid_pixel.h"

#include <cstddef>
#include <cstdint>

namespace ozcg {

/// Composites a solid colour over the pixels of the accumulator's box, weighted by coverage, and empties the
/// accumulator. `topLeft` is the box's first pixel. Throws std::bad_alloc before the first row, and
/// Interrupted after any.
void sweepSolid(CoverageAccumulator& coverage, FillRule rule, const SolidPixel& color, uint8_t* topLeft,
                size_t bytesPerRow);

/// A half-open range of columns.
struct ColumnRange {
    int begin = 0, end = 0;
    bool empty() const { return end <= begin; }
};

/// The bytes that a row of coverage needs after its last pixel.
constexpr size_t kCoveragePadding = size_t{1} << kBlockShift;

/// Writes the coverage (255: full) of row `y` of the box and empties the row. Outside the columns returned
/// the coverage is zero and `out` is not written. `out` holds the box's width and kCoveragePadding more. Rows
/// have to be swept from firstRow() to the last, with none left out. Throws std::bad_alloc for the first row,
/// and Interrupted.
ColumnRange sweepRow(CoverageAccumulator& coverage, int y, FillRule rule, uint8_t* out);

} // namespace ozcg
