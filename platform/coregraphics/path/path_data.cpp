#include "path/path_data.h"

#include "path/segments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace ozcg {

namespace {

constexpr double kPi = std::numbers::pi;
/// Distance of the control points of a quarter circle of radius 1 from its ends: 4/3 (sqrt 2 - 1).
constexpr double kQuarterArc = 0.55228474983079339840;

/// Farther away than any pixel, in pixels.
constexpr double kFar = 1e300;

constexpr Verb kRectVerbs[] = {Verb::move, Verb::line, Verb::line, Verb::line, Verb::close};
constexpr Verb kEllipseVerbs[] = {Verb::move,  Verb::cubic, Verb::cubic,
                                  Verb::cubic, Verb::cubic, Verb::close};
constexpr Verb kRoundedRectVerbs[] = {Verb::move, Verb::line,  Verb::cubic, Verb::line,  Verb::cubic,
                                      Verb::line, Verb::cubic, Verb::line,  Verb::cubic, Verb::close};

double clampedRadius(double radius, double side) { return radius > 0 ? std::min(radius, 0.5 * side) : 0; }

} // namespace

// False if a point is not finite after the transform.
bool PathData::addClosed(std::span<const Verb> verbs, std::span<const CGPoint> points,
                         const CGAffineTransform& m) {
    m_verbs.reserveMore(verbs.size());
    const size_t first = m_points.size();
    if (!appendPoints(points, m)) return false;
    std::copy(verbs.begin(), verbs.end(), m_verbs.extend(verbs.size()));
    m_start = m_points.values()[first];
    return true;
}

// Adds all of the points or, when one of them is not finite after the transform, none.
bool PathData::appendPoints(std::span<const CGPoint> points, const CGAffineTransform& m) {
    const size_t oldSize = m_points.size();
    CGPoint* to = m_points.extend(points.size());
    double sum = 0;
    for (const CGPoint p : points) {
        *to = CGPointApplyAffineTransform(p, m);
        sum += (to->x - to->x) + (to->y - to->y);
        ++to;
    }
    if (sum == 0) return true;
    m_points.truncate(oldSize);
    return false;
}

