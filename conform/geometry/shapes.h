#pragma once

#include "geometry/path.h"

#include <optional>
#include <span>

namespace ozm::conform {

struct Rectangle {
    double x = 0, y = 0, width = 0, height = 0;
    double rx = 0, ry = 0; ///< Resolved: see `ResolveRadii`.
};
struct Ellipse {
    double cx = 0, cy = 0, rx = 0, ry = 0;
};

/// Sets the corner radii as SVG has it: one that is not given (or negative) takes the other's value, then
/// each is cut to half its side.
void ResolveRadii(Rectangle& rectangle, std::optional<double> rx, std::optional<double> ry);

// The shapes as paths, each beginning and running as SVG says, which matters for dashes and markers. Shapes
// without width, height or radius draw nothing and give empty paths.

Path PathOf(const Rectangle& rectangle);
Path PathOf(const Ellipse& ellipse);
Path LinePath(Point from, Point to);
/// A polyline, or with `isClosed` a polygon.
Path PolyPath(std::span<const Point> points, bool isClosed);

/// Adds the elliptical arc of a path command from the pen: radii, rotation of the ellipse's x axis in
/// degrees, flags. A radius of 0 gives a line; an arc that ends where it starts nothing; radii too small are
/// enlarged. Curves stay within `tolerance` of the arc, or take a quarter of it each, whichever are fewer.
void ArcTo(Path& path, double rx, double ry, double degrees, bool isLarge, bool isClockwise, Point end,
           double tolerance = 0);

} // namespace ozm::conform
