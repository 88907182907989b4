#include "path/path_queries.h"

#include "path/segments.h"
#include "path/winding.h"

#include <array>
#include <limits>

namespace ozcg {

namespace {

using Point = Vec2<double>;

Point toPoint(CGPoint p) { return {p.x, p.y}; }

// Safe from overflow.
double mix(double a, double b, double t) { return a * (1 - t) + b * t; }

/// One coordinate of a cubic curve.
struct Cubic1 {
    double p0, p1, p2, p3;

    double at(double t) const {
        const double a = mix(p0, p1, t), b = mix(p1, p2, t), c = mix(p2, p3, t);
        return mix(mix(a, b, t), mix(b, c, t), t);
    }
};

Cubic1 xOf(const Cubic<double>& c) { return {c.p0.x, c.p1.x, c.p2.x, c.p3.x}; }
Cubic1 yOf(const Cubic<double>& c) { return {c.p0.y, c.p1.y, c.p2.y, c.p3.y}; }

/// Parameters between 0 and 1, in ascending order.
struct Extrema {
    std::array<double, 2> t;
    size_t count = 0;

    void add(double value) {
        if (value > 0 && value < 1) t[count++] = value;
    }
};

// The parameters of the local extrema: the zeros of the derivative d0 (1-t)^2 + 2 d1 t (1-t) + d2 t^2.
Extrema extremaOf(const Cubic1& c) {
    Extrema extrema;
    double d0 = 0.5 * c.p1 - 0.5 * c.p0, d1 = 0.5 * c.p2 - 0.5 * c.p1, d2 = 0.5 * c.p3 - 0.5 * c.p2;
    if ((d0 >= 0 && d1 >= 0 && d2 >= 0) || (d0 <= 0 && d1 <= 0 && d2 <= 0)) return extrema;
    const double scale = std::max({std::abs(d0), std::abs(d1), std::abs(d2)});
    d0 /= scale;
    d1 /= scale;
    d2 /= scale;
    const double a = d0 - 2 * d1 + d2, b = d1 - d0; // a t^2 + 2 b t + d0
    const double discriminant = b * b - a * d0;
    if (discriminant < 0) return extrema;
    const double q = -(b + std::copysign(std::sqrt(discriminant), b));
    if (q == 0) return extrema; // a double zero at 0, or none at all
    const double t0 = a != 0 ? q / a : -1, t1 = d0 / q;
    extrema.add(std::min(t0, t1));
    extrema.add(std::max(t0, t1));
    return extrema;
}

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double v) {
        low = v < low ? v : low;
        high = v > high ? v : high;
    }
    void addCurve(const Cubic1& c) {
        add(c.p3);
        const Extrema extrema = extremaOf(c);
        for (size_t i = 0; i < extrema.count; ++i) add(c.at(extrema.t[i]));
    }
};

CGRect rectOf(const Range& x, const Range& y) { return {{x.low, y.low}, {x.high - x.low, y.high - y.low}}; }

/// A visitor of segments that finds the smallest rectangle around them.
class BoundsFinder {
public:
    CGRect rect() const { return rectOf(m_x, m_y); }

    void begin(Point start) { add(start); }
    void line(Point, Point to) { add(to); }
    void curve(const Cubic<double>& c) {
        m_x.addCurve(xOf(c));
        m_y.addCurve(yOf(c));
    }
    void end(Point, Point, bool) {}

private:
    void add(Point p) {
        m_x.add(p.x);
        m_y.add(p.y);
    }

    Range m_x, m_y;
};

/// A visitor of segments that computes the winding number of a path around a point.
class WindingCounter {
public:
    explicit WindingCounter(Point point) : m_winding(point) {}

    int winding() const { return m_winding.number(); }

    void begin(Point) {}
    void end(Point from, Point start, bool) { line(from, start); }
    void line(Point from, Point to) { m_winding.line(from, to); }
    void curve(const Cubic<double>& c) {
        const double ray = m_winding.point().y;
        if (std::min({c.p0.y, c.p1.y, c.p2.y, c.p3.y}) > ray) return;
        if (std::max({c.p0.y, c.p1.y, c.p2.y, c.p3.y}) < ray) return;
        const Cubic1 x = xOf(c), y = yOf(c);
        const Extrema extrema = extremaOf(y);
        double t0 = 0, y0 = c.p0.y;
        for (size_t i = 0; i <= extrema.count; ++i) {
            const bool last = i == extrema.count;
            const double t1 = last ? 1 : extrema.t[i], y1 = last ? c.p3.y : y.at(t1);
            if (m_winding.crosses(y0, y1)) m_winding.count(x.at(crossing(y, t0, t1, y0 < y1)), y0, y1);
            t0 = t1;
            y0 = y1;
        }
    }

private:
    // Bisects a piece on which y is monotonic.
    double crossing(const Cubic1& y, double t0, double t1, bool rising) const {
        for (int halvings = 0; halvings < 60; ++halvings) {
            const double t = 0.5 * (t0 + t1);
            ((y.at(t) <= m_winding.point().y) == rising ? t0 : t1) = t;
        }
        return t0;
    }

    Winding m_winding;
};

} // namespace

CGRect controlBounds(const PathData& path) noexcept {
    if (path.empty()) return CGRectNull;
    Range x, y;
    for (const CGPoint p : path.points()) {
        x.add(p.x);
        y.add(p.y);
    }
    return rectOf(x, y);
}

CGRect curveBounds(const PathData& path) noexcept {
    if (path.empty()) return CGRectNull;
    BoundsFinder finder;
    walkSegments(path, toPoint, finder);
    return finder.rect();
}

bool contains(const PathData& path, CGPoint point, bool evenOdd) noexcept {
    if (!isFinite(point)) return false;
    WindingCounter counter(toPoint(point));
    walkSegments(path, toPoint, counter);
    return evenOdd ? counter.winding() % 2 != 0 : counter.winding() != 0;
}

bool isRect(const PathData& path, CGRect* rect) noexcept {
    auto verbs = path.verbs();
    const auto p = path.points();
    if (!verbs.empty() && verbs.back() == Verb::close) verbs = verbs.first(verbs.size() - 1);
    const bool backAtStart = p.size() == 5 && CGPointEqualToPoint(p[0], p[4]);
    const bool closed = verbs.size() < path.verbs().size() && p.size() == 4;
    if (verbs.size() != p.size() || !(closed || backAtStart)) return false;
    const auto isLine = [](Verb verb) { return verb == Verb::line; };
    if (!std::all_of(verbs.begin() + 1, verbs.end(), isLine)) return false;
    const bool acrossFirst = p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x;
    const bool upFirst = p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y;
    if (!acrossFirst && !upFirst) return false;
    if (rect) *rect = CGRectStandardize({p[0], {p[2].x - p[0].x, p[2].y - p[0].y}});
    return true;
}

} // namespace ozcg
