#include "geometry/clipper_grid.h"

#include "geometry/flatten.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {

namespace {

/// Up to here Clipper multiplies in 64 bits.
constexpr int kGridBits = 29;

} // namespace

ClipperGrid::ClipperGrid(const Box& extent, double tolerance) : m_tolerance(tolerance) {
    const double reach = std::max({-extent.left, -extent.top, extent.right, extent.bottom});
    int exponent = 0;
    // A power of two, so that short binary fractions stay what they are.
    std::frexp(reach, &exponent);
    if (extent.IsEmpty() || !std::isfinite(reach) || std::abs(exponent) > 900) return;
    m_scale = std::ldexp(1, kGridBits - exponent);
}

ClipperLib::IntPoint ClipperGrid::Grid(Point p) const {
    return {std::llround(p.x * m_scale), std::llround(p.y * m_scale)};
}

Point ClipperGrid::FromGrid(const ClipperLib::IntPoint& p) const {
    return {static_cast<double>(p.X) / m_scale, static_cast<double>(p.Y) / m_scale};
}

size_t ClipperGrid::EdgeHash::operator()(const Edge& edge) const {
    uint64_t hash = 0;
    for (const ClipperLib::cInt value : {edge.from.X, edge.from.Y, edge.to.X, edge.to.Y}) {
        hash = (hash ^ static_cast<uint64_t>(value)) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29;
    }
    return static_cast<size_t>(hash);
}

ClipperLib::Paths ClipperGrid::Add(const Path& path) {
    ClipperLib::Paths polygons;
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        if (segment.verb == Verb::Move) polygons.emplace_back();
        if (segment.verb == Verb::Cubic) {
            AddCurve(segment.points, polygons.back());
        } else if (segment.verb != Verb::Close) {
            polygons.back().push_back(Grid(segment.End()));
        }
    }
    return polygons;
}

void ClipperGrid::AddCurve(const Point (&curve)[4], ClipperLib::Path& polygon) {
    const int steps = CubicSteps(curve, m_tolerance);
    const size_t index = m_curves.size(), first = m_gridPoints.size();
    m_curves.push_back({{curve[0], curve[1], curve[2], curve[3]}, steps, first});
    m_gridPoints.push_back(Grid(curve[0]));
    for (int i = 1; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        m_gridPoints.push_back(Grid(i == steps ? curve[3] : CubicAt(curve, t)));
        m_chords.insert({{m_gridPoints[m_gridPoints.size() - 2], m_gridPoints.back()}, {index, i - 1}});
        polygon.push_back(m_gridPoints.back());
    }
}

std::optional<ClipperGrid::CurvePart> ClipperGrid::WholeChord(const ClipperLib::IntPoint& from,
                                                              const ClipperLib::IntPoint& to) const {
    const auto forward = m_chords.find({from, to});
    const auto found = forward != m_chords.end() ? forward : m_chords.find({to, from});
    if (found == m_chords.end()) return {};
    const Chord& chord = found->second;
    const int steps = m_curves[chord.curve].steps;
    const double begin = static_cast<double>(chord.step) / steps,
                 end = static_cast<double>(chord.step + 1) / steps;
    if (forward != m_chords.end()) return CurvePart{chord.curve, begin, end};
    return CurvePart{chord.curve, end, begin};
}

std::optional<double> ClipperGrid::OnNeighbour(const CurvePart& part, bool isBefore,
                                               const ClipperLib::IntPoint& p) const {
    const Curve& curve = m_curves[part.curve];
    const bool isForward = part.to > part.from;
    const double shared = isBefore ? part.from : part.to;
    // The neighbouring chord lies towards the curve's end, or towards its start.
    const bool isTowardsEnd = isBefore != isForward;
    const auto step = static_cast<int>(std::lround(shared * curve.steps));
    const int other = isTowardsEnd ? step + 1 : step - 1;
    if (other < 0 || other > curve.steps) return {};
    const auto at = [&](int i) {
        return FromGrid(m_gridPoints[curve.firstGridPoint + static_cast<size_t>(i)]);
    };
    const Point a = at(step), chord = at(other) - a, way = FromGrid(p) - a;
    const double length = Length(chord);
    const double along = Dot(way, chord) / (length * length), across = Cross(way, chord) / length;
    // Clipper rounds where edges cross.
    if (!(along > 0 && along < 1) || std::abs(across) * m_scale > 2) return {};
    return std::clamp((step + (other - step) * along) / curve.steps, 0.0, 1.0);
}

ClipperGrid::CurveParts ClipperGrid::PartsOf(const ClipperLib::Path& polygon) const {
    const size_t count = polygon.size();
    CurveParts whole(count);
    for (size_t i = 0; i < count; ++i) whole[i] = WholeChord(polygon[i], polygon[(i + 1) % count]);
    CurveParts parts = whole;
    for (size_t i = 0; i < count; ++i) {
        if (whole[i]) continue;
        // Part of a chord, where another edge crossed it.
        const auto &next = whole[(i + 1) % count], &last = whole[(i + count - 1) % count];
        if (next) {
            if (const auto t = OnNeighbour(*next, true, polygon[i]))
                parts[i] = CurvePart{next->curve, *t, next->from};
        }
        if (last && !parts[i]) {
            const auto t = OnNeighbour(*last, false, polygon[(i + 1) % count]);
            if (t) parts[i] = CurvePart{last->curve, last->to, *t};
        }
    }
    return parts;
}

void ClipperGrid::AppendPolygon(const ClipperLib::Path& polygon, Path& path) const {
    const size_t count = polygon.size();
    const CurveParts parts = PartsOf(polygon);
    const auto continues = [&](size_t i) {
        const auto &part = parts[i], &next = parts[(i + 1) % count];
        return part && next && part->curve == next->curve && part->to == next->from &&
               (part->from < part->to) == (next->from < next->to);
    };
    // Not in the middle of a curve.
    size_t start = 0;
    while (start + 1 < count && continues((start + count - 1) % count)) ++start;
    path.MoveTo(FromGrid(polygon[start]));
    for (size_t i = 0; i < count;) {
        size_t edge = (start + i) % count, edges = 1;
        std::optional<CurvePart> run = parts[edge];
        for (; i + edges < count && continues(edge); ++edges) {
            edge = (edge + 1) % count;
            run->to = parts[edge]->to;
        }
        const Point end = FromGrid(polygon[(edge + 1) % count]);
        // One chord alone is shorter as a line.
        if (edges > 1) {
            AppendPart(*run, end, path);
        } else if (i + 1 < count) {
            path.LineTo(end);
        }
        i += edges;
    }
    path.Close();
}

void ClipperGrid::AppendPart(const CurvePart& part, Point end, Path& path) const {
    Point points[4];
    CutCubic(m_curves[part.curve].points, std::min(part.from, part.to), std::max(part.from, part.to), points);
    if (part.from > part.to) std::reverse(points, points + 4);
    path.CubicTo(points[1], points[2], end);
}

Path ClipperGrid::PathOf(const ClipperLib::Paths& polygons) const {
    Path path;
    for (const ClipperLib::Path& polygon : polygons) {
        if (polygon.size() > 2) AppendPolygon(polygon, path);
    }
    return path;
}

} // namespace ozm::conform
