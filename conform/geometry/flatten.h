#pragma once

#include "geometry/path.h"

#include <vector>

namespace ozm::conform {

/// A subpath made of straight lines. The points differ from their neighbours; those of a closed one do not
/// repeat the first.
struct Polyline {
    std::vector<Point> points;
    bool isClosed = false;
};

/// The subpaths with each curve cut into chords no further than `tolerance` from it. Subpaths of one point
/// are kept when they are closed or have a segment without length.
std::vector<Polyline> Flatten(const Path& path, double tolerance);

/// The number of equal parameter steps that keep chords within `tolerance` of a cubic curve.
int CubicSteps(const Point (&curve)[4], double tolerance);

/// A path of lines through the same points.
Path PathOf(const std::vector<Polyline>& polylines);

} // namespace ozm::conform