void PathData::addRect(const CGRect& rect, const CGAffineTransform& m) {
    const double x0 = CGRectGetMinX(rect), x1 = CGRectGetMaxX(rect);
    const double y0 = CGRectGetMinY(rect), y1 = CGRectGetMaxY(rect);
    const CGPoint corners[] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
    if (addClosed(kRectVerbs, corners, m) || !isFinite(corners[0], corners[2])) return;
    // The matrix takes a side beyond all numbers, as it can do with CGRectInfinite. The side may as well lie
    // nearer, far outside every bitmap.
    const double scale = std::max({1.0, std::abs(m.a), std::abs(m.b), std::abs(m.c), std::abs(m.d)});
    const auto nearer = [&](double side) { return std::clamp(side, -kFar / scale, kFar / scale); };
    const double left = nearer(x0), right = nearer(x1), bottom = nearer(y0), top = nearer(y1);
    const CGPoint near[] = {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
    addClosed(kRectVerbs, near, m);
}

void PathData::addEllipse(const CGRect& rect, const CGAffineTransform& m) {
    const double x0 = CGRectGetMinX(rect), x = CGRectGetMidX(rect), x1 = CGRectGetMaxX(rect);
    const double y0 = CGRectGetMinY(rect), y = CGRectGetMidY(rect), y1 = CGRectGetMaxY(rect);
    const double kx = kQuarterArc * 0.5 * CGRectGetWidth(rect),
                 ky = kQuarterArc * 0.5 * CGRectGetHeight(rect);
    const CGPoint points[] = {{x1, y},                             //
                              {x1, y + ky}, {x + kx, y1}, {x, y1}, //
                              {x - kx, y1}, {x0, y + ky}, {x0, y}, //
                              {x0, y - ky}, {x - kx, y0}, {x, y0}, //
                              {x + kx, y0}, {x1, y - ky}, {x1, y}};
    addClosed(kEllipseVerbs, points, m);
}

void PathData::addRoundedRect(const CGRect& rect, double cornerWidth, double cornerHeight,
                              const CGAffineTransform& m) {
    const double rx = clampedRadius(cornerWidth, CGRectGetWidth(rect));
    const double ry = clampedRadius(cornerHeight, CGRectGetHeight(rect));
    if (rx == 0 || ry == 0) return addRect(rect, m);
    const double x0 = CGRectGetMinX(rect), x1 = CGRectGetMaxX(rect);
    const double y0 = CGRectGetMinY(rect), y1 = CGRectGetMaxY(rect);
    const double kx = rx - kQuarterArc * rx, ky = ry - kQuarterArc * ry; // from the corner
    const CGPoint points[] = {{x0 + rx, y0}, {x1 - rx, y0}, {x1 - kx, y0}, {x1, y0 + ky}, {x1, y0 + ry},
                              {x1, y1 - ry}, {x1, y1 - ky}, {x1 - kx, y1}, {x1 - rx, y1}, {x0 + rx, y1},
                              {x0 + kx, y1}, {x0, y1 - ky}, {x0, y1 - ry}, {x0, y0 + ry}, {x0, y0 + ky},
                              {x0 + kx, y0}, {x0 + rx, y0}};
    addClosed(kRoundedRectVerbs, points, m);
}

void PathData::addArc(CGPoint center, double radius, double startAngle, double sweep,
                      const CGAffineTransform& m) {
    if (!isFinite(center, CGPoint{radius, 0}, CGPoint{startAngle, sweep}) || radius < 0) return;
    const auto at = [&](double cosine, double sine) {
        return CGPointApplyAffineTransform({center.x + radius * cosine, center.y + radius * sine}, m);
    };
    double cosine = std::cos(startAngle), sine = std::sin(startAngle);
    if (hasCurrentPoint())
        lineTo(at(cosine, sine));
    else
        moveTo(at(cosine, sine));
    if (sweep == 0) return;

    // More turns than that are drawn as one turn and the remainder.
    constexpr double kTurn = 2 * kPi;
    if (std::abs(sweep) > 2 * kTurn) sweep = std::fmod(sweep, kTurn) + std::copysign(kTurn, sweep);
    // Each cubic spans at most a quarter turn. A full circle is four quarters, however its sweep was rounded.
    constexpr double kSlack = 1e-9;
    const double pieces = std::max(1.0, std::ceil(std::abs(sweep) / (kPi / 2) - kSlack));
    const double step = sweep / pieces;
    const double k = 4.0 / 3.0 * std::tan(step / 4);
    for (int i = 1; i <= static_cast<int>(pieces); ++i) {
        const double angle = startAngle + step * i;
        const double toCosine = std::cos(angle), toSine = std::sin(angle);
        cubicTo(at(cosine - k * sine, sine + k * cosine), at(toCosine + k * toSine, toSine - k * toCosine),
                at(toCosine, toSine));
        cosine = toCosine;
        sine = toSine;
    }
}

void PathData::addArcToPoint(CGPoint corner, CGPoint towards, double radius, const CGAffineTransform& m) {
    if (!hasCurrentPoint() || !isFinite(corner, towards, CGPoint{radius, 0})) return;
    const CGPoint from = CGPointApplyAffineTransform(currentPoint(), CGAffineTransformInvert(m));
    const double length1 = std::hypot(from.x - corner.x, from.y - corner.y);
    const double length2 = std::hypot(towards.x - corner.x, towards.y - corner.y);
    if (!(radius > 0 && length1 > 0 && length2 > 0)) return lineTo(CGPointApplyAffineTransform(corner, m));
    // Unit vectors from the corner along both lines.
    const CGPoint u = {(from.x - corner.x) / length1, (from.y - corner.y) / length1};
    const CGPoint v = {(towards.x - corner.x) / length2, (towards.y - corner.y) / length2};
    const double cross = u.x * v.y - u.y * v.x, dot = u.x * v.x + u.y * v.y;
    if (!(std::abs(cross) > 1e-12)) return lineTo(CGPointApplyAffineTransform(corner, m));

    const double turn = cross > 0 ? 1 : -1; // from u to v; the arc turns the other way
    const double distance = radius * (1 + dot) / std::abs(cross);
    const CGPoint inwards = {-u.y * turn, u.x * turn};
    const CGPoint center = {corner.x + u.x * distance + inwards.x * radius,
                            corner.y + u.y * distance + inwards.y * radius};
    const double angle = std::atan2(std::abs(cross), dot);
    addArc(center, radius, std::atan2(-inwards.y, -inwards.x), turn * (angle - kPi), m);
}

void PathData::append(const PathData& other, const CGAffineTransform& m) {
    if (other.isIncomplete()) markIncomplete();
    const size_t verbs = other.m_verbs.size(), points = other.m_points.size();
    if (verbs == 0) return;
    // Make room first: the other path may be this one.
    m_verbs.reserveMore(verbs);
    m_points.reserveMore(points);
    const CGPoint start = other.m_start;
    if (!appendPoints(other.points().first(points), m)) return appendOneByOne(other, m);
    std::copy_n(other.verbs().begin(), verbs, m_verbs.extend(verbs));
    m_start = CGPointApplyAffineTransform(start, m);
}

// For a transform whose result is not finite at some of the points.
void PathData::appendOneByOne(const PathData& other, const CGAffineTransform& m) {
    // The other path may be this one.
    const PathData source = other; // NOLINT(performance-unnecessary-copy-initialization)
    forEachElement(source, [&](Verb verb, const CGPoint* p) {
        const auto at = [&](size_t i) { return CGPointApplyAffineTransform(p[i], m); };
        switch (verb) {
        case Verb::move: moveTo(at(0)); break;
        case Verb::line: lineTo(at(0)); break;
        case Verb::quad: quadTo(at(0), at(1)); break;
        case Verb::cubic: cubicTo(at(0), at(1), at(2)); break;
        case Verb::close: close(); break;
        }
    });
}

bool PathData::operator==(const PathData& other) const noexcept {
    const auto equal = [](auto a, auto b, auto same) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
    };
    return equal(verbs(), other.verbs(), std::equal_to<>()) &&
           equal(points(), other.points(), CGPointEqualToPoint);
}

double arcSweep(double startAngle, double endAngle, bool clockwise) noexcept {
    constexpr double kTurn = 2 * kPi;
    const double sweep = endAngle - startAngle;
    if (std::abs(sweep) >= kTurn) return clockwise ? -kTurn : kTurn;
    if (clockwise) return sweep > 0 ? sweep - kTurn : sweep;
    return sweep < 0 ? sweep + kTurn : sweep;
}

} // namespace ozcg
