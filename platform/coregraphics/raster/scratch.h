#pragma once

#include "paint/clip.h"
#include "raster/coverage.h"
#include "raster/path_edges.h"
#include "raster/sweep.h"

#include <cstdint>
#include <vector>

namespace ozcg {

/// Buffers for drawing that a thread keeps, so that once warmed up it allocates none.
struct Scratch {
    CoverageAccumulator coverage;
    EdgeBuffers edges;
    std::vector<uint8_t> coverageRow;
    std::vector<uint32_t> sourceRow;
    std::vector<Ref<ClipMask>> clipMasks; // all that the thread made, but for those beyond a number

    /// Room for the coverage of a row that wide, and the padding that a sweep needs. Throws std::bad_alloc.
    uint8_t* coverageRowOf(int width) {
        const size_t size = static_cast<size_t>(width) + kCoveragePadding;
        if (coverageRow.size() < size) coverageRow.resize(size);
        return coverageRow.data();
    }

    /// The calling thread's. Throws std::bad_alloc.
    static Scratch& ofThread();
};

} // namespace ozcg
