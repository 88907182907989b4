#include "paint/gradient_source.h"

#include "values/affine_transform.h"

#include <algorithm>
#include <cmath>

namespace ozcg {

namespace {

bool isFinitePoint(CGPoint p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// The colour at a position; beyond the ends only where the options say so.
uint32_t lookUp(const CGGradient& gradient, double position, CGGradientDrawingOptions options) {
    constexpr double kLast = kGradientTableSize - 1;
    if (!(position > 0)) {
        const bool paints = position == 0 || (options & kCGGradientDrawsBeforeStartLocation);
        return paints ? gradient.table[0] : 0;
    }
    if (position >= 1) {
        const bool paints = position == 1 || (options & kCGGradientDrawsAfterEndLocation);
        return paints ? gradient.table[kGradientTableSize - 1] : 0;
    }
    return gradient.table[static_cast<size_t>(position * kLast + 0.5)];
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
    for (size_t i = 0; i < n; ++i)
        rgba[i] = lookUp(m_gradient, first + m_positionPerX * static_cast<double>(i), m_options);
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
    source.m_toStart = *fromPixel;
    source.m_toStart.tx -= start.center.x;
    source.m_toStart.ty -= start.center.y;
    return source;
}

bool RadialGradientSource::draws(double position) const {
    if (!(m_startRadius + position * m_growth >= 0)) return false;
    if (position < 0) return m_options & kCGGradientDrawsBeforeStartLocation;
    return position <= 1 || (m_options & kCGGradientDrawsAfterEndLocation);
}

// Solves |p - s axis| = r0 + s growth for the greatest s at which the gradient is drawn.
uint32_t RadialGradientSource::colorAt(CGPoint p) const {
    const double b = p.x * m_axis.x + p.y * m_axis.y + m_startRadius * m_growth;
    const double c = p.x * p.x + p.y * p.y - m_startRadius * m_startRadius;
    if (m_inverseA == 0) {
        const double s = c / (2 * b);
        return draws(s) ? lookUp(m_gradient, s, m_options) : 0;
    }
    const double discriminant = b * b - m_a * c;
    if (!(discriminant >= 0)) return 0;
    const double root = std::sqrt(discriminant);
    const double s0 = (b + root) * m_inverseA, s1 = (b - root) * m_inverseA;
    const double greater = std::max(s0, s1), smaller = std::min(s0, s1);
    if (draws(greater)) return lookUp(m_gradient, greater, m_options);
    if (draws(smaller)) return lookUp(m_gradient, smaller, m_options);
    return 0;
}

void RadialGradientSource::fetch(int x, int y, size_t n, uint32_t* rgba) {
    const CGPoint first = CGPointApplyAffineTransform({x + 0.5, y + 0.5}, m_toStart);
    for (size_t i = 0; i < n; ++i) {
        const auto k = static_cast<double>(i);
        rgba[i] = colorAt({first.x + m_toStart.a * k, first.y + m_toStart.b * k});
    }
}

} // namespace ozcg
