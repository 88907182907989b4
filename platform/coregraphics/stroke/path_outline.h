#pragma once

#include "path/path_data.h"
#include "stroke/line_style.h"

namespace ozcg {

/// True when stroking would paint the point. Throws std::bad_alloc.
bool strokeContains(const PathData& path, const LineStyle& style, CGPoint point);

} // namespace ozcg
