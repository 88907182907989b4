#pragma once

#include <Ozmira/ozmDocument.h>
#include <Ozmira/ozmElement.h>

#include <cstdint>

namespace ozm {

/// What drawing a document takes when every reference is followed.
///
/// Drawing follows `use` and `clip-path` references without a guard. A few nested references can draw an
/// element a billion times, and references that form a cycle recurse until the stack ends. Before it draws a
/// file from a source that it does not trust, an application asks for the cost, and refuses a cycle, a depth
/// above `kMaximumNestingDepth`, and more elements or segments than it has time for.
struct DrawingCost {
    /// Elements drawn or added to a clip, counted once for each way in which they are reached. Saturates at
    /// `UINT32_MAX`.
    uint32_t elements = 0;
    /// Path segments of these elements. Saturates at `UINT32_MAX`.
    uint32_t segments = 0;
    /// Longest chain of elements that are being drawn at the same time; drawing recurses that deep.
    uint32_t depth = 0;
    /// An element on a cycle of references, if possible one with an id; `kNoElement` without a cycle. With
    /// one, the other members have no meaning.
    uint64_t cycle = kNoElement;
};

/// Follows references as drawing does, without drawing, in time and memory linear in the size of the
/// document. Does not recurse.
DrawingCost MeasureDrawing(const Document& document);

} // namespace ozm
