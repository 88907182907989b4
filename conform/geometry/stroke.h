#pragma once

#include "geometry/path.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace ozm::conform {

enum class LineCap : uint8_t { Butt, Round, Square };
enum class LineJoin : uint8_t { Miter, Round, Bevel };

/// How a line is drawn along a path, in the path's coordinates.
struct Stroke {
    double width = 1;
    LineCap cap = LineCap::Butt;
    LineJoin join = LineJoin::Miter;
    double miterLimit = 4;
};

/// A path that, filled under the nonzero rule, covers what the stroke paints. Curves stay curves, off by at
/// most `tolerance`. Subpaths without length get dots with round and square caps.
Path OutlineOf(const Path& path, const Stroke& stroke, double tolerance);

/// The exact box of what the stroke paints, after a transform.
Box StrokeBoxOf(const Path& path, const Stroke& stroke, const Matrix& matrix);

/// How far a stroke may reach from its path at most.
double StrokeReach(const Stroke& stroke);

} // namespace ozm::conform
