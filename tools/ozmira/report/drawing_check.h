#pragma once

#include <Ozmira/ozmDrawingCost.h>

namespace ozm::tool {

/// Measures the cost of drawing. Throws `FileError` if references form a cycle, in which case drawing would
/// never end, or if the cost exceeds one of the tool's limits.
DrawingCost CheckDrawing(const Document& document);

} // namespace ozm::tool
