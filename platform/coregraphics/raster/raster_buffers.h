#pragma once

#include "raster/coverage.h"
#include "raster/path_edges.h"
#include "raster/sweep.h"

#include <cstdint>
#include <vector>

namespace ozcg {

/// Buffers for finding coverage that a thread keeps, so that once warmed up it allocates none.
struct RasterBuffers {
    CoverageAccumulator coverage;
    EdgeBuffers edges;
    std::vector<uint8_t> coverageRow;

    /// Room for the coverage of a row that wide, and the padding that a sweep needs. Throws std::bad_alloc.
    uint8_t* coverageRowOf(int width) {
        const size_t size = static_cast<size_t>(width) + kCoveragePadding;
        if (coverageRow.size() < size) coverageRow.resize(size);
        return coverageRow.data();
    }
};

} // namespace ozcg
