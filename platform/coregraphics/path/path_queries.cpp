// Where a path lies and what is inside of it.
#include "path/flatten.h"
#include "path/path_data.h"

#include <array>
#include <limits>

namespace ozcg {

namespace {

using Point = Vec2<double>;

Point vec(CGPoint p) { return {p.x, p.y}; }

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

/// Parameters between 0 and 1, in rising order.
struct Turns {
    std::array<double, 2> t;
    size_t count = 0;

    void add(double value) {
        if (value > 0 && value < 1) t[count++] = value;
    }
};

// Where the coordinate may turn round: the zeros of the derivative d0 (1-t)^2 + 2 d1 t (1-t) + d2 t^2.
Turns turnsOf(const Cubic1& c) {
    Turns turns;
    double d0 = 0.5 * c.p1 - 0.5 * c.p0, d1 = 0.5 * c.p2 - 0.5 * c.p1, d2 = 0.5 * c.p3 - 0.5 * c.p2;
    if ((d0 >= 0 && d1 >= 0 && d2 >= 0) || (d0 <= 0 && d1 <= 0 && d2 <= 0)) return turns;
    const double scale = std::max({std::abs(d0), std::abs(d1), std::abs(d2)});
    d0 /= scale;
    d1 /= scale;
    d2 /= scale;
    const double a = d0 - 2 * d1 + d2, b = d1 - d0; // a t^2 + 2 b t + d0
    const double discriminant = b * b - a * d0;
    if (discriminant < 0) return turns;
    const double q = -(b + std::copysign(std::sqrt(discriminant), b));
    if (q == 0) return turns; // a double zero at 0, or no zero at all
    const double t0 = a != 0 ? q / a : -1, t1 = d0 / q;
    turns.add(std::min(t0, t1));
    turns.add(std::max(t0, t1));
    return turns;
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
        const Turns turns = turnsOf(c);
        for (size_t i = 0; i < turns.count; ++i) add(c.at(turns.t[i]));
    }
};

CGRect rectOf(const Range& x, const Range& y) { return {{x.low, y.low}, {x.high - x.low, y.high - y.low}}; }

/// Calls line(from, to) and curve(cubic) for the path's segments, closing lines of closed subpaths included;
/// move(from, to) between subpaths.
template <class Move, class Line, class Curve>
void walk(const PathData& path, Move&& move, Line&& line, Curve&& curve) {
    const CGPoint* p = path.points().data();
    Point start{}, current{};
    for (const Verb verb : path.verbs()) {
        Point to = start;
        switch (verb) {
        case Verb::move:
            to = vec(p[0]);
            move(current, start, to);
            start = to;
            break;
        case Verb::line: line(current, to = vec(p[0])); break;
        case Verb::quad: curve(cubicFromQuad(current, vec(p[0]), to = vec(p[1]))); break;
        case Verb::cubic: curve({current, vec(p[0]), vec(p[1]), to = vec(p[2])}); break;
        case Verb::close: line(current, to); break;
        }
        current = to;
        p += pointCount(verb);
    }
    move(current, start, start);
}

/// Counts how often a path winds round a point, along a ray from there towards greater x.
class WindingCounter {
public:
    explicit WindingCounter(Point point) : m_point(point) {}

    int winding() const { return m_winding; }

    void line(Point from, Point to) {
        if (!crosses(from.y, to.y)) return;
        const double t = (0.5 * m_point.y - 0.5 * from.y) / (0.5 * to.y - 0.5 * from.y);
        count(mix(from.x, to.x, t), from.y, to.y);
    }
    void curve(const Cubic<double>& c) {
        if (std::min({c.p0.y, c.p1.y, c.p2.y, c.p3.y}) > m_point.y) return;
        if (std::max({c.p0.y, c.p1.y, c.p2.y, c.p3.y}) < m_point.y) return;
        const Cubic1 x = xOf(c), y = yOf(c);
        const Turns turns = turnsOf(y);
        double t0 = 0, y0 = c.p0.y;
        for (size_t i = 0; i <= turns.count; ++i) {
            const bool last = i == turns.count;
            const double t1 = last ? 1 : turns.t[i], y1 = last ? c.p3.y : y.at(t1);
            if (crosses(y0, y1)) count(x.at(crossing(y, t0, t1, y0 < y1)), y0, y1);
            t0 = t1;
            y0 = y1;
        }
    }

private:
    // Half open, so that where two segments meet on the ray exactly one of them counts.
    bool crosses(double y0, double y1) const { return (y0 <= m_point.y) != (y1 <= m_point.y); }
    void count(double x, double y0, double y1) {
        if (x > m_point.x) m_winding += y0 < y1 ? 1 : -1;
    }
    // Bisects a piece on which y only rises or only falls.
    double crossing(const Cubic1& y, double t0, double t1, bool rising) const {
        for (int halvings = 0; halvings < 60; ++halvings) {
            const double t = 0.5 * (t0 + t1);
            ((y.at(t) <= m_point.y) == rising ? t0 : t1) = t;
        }
        return t0;
    }

    Point m_point;
    int m_winding = 0;
};

} // namespace

CGRect PathData::controlBounds() const noexcept {
    if (m_points.empty()) return CGRectNull;
    Range x, y;
    for (const CGPoint p : points()) {
        x.add(p.x);
        y.add(p.y);
    }
    return rectOf(x, y);
}

CGRect PathData::tightBounds() const noexcept {
    if (empty()) return CGRectNull;
    Range x, y;
    const auto add = [&](Point p) {
        x.add(p.x);
        y.add(p.y);
    };
    walk(
        *this, [&](Point, Point, Point to) { add(to); }, [&](Point, Point to) { add(to); },
        [&](const Cubic<double>& c) {
            x.addCurve(xOf(c));
            y.addCurve(yOf(c));
        });
    return rectOf(x, y);
}

bool contains(const PathData& path, CGPoint point, bool evenOdd) noexcept {
    if (!isFinite(point)) return false;
    WindingCounter counter(vec(point));
    walk(
        path, [&](Point from, Point start, Point) { counter.line(from, start); },
        [&](Point from, Point to) { counter.line(from, to); },
        [&](const Cubic<double>& c) { counter.curve(c); });
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
