#pragma once

#include "raster/coverage.h"
#include "raster/path_edges.h"
#include "raster/sweep.h"

#include <cstdint>
#include <vector>

namespace ozcg {

/// What a thread needs to compute coverage. It is kept, so that drawing soon allocates nothing.
struct RasterBuffers {
    CoverageAccumulator coverage;
    EdgeBuffers edges;
    std::vector<uint8_t> coverageRow;

    /// A buffer for the coverage of a row of that width, with the padding that a sweep needs. Throws
    /// std::bad_alloc.
    uint8_t* coverageRowOf(int width) {
        const size_t size = static_cast<size_t>(width) + kCoveragePadding;
        if (coverageRow.size() < size) coverageRow.resize(size);
        return coverageRow.data();
    }
    /// Frees the memory. What may interrupt drawing stays.
    void trim() {
        const InterruptPoll interrupt = coverage.interrupt();
        *this = {};
        coverage.setInterrupt(interrupt);
    }
};

} // namespace ozcg
