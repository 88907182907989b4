#include "geometry/cubic_offset.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {

namespace {

/// Halvings of a curve at most.
constexpr int kMaxDepth = 8;
constexpr int kSamples = 7;

double PolygonLength(const Point (&c)[4]) {
    return Distance(c[0], c[1]) + Distance(c[1], c[2]) + Distance(c[2], c[3]);
}

/// The direction from `from` to the first of the other points that is far enough away to have one.
Point DirectionFrom(Point from, Point first, Point second, Point third, double length) {
    const double tooShort = 1e-6 * length;
    for (const Point p : {first, second, third}) {
        if (Distance(from, p) > tooShort) return Direction(p - from);
    }
    return {};
}

/// A third of the derivative.
Point SlopeAt(const Point (&c)[4], double t) {
    const double u = 1 - t;
    return (c[1] - c[0]) * (u * u) + (c[2] - c[1]) * (2 * u * t) + (c[3] - c[2]) * (t * t);
}

Point DirectionAt(const Point (&c)[4], double t) { return Direction(SlopeAt(c, t)); }

/// Fits a cubic curve between known ends and end directions.
struct Fit {
    Point start, end, startDirection, endDirection;
    Point samples[kSamples]; ///< At equal steps of the parameter, without the ends.
    Point normals[kSamples]; ///< Of the true curve.

    static double Parameter(int i) { return static_cast<double>(i + 1) / (kSamples + 1); }

    /// Chooses the lengths of the two handles by least squares.
    void Solve(Point (&curve)[4]) const {
        double aa = 0, ab = 0, bb = 0, ar = 0, br = 0;
        for (int i = 0; i < kSamples; ++i) {
            const double t = Parameter(i), u = 1 - t;
            const double b1 = 3 * u * u * t, b2 = 3 * u * t * t;
            const Point a = startDirection * b1, b = -endDirection * b2;
            const Point rest = samples[i] - start * (u * u * u + b1) - end * (b2 + t * t * t);
            aa += Dot(a, a), ab += Dot(a, b), bb += Dot(b, b), ar += Dot(a, rest), br += Dot(b, rest);
        }
        const double determinant = aa * bb - ab * ab;
        double first = Distance(start, end) / 3, second = first;
        if (std::abs(determinant) > 1e-9 * aa * bb) {
            first = (ar * bb - br * ab) / determinant;
            second = (br * aa - ar * ab) / determinant;
        }
        curve[0] = start;
        curve[1] = start + startDirection * first;
        curve[2] = end - endDirection * second;
        curve[3] = end;
    }

    bool IsWithin(const Point (&curve)[4], double tolerance) const {
        for (int i = 0; i < kSamples; ++i) {
            const Point off = CubicAt(curve, Parameter(i)) - samples[i];
            const double across = Dot(off, normals[i]), along = Cross(off, normals[i]);
            // Along the curve a shift matters only by how far the curve bends meanwhile.
            if (!(std::abs(across) <= tolerance) || !(std::abs(along) <= 16 * tolerance)) return false;
        }
        return true;
    }
};

void Append(const Point (&curve)[4], Point startDirection, Point endDirection, double distance,
            double tolerance, int depth, Path& path) {
    Fit fit{path.Pen(), curve[3] + LeftOf(endDirection) * distance, startDirection, endDirection, {}, {}};
    for (int i = 0; i < kSamples; ++i) {
        const double t = Fit::Parameter(i);
        fit.normals[i] = LeftOf(DirectionAt(curve, t));
        fit.samples[i] = CubicAt(curve, t) + fit.normals[i] * distance;
    }
    Point offset[4];
    fit.Solve(offset);
    if (depth == kMaxDepth || fit.IsWithin(offset, tolerance)) {
        path.CubicTo(offset[1], offset[2], offset[3]);
        return;
    }
    Point halves[7];
    SplitCubic(curve, 0.5, halves);
    const Point middle = DirectionAt(curve, 0.5);
    Append({halves[0], halves[1], halves[2], halves[3]}, startDirection, middle, distance, tolerance,
           depth + 1, path);
    Append({halves[3], halves[4], halves[5], halves[6]}, middle, endDirection, distance, tolerance, depth + 1,
           path);
}

/// Where the offset of a curve bends back on itself, because the curve is bent more tightly than the distance
/// allows.
class TightParts {
public:
    TightParts(const Point (&curve)[4], double distance) : m_curve(curve), m_distance(distance) {
        constexpr int kSteps = 24;
        bool isTight = IsTight(0);
        m_startsTight = isTight;
        for (int i = 0; i < kSteps; ++i) {
            const double from = static_cast<double>(i) / kSteps, to = static_cast<double>(i + 1) / kSteps;
            if (IsTight(to) == isTight) continue;
            m_bounds[m_count++] = Bound(from, to, isTight);
            isTight = !isTight;
            if (m_count == std::size(m_bounds) - 1) break;
        }
        m_bounds[m_count++] = 1;
    }

