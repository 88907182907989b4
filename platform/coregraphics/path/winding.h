#pragma once

#include "path/flatten.h"

namespace ozcg {

/// Computes the winding number of lines around a point, by the crossings of a ray from the point towards
/// greater x.
class Winding {
public:
    explicit Winding(Vec2<double> point) : m_point(point) {}

    int number() const { return m_number; }
    Vec2<double> point() const { return m_point; }

    void line(Vec2<double> from, Vec2<double> to) {
        if (!crosses(from.y, to.y)) return;
        const double t = (0.5 * m_point.y - 0.5 * from.y) / (0.5 * to.y - 0.5 * from.y);
        count(from.x * (1 - t) + to.x * t, from.y, to.y);
    }
    /// Whether a piece from y0 to y1 crosses the ray's line. Half open, so that of two pieces that meet there
    /// exactly one does.
    bool crosses(double y0, double y1) const { return (y0 <= m_point.y) != (y1 <= m_point.y); }
    /// Counts a piece that crosses the ray's line at x.
    void count(double x, double y0, double y1) {
        if (x > m_point.x) m_number += y0 < y1 ? 1 : -1;
    }

private:
    Vec2<double> m_point;
    int m_number = 0;
};

} // namespace ozcg
