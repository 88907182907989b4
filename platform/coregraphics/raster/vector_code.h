// The vector code of the raster stage, compiled once for each instruction set.
#pragma once

#include "raster/coverage.h"
#include "raster/solid_pixel.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace ozcg {

struct ColorRamp;
struct ColumnRange;

/// The functions of sweep.h, composite.h and color_ramp.h as compiled for one instruction set.
struct VectorCode {
    const char* instructionSet; ///< Its name, for people to read.
    void (*sweepSolid)(CoverageAccumulator&, FillRule, const SolidPixel&, uint8_t*, size_t);
    ColumnRange (*sweepRow)(CoverageAccumulator&, int, FillRule, uint8_t*);
    void (*compositeRow)(uint8_t*, const uint8_t*, const uint8_t*, size_t, int);
    void (*writeRamp)(const ColorRamp&, const double*, size_t, uint32_t*);
};

/// All that this machine can run, the best one first.
std::span<const VectorCode* const> vectorCodes() noexcept;
/// Makes the whole process use this code; NULL: the best one. For tests.
void chooseVectorCode(const VectorCode* vectorCode) noexcept;

} // namespace ozcg
