#include "geometry/shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace ozm::conform {

namespace {

/// Where the control points of a quarter circle with radius 1 lie.
constexpr double kQuarter = 0.5522847498307936;

/// How many curves draw an arc of the unit circle, `sweep` radians long, within a tolerance. A curve over
/// the angle a is off by 2/27 sin^6(a/4) / cos^2(a/4).
size_t ArcCurveCount(double sweep, double tolerance) {
    sweep = std::abs(sweep);
    size_t count = std::max<size_t>(1, static_cast<size_t>(std::ceil(sweep / (std::numbers::pi / 2 + 1e-3))));
    const auto isNear = [&](size_t curves) {
        const double sine = std::sin(sweep / static_cast<double>(curves) / 4), square = sine * sine;
        return 2.0 / 27 * square * square * square <= tolerance * (1 - square);
    };
    while (count > 1 && isNear(count - 1)) --count;
    return count;
}

/// The angles between which each curve of an arc runs.
struct ArcCuts {
    std::array<double, 6> angles{};
    size_t count = 0; ///< Of the curves.
};

/// Cuts an arc of the unit circle into equal parts or, if one of its ends is on an axis, at the axes, where
/// curves take the fewest digits.
ArcCuts CutArc(double first, double sweep, double tolerance) {
    constexpr double kRightAngle = std::numbers::pi / 2;
    constexpr double kLeast = 0.02; // Radians that a curve takes at least.
    const auto isOnAxis = [](double angle) { return std::abs(std::remainder(angle, kRightAngle)) < kLeast; };
    const size_t count = ArcCurveCount(sweep, tolerance);
    const double last = first + sweep;
    ArcCuts cuts;
    cuts.angles[0] = first;
    if (isOnAxis(first) || isOnAxis(last)) {
        const double direction = sweep < 0 ? -1 : 1;
        const double begin = first * direction + kLeast, end = last * direction - kLeast;
        for (double axis = std::ceil(begin / kRightAngle) * kRightAngle; axis < end && cuts.count < count;
             axis += kRightAngle) {
            cuts.angles[++cuts.count] = direction * axis;
        }
        if (cuts.count < count) {
            cuts.angles[++cuts.count] = last;
            return cuts;
        }
    }
    cuts.count = count;
    for (size_t i = 1; i <= count; ++i)
        cuts.angles[i] = first + sweep * static_cast<double>(i) / static_cast<double>(count);
    return cuts;
}

} // namespace

void ResolveRadii(Rectangle& rectangle, std::optional<double> rx, std::optional<double> ry) {
    if (rx && !(*rx >= 0)) rx.reset();
    if (ry && !(*ry >= 0)) ry.reset();
    rectangle.rx = std::min(rx ? *rx : ry.value_or(0), rectangle.width / 2);
    rectangle.ry = std::min(ry ? *ry : rx.value_or(0), rectangle.height / 2);
}

Path PathOf(const Rectangle& r) {
    Path path;
    if (!(r.width > 0 && r.height > 0)) return path;
    const double left = r.x, top = r.y, right = r.x + r.width, bottom = r.y + r.height;
    if (!(r.rx > 0 && r.ry > 0)) {
        path.MoveTo({left, top});
        path.LineTo({right, top});
        path.LineTo({right, bottom});
        path.LineTo({left, bottom});
        path.Close();
        return path;
    }
    const double x = r.rx, y = r.ry, u = x * (1 - kQuarter), v = y * (1 - kQuarter);
    const auto lineTo = [&](Point p) {
        if (p != path.Pen()) path.LineTo(p);
    };
    path.MoveTo({left + x, top});
    lineTo({right - x, top});
    path.CubicTo({right - u, top}, {right, top + v}, {right, top + y});
    lineTo({right, bottom - y});
    path.CubicTo({right, bottom - v}, {right - u, bottom}, {right - x, bottom});
    lineTo({left + x, bottom});
    path.CubicTo({left + u, bottom}, {left, bottom - v}, {left, bottom - y});
    lineTo({left, top + y});
    path.CubicTo({left, top + v}, {left + u, top}, {left + x, top});
    path.Close();
    return path;
}

