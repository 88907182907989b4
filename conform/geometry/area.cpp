#include "geometry/area.h"

#include "geometry/clipper_grid.h"

#include <cmath>
#include <optional>

namespace ozm::conform {

namespace {

ClipperLib::PolyFillType FillTypeOf(FillRule rule) {
    return rule == FillRule::EvenOdd ? ClipperLib::pftEvenOdd : ClipperLib::pftNonZero;
}

ClipperLib::ClipType ClipTypeOf(AreaOperation operation) {
    switch (operation) {
    case AreaOperation::Intersection: return ClipperLib::ctIntersection;
    case AreaOperation::Difference: return ClipperLib::ctDifference;
    default: return ClipperLib::ctUnion;
    }
}

/// The operation on polygons; none where Clipper gives up. `b` may be null.
std::optional<ClipperLib::Paths> TryToExecute(ClipperGrid& grid, AreaOperation operation, const Area& a,
                                              const Area* b) {
    try {
        ClipperLib::Clipper clipper;
        // The edges of a curve stay as many as they were, so that they are found again.
        clipper.PreserveCollinear(true);
        clipper.AddPaths(grid.Add(a.path), ClipperLib::ptSubject, true);
        if (b) clipper.AddPaths(grid.Add(b->path), ClipperLib::ptClip, true);
        ClipperLib::Paths result;
        const auto clipFill = b ? FillTypeOf(b->rule) : ClipperLib::pftNonZero;
        if (!clipper.Execute(ClipTypeOf(operation), result, FillTypeOf(a.rule), clipFill)) return {};
        return result;
    } catch (const ClipperLib::clipperException&) {
        return {};
    }
}

std::optional<ClipperLib::Paths> Execute(ClipperGrid& grid, AreaOperation operation, const Area& a,
                                         const Area* b) {
    // Clipper also gives up when memory runs out while it works. With too little left the second attempt
    // throws, as it begins with what is not caught.
    if (auto result = TryToExecute(grid, operation, a, b)) return result;
    return TryToExecute(grid, operation, a, b);
}

/// All points, curves' control points included.
Box ExtentOf(const Path& path) {
    Box box;
    for (const Point p : path.Points()) box.Add(p);
    return box;
}

Path PathOfResult(AreaOperation operation, const Area& a, const Area* b, double tolerance) {
    Box extent = ExtentOf(a.path);
    if (b) extent.Add(ExtentOf(b->path));
    ClipperGrid grid(extent, tolerance);
    if (!grid.IsUsable()) return {};
    const auto polygons = Execute(grid, operation, a, b);
    return polygons ? grid.PathOf(*polygons) : Path();
}

/// About how wide a polygon is across: that of a long rectangle.
double WidthAcross(const ClipperLib::Path& polygon) {
    double perimeter = 0;
    for (size_t i = 0; i < polygon.size(); ++i) {
        const ClipperLib::IntPoint &p = polygon[i], &q = polygon[(i + 1) % polygon.size()];
        perimeter += std::hypot(static_cast<double>(p.X - q.X), static_cast<double>(p.Y - q.Y));
    }
    return perimeter > 0 ? 2 * std::abs(ClipperLib::Area(polygon)) / perimeter : 0;
}

} // namespace

Path Combine(AreaOperation operation, const Area& a, const Area& b, double tolerance) {
    return PathOfResult(operation, a, &b, tolerance);
}

Path Simplified(const Area& area, double tolerance) {
    return PathOfResult(AreaOperation::Union, area, nullptr, tolerance);
}

bool Overlap(const Area& a, const Area& b, double tolerance) {
    if (!BoxOf(a.path).Overlaps(BoxOf(b.path))) return false;
    Box extent = ExtentOf(a.path);
    extent.Add(ExtentOf(b.path));
    ClipperGrid grid(extent, tolerance / 4);
    if (!grid.IsUsable()) return true;
    const auto polygons = Execute(grid, AreaOperation::Intersection, a, &b);
    if (!polygons) return true;
    for (const ClipperLib::Path& polygon : *polygons) {
        if (WidthAcross(polygon) > grid.Units(tolerance)) return true;
    }
    return false;
}

} // namespace ozm::conform