    /// Calls `visit(from, to, isTight)` for each part in order.
    template <typename Visit>
    void ForEach(Visit visit) const {
        double from = 0;
        bool isTight = m_startsTight;
        for (size_t i = 0; i < m_count; ++i) {
            if (m_bounds[i] > from) visit(from, m_bounds[i], isTight);
            from = m_bounds[i];
            isTight = !isTight;
        }
    }

private:
    /// True where the offset runs against the curve.
    bool IsTight(double t) const {
        const Point(&c)[4] = m_curve;
        const Point first = SlopeAt(c, t) * 3;
        const Point second = (c[2] - c[1] * 2 + c[0]) * (6 * (1 - t)) + (c[3] - c[2] * 2 + c[1]) * (6 * t);
        const double speed = Length(first);
        return speed * speed * speed + m_distance * Cross(first, second) < 0;
    }

    double Bound(double from, double to, bool isTight) const {
        for (int i = 0; i < 20; ++i) {
            const double middle = (from + to) / 2;
            (IsTight(middle) == isTight ? from : to) = middle;
        }
        return (from + to) / 2;
    }

    const Point (&m_curve)[4];
    const double m_distance;
    bool m_startsTight = false;
    double m_bounds[12];
    size_t m_count = 0;
};

/// Appends the offset of a tight part as that of short lines, going through the curve between them, so that
/// each line's half of the stroke is wound like the rest.
void AppendTight(const Point (&curve)[4], Point startDirection, Point endDirection, double distance,
                 Path& path) {
    constexpr double kAngle = 0.25;
    double turn = 0;
    Point last = startDirection;
    for (int i = 1; i <= 8; ++i) {
        const Point direction = i < 8 ? DirectionAt(curve, i / 8.0) : endDirection;
        turn += std::abs(std::atan2(Cross(last, direction), Dot(last, direction)));
        last = direction;
    }
    const int count = std::clamp(static_cast<int>(std::ceil(turn / kAngle)), 1, 32);
    Point from = curve[0];
    for (int i = 1; i <= count; ++i) {
        const Point to = CubicAt(curve, static_cast<double>(i) / count);
        const Point side = LeftOf(Direction(to - from)) * distance;
        path.LineTo(from);
        path.LineTo(from + side);
        path.LineTo(to + side);
        path.LineTo(to);
        from = to;
    }
    path.LineTo(curve[3] + LeftOf(endDirection) * distance);
}

} // namespace

Point StartDirection(const Point (&c)[4]) { return DirectionFrom(c[0], c[1], c[2], c[3], PolygonLength(c)); }

Point EndDirection(const Point (&c)[4]) { return -DirectionFrom(c[3], c[2], c[1], c[0], PolygonLength(c)); }

int FindCusps(const Point (&curve)[4], double (&parameters)[2]) {
    constexpr int kSteps = 17;
    constexpr double kNearEnd = 1e-6;
    const double tooSlow = 1e-4 * PolygonLength(curve);
    int count = 0;
    for (int i = 0; i < kSteps && count < 2; ++i) {
        double from = static_cast<double>(i) / kSteps, to = static_cast<double>(i + 1) / kSteps;
        if (Dot(SlopeAt(curve, from), SlopeAt(curve, to)) > 0) continue;
        // The place where the curve is slowest lies where it turns.
        for (int k = 0; k < 60; ++k) {
            const double a = from + (to - from) / 3, b = to - (to - from) / 3;
            if (Length(SlopeAt(curve, a)) < Length(SlopeAt(curve, b))) {
                to = b;
            } else {
                from = a;
            }
        }
        const double t = (from + to) / 2;
        const double last = count > 0 ? parameters[count - 1] : 0;
        if (t < last + kNearEnd || t > 1 - kNearEnd || Length(SlopeAt(curve, t)) > tooSlow) continue;
        parameters[count++] = t;
    }
    return count;
}

bool IsTight(const Point (&curve)[4], double distance) {
    // A curve in place of an arc is bent up to 2.2 % less.
    constexpr double kSlack = 1.03;
    bool isWholly = true;
    TightParts(curve, distance * kSlack).ForEach([&](double, double, bool isTight) {
        isWholly = isWholly && isTight;
    });
    return isWholly;
}

void AppendOffset(const Point (&curve)[4], double distance, double tolerance, Path& path) {
    TightParts(curve, distance).ForEach([&](double from, double to, bool isTight) {
        Point part[4];
        CutCubic(curve, from, to, part);
        const Point start = from > 0 ? DirectionAt(curve, from) : StartDirection(curve);
        const Point end = to < 1 ? DirectionAt(curve, to) : EndDirection(curve);
        if (isTight) {
            AppendTight(part, start, end, distance, path);
        } else {
            Append(part, start, end, distance, tolerance, 0, path);
        }
    });
}

} // namespace ozm::conform
