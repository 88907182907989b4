// From accumulated edges to pixels: the pass along each row that sums coverage up and paints with it.
#pragma once

#include "raster/coverage.h"
#include "raster/solid_pixel.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace ozcg {

/// Composites a solid colour over the pixels of the accumulator's box, weighed by coverage, and empties the
/// accumulator. `topLeft` is the box's first pixel.
void sweepSolid(CoverageAccumulator& coverage, FillRule rule, const SolidPixel& color, uint8_t* topLeft,
                size_t bytesPerRow) noexcept;

/// A half-open range of columns.
struct ColumnRange {
    int begin = 0, end = 0;
    bool empty() const { return end <= begin; }
};

/// More bytes than the width that a row of coverage needs behind it.
constexpr size_t kCoveragePadding = size_t{1} << kBlockShift;

/// Writes the coverage (255: all) of row `y` of the box and empties the row. Outside of the columns returned
/// it is zero, and `out` is not written. `out` holds the box's width and kCoveragePadding more.
ColumnRange sweepRow(CoverageAccumulator& coverage, int y, FillRule rule, uint8_t* out) noexcept;

/// Composites `n` premultiplied pixels over others whose bytes are in the same order, weighed by coverage
/// (NULL: all); `alphaShift` is 24 where alpha is the last byte, 0 where it is the first.
void compositeRow(uint8_t* dst, const uint8_t* src, const uint8_t* coverage, size_t n,
                  int alphaShift) noexcept;

/// The functions above as compiled for one instruction set.
struct VectorCode {
    const char* instructionSet; ///< Its name, for a person.
    void (*sweepSolid)(CoverageAccumulator&, FillRule, const SolidPixel&, uint8_t*, size_t);
    ColumnRange (*sweepRow)(CoverageAccumulator&, int, FillRule, uint8_t*);
    void (*compositeRow)(uint8_t*, const uint8_t*, const uint8_t*, size_t, int);
};

/// All that this machine can run, the best one first.
std::span<const VectorCode* const> vectorCodes() noexcept;
/// Uses this one from now on, in the whole process; NULL: the best one. For tests.
void chooseVectorCode(const VectorCode* vectorCode) noexcept;

} // namespace ozcg