Path PathOf(const Ellipse& e) {
    Path path;
    if (!(e.rx > 0 && e.ry > 0)) return path;
    const double x = e.cx, y = e.cy, rx = e.rx, ry = e.ry, u = rx * kQuarter, v = ry * kQuarter;
    path.MoveTo({x + rx, y});
    path.CubicTo({x + rx, y + v}, {x + u, y + ry}, {x, y + ry});
    path.CubicTo({x - u, y + ry}, {x - rx, y + v}, {x - rx, y});
    path.CubicTo({x - rx, y - v}, {x - u, y - ry}, {x, y - ry});
    path.CubicTo({x + u, y - ry}, {x + rx, y - v}, {x + rx, y});
    path.Close();
    return path;
}

Path LinePath(Point from, Point to) {
    Path path;
    path.MoveTo(from);
    path.LineTo(to);
    return path;
}

Path PolyPath(std::span<const Point> points, bool isClosed) {
    Path path;
    if (points.empty()) return path;
    path.Reserve(points.size() + 1, points.size());
    path.MoveTo(points.front());
    for (const Point p : points.subspan(1)) path.LineTo(p);
    if (isClosed) path.Close();
    return path;
}

void ArcTo(Path& path, double rx, double ry, double degrees, bool isLarge, bool isClockwise, Point end,
           double tolerance) {
    const Point start = path.Pen();
    if (start == end) return;
    rx = std::abs(rx);
    ry = std::abs(ry);
    if (!(rx > 0 && ry > 0)) return path.LineTo(end);

    // In coordinates in which the ellipse is the unit circle around the origin of its centre.
    const Matrix turn = Matrix::Rotation(std::fmod(degrees, 360) * (std::numbers::pi / 180));
    const auto toCircle = [&](Point p) {
        return Point{(turn.a * p.x + turn.b * p.y) / rx, (turn.c * p.x + turn.d * p.y) / ry};
    };
    const Point half = toCircle((start - end) * 0.5);
    const double square = Dot(half, half);
    if (!std::isfinite(square) || !(square > 0)) return path.LineTo(end);
    if (square > 1) {
        rx *= std::sqrt(square);
        ry *= std::sqrt(square);
    }
    const Point begin = square > 1 ? half * (1 / std::sqrt(square)) : half;
    const double height = square >= 1 ? 0 : std::sqrt((1 - square) / square);
    const Point centre = Perpendicular(begin) * (isLarge == isClockwise ? height : -height);

    const auto angle = [](Point p) { return std::atan2(p.y, p.x); };
    const double first = angle(begin - centre);
    double sweep = angle(-begin - centre) - first;
    if (isClockwise && sweep < 0) sweep += 2 * std::numbers::pi;
    if (!isClockwise && sweep > 0) sweep -= 2 * std::numbers::pi;

    const ArcCuts cuts = CutArc(first, sweep, tolerance / std::max(rx, ry));
    const Matrix fromCircle = turn * Matrix::Scaling(rx, ry);
    const Point middle = Mix(start, end, 0.5) + fromCircle.MapVector(centre);
    const auto onCircle = [](double a) { return Point{std::cos(a), std::sin(a)}; };
    for (size_t i = 0; i < cuts.count; ++i) {
        const double from = cuts.angles[i], to = cuts.angles[i + 1];
        const Point a = onCircle(from), b = onCircle(to);
        const double handle = 4.0 / 3 * std::tan((to - from) / 4);
        path.CubicTo(middle + fromCircle.MapVector(a + Perpendicular(a) * handle),
                     middle + fromCircle.MapVector(b - Perpendicular(b) * handle),
                     i + 1 == cuts.count ? end : middle + fromCircle.MapVector(b));
    }
}

} // namespace ozm::conform
