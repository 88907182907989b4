#pragma once

#include <Ozmira/ozmDocument.h>

#include <cstdint>

namespace ozm::tool {

/// What drawing a document takes when every reference is followed.
struct DrawingCost {
    uint32_t elements =
        0; ///< Elements drawn or added to a clip; counting stops above `kMaximumDrawnElements`.
    uint32_t segments = 0; ///< Path segments of these; counting stops above `kMaximumDrawnSegments`.
    uint32_t depth = 0;    ///< Longest chain of elements that are being drawn at the same time.
};

/// Follows references as drawing does, without drawing, in time and memory linear in the size of the
/// document. Throws `FileError` when they form a cycle, in which drawing would never end.
DrawingCost MeasureDrawing(const Document& document);

/// Throws `FileError` when references form a cycle or the cost is above one of the limits.
DrawingCost CheckDrawing(const Document& document);

} // namespace ozm::tool
