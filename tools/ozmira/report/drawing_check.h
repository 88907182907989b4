#pragma once

#include <Ozmira/ozmDrawingCost.h>

namespace ozm::tool {

/// Measures what drawing takes. Throws `FileError` when references form a cycle, in which drawing would never
/// end, or when the cost is above one of the tool's limits.
DrawingCost CheckDrawing(const Document& document);

} // namespace ozm::tool
