#include "paint/gradient_source.h"

#include "values/affine_transform.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

namespace ozcg {

namespace {

bool isFinitePoint(CGPoint p) { return std::isfinite(p.x) && std::isfinite(p.y); }

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

// Writes the colours of a row whose positions positionAt(i) gives.
template <class PositionAt>
void writeRow(const CGGradient& gradient, PositionOrder order, CGGradientDrawingOptions options, size_t n,
              uint32_t* rgba, PositionAt&& positionAt) {
    constexpr int kBlock = 64;
    double positions[kBlock];
    const auto end = static_cast<int>(n);
    for (int done = 0; done < end; done += kBlock) {
        const int count = std::min(end - done, kBlock);
        for (int i = 0; i < count; ++i) positions[i] = positionAt(static_cast<double>(done + i));
        gradient.colorsAt(std::span(positions, static_cast<size_t>(count)), order, options, rgba + done);
    }
}

} // namespace

std::optional<LinearGradientSource> LinearGradientSource::make(const CGGradient& gradient, CGPoint start,
                                                               CGPoint end, CGGradientDrawingOptions options,
                                                               const CGAffineTransform& toPixel) {
    const std::optional<CGAffineTransform> fromPixel = inverted(toPixel);
    if (!fromPixel || !isFinitePoint(start) || !isFinitePoint(end)) return {};
    const double dx = end.x - start.x, dy = end.y - start.y, length2 = dx * dx + dy * dy;
    if (!(length2 > 0) || !std::isfinite(length2)) return {};
    const CGAffineTransform& t = *fromPixel;
    LinearGradientSource source(gradient, options);
    source.m_positionPerX = (t.a * dx + t.b * dy) / length2;
    source.m_positionPerY = (t.c * dx + t.d * dy) / length2;
    source.m_positionAtOrigin = ((t.tx - start.x) * dx + (t.ty - start.y) * dy) / length2;
    if (!std::isfinite(source.m_positionPerX) || !std::isfinite(source.m_positionPerY) ||
        !std::isfinite(source.m_positionAtOrigin))
        return {};
    return source;
}

void LinearGradientSource::fetch(int x, int y, size_t n, uint32_t* rgba) {
    const double first = m_positionAtOrigin + m_positionPerY * (y + 0.5) + m_positionPerX * (x + 0.5);
    if (m_positionPerX == 0) {
        m_gradient.colorsAt(std::span(&first, 1), PositionOrder::sorted, m_options, rgba);
        std::fill_n(rgba + 1, n - 1, *rgba);
        return;
    }
    writeRow(m_gradient, PositionOrder::sorted, m_options, n, rgba,
             [&](double i) { return first + m_positionPerX * i; });
}

std::optional<RadialGradientSource> RadialGradientSource::make(const CGGradient& gradient,
                                                               const Circle& start, const Circle& end,
                                                               CGGradientDrawingOptions options,
                                                               const CGAffineTransform& toPixel) {
    const std::optional<CGAffineTransform> fromPixel = inverted(toPixel);
    if (!fromPixel || !isFinitePoint(start.center) || !isFinitePoint(end.center)) return {};
    if (!(start.radius >= 0) || !(end.radius >= 0) || !(start.radius + end.radius > 0)) return {};
    RadialGradientSource source(gradient, options);
    source.m_axis = {end.center.x - start.center.x, end.center.y - start.center.y};
    source.m_startRadius = start.radius;
    source.m_growth = end.radius - start.radius;
    if (source.m_axis.x == 0 && source.m_axis.y == 0 && source.m_growth == 0) return {};
    const double axis2 = source.m_axis.x * source.m_axis.x + source.m_axis.y * source.m_axis.y;
    const double growth2 = source.m_growth * source.m_growth;
    source.m_a = axis2 - growth2;
    if (!std::isfinite(source.m_a)) return {};
    // If one circle touches the other from inside, the equation is linear, up to rounding.
    if (std::abs(source.m_a) > 1e-12 * (axis2 + growth2)) source.m_inverseA = 1 / source.m_a;
    if (options & kCGGradientDrawsBeforeStartLocation) source.m_least = -kInfinity;
    if (options & kCGGradientDrawsAfterEndLocation) source.m_greatest = kInfinity;
    source.m_toStart = *fromPixel;
    source.m_toStart.tx -= start.center.x;
    source.m_toStart.ty -= start.center.y;
    return source;
}

bool RadialGradientSource::draws(double position) const {
    return m_startRadius + position * m_growth >= 0 && position >= m_least && position <= m_greatest;
}

// Solves |p - s axis| = r0 + s growth for the greatest s at which the gradient is drawn.
double RadialGradientSource::positionAt(CGPoint p) const {
    const double b = p.x * m_axis.x + p.y * m_axis.y + m_startRadius * m_growth;
    const double c = p.x * p.x + p.y * p.y - m_startRadius * m_startRadius;
    if (m_inverseA == 0) {
        const double s = c / (2 * b);
        return draws(s) ? s : kNowhere;
    }
    const double discriminant = b * b - m_a * c;
    if (!(discriminant >= 0)) return kNowhere;
    const double root = std::sqrt(discriminant);
    const double s0 = (b + root) * m_inverseA, s1 = (b - root) * m_inverseA;
    const double greater = std::max(s0, s1), smaller = std::min(s0, s1);
    return draws(greater) ? greater : draws(smaller) ? smaller : kNowhere;
}

void RadialGradientSource::fetch(int x, int y, size_t n, uint32_t* rgba) {
    const CGPoint first = CGPointApplyAffineTransform({x + 0.5, y + 0.5}, m_toStart);
    writeRow(m_gradient, PositionOrder::any, m_options, n, rgba, [&](double i) {
        return positionAt({first.x + m_toStart.a * i, first.y + m_toStart.b * i});
    });
}

} // namespace ozcg
