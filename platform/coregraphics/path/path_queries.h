// Questions about a path: where it lies and what is inside it.
#pragma once

#include "path/path_data.h"

namespace ozcg {

/// The smallest rectangle around all points, control points included; CGRectNull when empty.
CGRect controlBounds(const PathData& path) noexcept;
/// The smallest rectangle around the curves themselves; CGRectNull when empty.
CGRect curveBounds(const PathData& path) noexcept;
/// True when filling would paint the point.
bool contains(const PathData& path, CGPoint point, bool evenOdd) noexcept;
/// True for a single upright rectangle, closed or ended at its start; `rect` (may be NULL) receives it.
bool isRect(const PathData& path, CGRect* rect) noexcept;

} // namespace ozcg
