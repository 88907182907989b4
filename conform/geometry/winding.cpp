#include "geometry/winding.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {

namespace {

struct Edge {
    Point from, to;
    size_t outline, index, count; ///< The edge's place among those of its outline.
    double left, right, top, bottom;

    Edge(Point a, Point b, size_t ofOutline, size_t atIndex, size_t ofCount)
        : from(a), to(b), outline(ofOutline), index(atIndex), count(ofCount), left(std::min(a.x, b.x)),
          right(std::max(a.x, b.x)), top(std::min(a.y, b.y)), bottom(std::max(a.y, b.y)) {}

    bool IsNextTo(const Edge& e) const {
        if (outline != e.outline) return false;
        const size_t distance = index > e.index ? index - e.index : e.index - index;
        return distance == 1 || distance + 1 == count;
    }

    /// True when the edges cross inside both; touching is not crossing.
    bool Crosses(const Edge& e) const {
        if (top > e.bottom || e.top > bottom || IsNextTo(e)) return false;
        const Point way = to - from, other = e.to - e.from;
        // What is smaller is rounding.
        const double tooSmall =
            1e-9 * (std::abs(way.x) + std::abs(way.y)) * (std::abs(other.x) + std::abs(other.y));
        const auto areApart = [&](double a, double b) {
            return (a > tooSmall && b < -tooSmall) || (a < -tooSmall && b > tooSmall);
        };
        return areApart(conform::Cross(way, e.from - from), conform::Cross(way, e.to - from)) &&
               areApart(conform::Cross(other, from - e.from), conform::Cross(other, to - e.from));
    }
};

std::vector<Edge> EdgesOf(const std::vector<Polyline>& outlines) {
    std::vector<Edge> edges;
    for (size_t k = 0; k < outlines.size(); ++k) {
        const std::vector<Point>& points = outlines[k].points;
        for (size_t i = 0; i < points.size(); ++i) {
            edges.emplace_back(points[i], points[(i + 1) % points.size()], k, i, points.size());
        }
    }
    return edges;
}

bool Contains(const Polyline& outline, Point p) {
    bool isInside = false;
    const std::vector<Point>& points = outline.points;
    for (size_t i = 0; i < points.size(); ++i) {
        const Point a = points[i], b = points[(i + 1) % points.size()];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            isInside = !isInside;
    }
    return isInside;
}

/// One subpath of a path whose outlines do not cross.
struct Outline {
    Path path;
    Polyline line;
    Box box;
    bool isClockwise;
    int windingOutside = 0; ///< Of the place where it lies.
    int depth = 0;          ///< How many outlines lie around it.

    int WindingInside() const { return windingOutside + (isClockwise ? 1 : -1); }
};

/// Outlines that do not cross lie as a whole inside one another or apart. They may touch, which one point
/// does not show; the middles of edges are looked at, and most of them decide.
bool LiesIn(const Outline& inner, const Outline& outer) {
    if (!outer.box.Contains(inner.box)) return false;
    const std::vector<Point>& points = inner.line.points;
    int inside = 0;
    for (size_t k = 0; k < 3; ++k) {
        const size_t i = k * points.size() / 3;
        inside += Contains(outer.line, Mix(points[i], points[(i + 1) % points.size()], 0.5));
    }
    return inside >= 2;
}

std::vector<Outline> Nested(const Path& path, double tolerance) {
    std::vector<Outline> outlines;
    for (Path& subpath : Subpaths(path)) {
        std::vector<Polyline> lines = Flatten(subpath, tolerance);
        if (lines.empty() || lines[0].points.size() < 3) continue;
        const bool isClockwise = SignedArea(lines[0]) > 0;
        const Box box = BoxOf(subpath);
        outlines.push_back({std::move(subpath), std::move(lines[0]), box, isClockwise});
    }
    for (Outline& inner : outlines) {
        for (const Outline& outer : outlines) {
            if (&inner == &outer || !LiesIn(inner, outer)) continue;
            inner.windingOutside += outer.isClockwise ? 1 : -1;
            ++inner.depth;
        }
    }
    return outlines;
}

double AreaOf(const Path& path, double tolerance) {
    double area = 0;
    for (const Polyline& line : Flatten(path, tolerance)) area += SignedArea(line);
    return area;
}

} // namespace

double SignedArea(const Polyline& outline) {
    double area = 0;
    const std::vector<Point>& points = outline.points;
    // From the first point, so that outlines far from the origin lose no digits.
    for (size_t i = 2; i < points.size(); ++i)
        area += Cross(points[i - 1] - points[0], points[i] - points[0]);
    return area;
}

bool Cross(const std::vector<Polyline>& outlines) {
    constexpr size_t kMostEdges = 20000;
    std::vector<Edge> edges = EdgesOf(outlines);
    if (edges.size() > kMostEdges) return true;
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.left < b.left; });
    std::vector<const Edge*> active; // Those that reach the place where the next one begins.
    for (const Edge& edge : edges) {
        std::erase_if(active, [&](const Edge* e) { return e->right < edge.left; });
        if (std::any_of(active.begin(), active.end(), [&](const Edge* e) { return edge.Crosses(*e); }))
            return true;
        active.push_back(&edge);
    }
    return false;
}

Path Rewound(const Area& area, double tolerance) {
    if (Cross(Flatten(area.path, tolerance))) return Simplified(area, tolerance);
    Path path;
    for (const Outline& outline : Nested(area.path, tolerance)) {
        const bool isEvenOdd = area.rule == FillRule::EvenOdd;
        const bool isFilledOutside = isEvenOdd ? outline.depth % 2 != 0 : outline.windingOutside != 0;
        const bool isFilledInside = isEvenOdd ? outline.depth % 2 == 0 : outline.WindingInside() != 0;
        if (isFilledInside == isFilledOutside) continue;
        path.Append(outline.isClockwise == isFilledInside ? outline.path : Reversed(outline.path));
    }
    return path;
}

bool RulesAgree(const Path& path, double tolerance) {
    if (Cross(Flatten(path, tolerance))) {
        const double nonZero = AreaOf(Simplified({path, FillRule::NonZero}, tolerance), tolerance);
        const double evenOdd = AreaOf(Simplified({path, FillRule::EvenOdd}, tolerance), tolerance);
        const Box box = BoxOf(path);
        return std::abs(nonZero - evenOdd) <= tolerance * (box.Width() + box.Height());
    }
    const std::vector<Outline> outlines = Nested(path, tolerance);
    return std::all_of(outlines.begin(), outlines.end(), [](const Outline& outline) {
        return (outline.windingOutside != 0) == (outline.depth % 2 != 0) &&
               (outline.WindingInside() != 0) == (outline.depth % 2 == 0);
    });
}

} // namespace ozm::conform
