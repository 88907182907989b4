#pragma once

#include <algorithm>
#include <cmath>

namespace ozcg {

/// A point or a vector.
template <typename T>
struct Vec2 {
    T x, y;
    friend Vec2 operator+(Vec2 a, Vec2 b) { return {a.x + b.x, a.y + b.y}; }
    friend Vec2 operator-(Vec2 a, Vec2 b) { return {a.x - b.x, a.y - b.y}; }
    friend Vec2 operator-(Vec2 a) { return {-a.x, -a.y}; }
    friend Vec2 operator*(Vec2 a, T s) { return {a.x * s, a.y * s}; }
    friend bool operator==(Vec2, Vec2) = default;
};

/// The greatest distance, in device pixels, of a chord from its curve.
constexpr double kFlatness = 0.04;
/// More chords than a curve of the widest bitmap needs; keeps hostile curves in bounds.
constexpr int kMaxChords = 2048;

/// A cubic segment; the four control points in order.
template <typename T>
struct Cubic {
    Vec2<T> p0, p1, p2, p3;
};

/// Number of equal parameter steps whose chords stay within `tolerance` of the curve: Wang's bound, from the
/// second differences of the control points (G.-Z. Wang, 1984). At least 1.
///
/// Inlined, so that a constant tolerance costs no division.
template <typename T>
[[gnu::always_inline]] inline int chordCount(const Cubic<T>& c, T tolerance) {
    // A cubic's chords over steps of 1/n deviate by at most 3/4 * (largest second difference) / n^2.
    const T perBend = T(0.75) / tolerance;
    const T ux = perBend * (c.p0.x - 2 * c.p1.x + c.p2.x), uy = perBend * (c.p0.y - 2 * c.p1.y + c.p2.y);
    const T vx = perBend * (c.p1.x - 2 * c.p2.x + c.p3.x), vy = perBend * (c.p1.y - 2 * c.p2.y + c.p3.y);
    const T fourthPower = std::max(ux * ux + uy * uy, vx * vx + vy * vy);
    const T n = std::sqrt(std::sqrt(fourthPower));
    if (!(n < T(kMaxChords))) return kMaxChords;
    const int whole = std::max(static_cast<int>(n), 1);
    const T square = static_cast<T>(whole) * static_cast<T>(whole);
    return square * square < fourthPower ? whole + 1 : whole;
}

/// Calls emit(point, t) for the end of each of `count` chords, with the curve's parameter; the last is
/// exactly p3 at 1.
///
/// The inner points lie h^2 / 12 * n / (n - 1) times the second derivative outside the curve, with h = 1 / n,
/// so that the chords have the area of the curve and not that of a figure inscribed. They stay within the
/// convex hull of the control points: as a combination of these, the point at t has the weights (1-t)^3 -
/// c(1-t), 3t(1-t)^2 + c(2-3t), 3t^2(1-t) + c(3t-1) and t^3 - ct with c = 1 / (2n(n-1)). Their sum is 1, and
/// none is negative for h <= t <= 1-h.
template <typename T, typename Emit>
void emitChords(const Cubic<T>& c, int count, Emit&& emit) {
    const Vec2<T> c1 = (c.p1 - c.p0) * T(3), c2 = (c.p2 - c.p1) * T(3) - c1, c3 = c.p3 - c.p0 - c1 - c2;
    const T step = T(1) / static_cast<T>(count);
    const T outwards = count > 1 ? step / (12 * static_cast<T>(count - 1)) : T(0);
    const Vec2<T> d0 = c.p0 - c2 * (2 * outwards), d1 = c1 - c3 * (6 * outwards);
    for (int i = 1; i < count; ++i) {
        const T t = step * static_cast<T>(i);
        emit(((c3 * t + c2) * t + d1) * t + d0, t);
    }
    emit(c.p3, T(1));
}

/// A third of the derivative at `t`.
template <typename T>
Vec2<T> derivativeAt(const Cubic<T>& c, T t) {
    const Vec2<T> a = c.p1 - c.p0, b = c.p2 - c.p1, d = c.p3 - c.p2;
    return a * ((1 - t) * (1 - t)) + b * (2 * t * (1 - t)) + d * (t * t);
}

/// The cubic that draws the quadratic p0, q, p1.
template <typename T>
Cubic<T> cubicFromQuad(Vec2<T> p0, Vec2<T> q, Vec2<T> p1) {
    const T k = T(2) / T(3);
    return {p0, p0 + (q - p0) * k, p1 + (q - p1) * k, p1};
}

/// De Casteljau at t = 1/2, safe from overflow.
template <typename T>
void halve(const Cubic<T>& c, Cubic<T>& first, Cubic<T>& second) {
    const auto middle = [](Vec2<T> a, Vec2<T> b) { return a * T(0.5) + b * T(0.5); };
    const Vec2<T> a = middle(c.p0, c.p1), b = middle(c.p1, c.p2), d = middle(c.p2, c.p3);
    const Vec2<T> ab = middle(a, b), bd = middle(b, d), m = middle(ab, bd);
    first = {c.p0, a, ab, m};
    second = {m, bd, d, c.p3};
}

} // namespace ozcg
