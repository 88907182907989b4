#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/OzmiraExport.h>

#include <cstdint>

namespace ozm {

/// The cost of drawing a document, with all references followed.
///
/// Drawing follows `use` and `clip-path` references without any limit. A few nested references can draw an
/// element a billion times, and a cycle of references recurses until the stack overflows. Before an
/// application draws a file from an untrusted source, it should measure the cost and refuse a cycle, a depth
/// above `kMaximumNestingDepth`, and more elements or segments than it has time for.
struct DrawingCost {
    /// Number of elements drawn or added to a clip. An element counts once for each chain of references that
    /// leads to it. Saturates at `UINT32_MAX`.
    uint32_t elements = 0;
    /// Number of path segments of these elements. Saturates at `UINT32_MAX`.
    uint32_t segments = 0;
    /// The depth to which drawing recurses: the largest number of elements that are being drawn at the same
    /// time, each as part of another.
    uint32_t depth = 0;
    /// An element on a cycle of references, if possible one with an id; `kNoElement` if there is no cycle.
    /// The other members are meaningless if there is one.
    uint64_t cycle = kNoElement;
};

/// Measures the cost of drawing a document without drawing it. Takes time and memory linear in the size of
/// the document and does not recurse.
OZM_CXX_EXPORT DrawingCost MeasureDrawing(const Document& document);

} // namespace ozm
