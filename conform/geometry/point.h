#pragma once

#include <cmath>

namespace ozm::conform {

/// A point or a vector.
struct Point {
    double x = 0, y = 0;

    bool operator==(const Point&) const = default;
    friend constexpr Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
    friend constexpr Point operator-(Point a) { return {-a.x, -a.y}; }
    friend constexpr Point operator*(Point a, double k) { return {a.x * k, a.y * k}; }
};

constexpr double Dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
/// Positive when `b` lies clockwise of `a` on the screen, where y grows downwards.
constexpr double Cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }
inline double Length(Point a) { return std::hypot(a.x, a.y); }
inline double Distance(Point a, Point b) { return Length(b - a); }
/// The point at `t` on the way from `a` (0) to `b` (1).
constexpr Point Mix(Point a, Point b, double t) { return a + (b - a) * t; }
/// The vector turned by a quarter, from x towards y.
constexpr Point Perpendicular(Point a) { return {-a.y, a.x}; }
/// The vector scaled to length 1; {0, 0} for a vector without length.
inline Point Direction(Point a) {
    const double length = Length(a);
    return length > 0 ? Point{a.x / length, a.y / length} : Point{};
}
inline bool IsFinite(Point a) { return std::isfinite(a.x) && std::isfinite(a.y); }

} // namespace ozm::conform
