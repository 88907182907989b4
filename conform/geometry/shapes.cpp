#include "geometry/shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ozm::conform {

namespace {

/// Where the control points of a quarter circle with radius 1 lie.
constexpr double kQuarter = 0.5522847498307936;

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

void ArcTo(Path& path, double rx, double ry, double degrees, bool isLarge, bool isClockwise, Point end) {
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
    const Point from = square > 1 ? half * (1 / std::sqrt(square)) : half;
    const double height = square >= 1 ? 0 : std::sqrt((1 - square) / square);
    const Point centre = Perpendicular(from) * (isLarge == isClockwise ? height : -height);

    const auto angle = [](Point p) { return std::atan2(p.y, p.x); };
    const double first = angle(from - centre);
    double sweep = angle(-from - centre) - first;
    if (isClockwise && sweep < 0) sweep += 2 * std::numbers::pi;
    if (!isClockwise && sweep > 0) sweep -= 2 * std::numbers::pi;

    const int count =
        std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (std::numbers::pi / 2 + 1e-3))));
    const double step = sweep / count, handle = 4.0 / 3 * std::tan(step / 4);
    const Matrix fromCircle = turn * Matrix::Scaling(rx, ry);
    const Point middle = Mix(start, end, 0.5) + fromCircle.MapVector(centre);
    const auto onCircle = [](double a) { return Point{std::cos(a), std::sin(a)}; };
    for (int i = 0; i < count; ++i) {
        const Point a = onCircle(first + i * step), b = onCircle(first + (i + 1) * step);
        path.CubicTo(middle + fromCircle.MapVector(a + Perpendicular(a) * handle),
                     middle + fromCircle.MapVector(b - Perpendicular(b) * handle),
                     i + 1 == count ? end : middle + fromCircle.MapVector(b));
    }
}

} // namespace ozm::conform
