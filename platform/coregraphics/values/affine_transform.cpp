#include "values/affine_transform.h"

#include <algorithm>
#include <cmath>

const CGAffineTransform CGAffineTransformIdentity = {1, 0, 0, 1, 0, 0};

CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty) { return {1, 0, 0, 1, tx, ty}; }

CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy) { return {sx, 0, 0, sy, 0, 0}; }

CGAffineTransform CGAffineTransformMakeRotation(CGFloat angle) {
    const CGFloat sine = std::sin(angle), cosine = std::cos(angle);
    return {cosine, sine, -sine, cosine, 0, 0};
}

bool CGAffineTransformIsIdentity(CGAffineTransform t) {
    return CGAffineTransformEqualToTransform(t, CGAffineTransformIdentity);
}

CGAffineTransform CGAffineTransformTranslate(CGAffineTransform t, CGFloat tx, CGFloat ty) {
    const CGPoint origin = CGPointApplyAffineTransform({tx, ty}, t);
    return {t.a, t.b, t.c, t.d, origin.x, origin.y};
}

CGAffineTransform CGAffineTransformScale(CGAffineTransform t, CGFloat sx, CGFloat sy) {
    return {t.a * sx, t.b * sx, t.c * sy, t.d * sy, t.tx, t.ty};
}

CGAffineTransform CGAffineTransformRotate(CGAffineTransform t, CGFloat angle) {
    return CGAffineTransformConcat(CGAffineTransformMakeRotation(angle), t);
}

std::optional<CGAffineTransform> ozcg::inverted(const CGAffineTransform& t) noexcept {
    const double largest = std::max({std::abs(t.a), std::abs(t.b), std::abs(t.c), std::abs(t.d)});
    if (!(largest > 0) || !std::isfinite(largest)) return {};
    // The determinant of the unscaled matrix might overflow or underflow. A power of two leaves all digits.
    const double scale = std::ldexp(1.0, std::clamp(-std::ilogb(largest), -1000, 1000));
    const double a = t.a * scale, b = t.b * scale, c = t.c * scale, d = t.d * scale;
    const double determinant = a * d - b * c;
    if (determinant == 0) return {};
    const CGAffineTransform inverse = {d / determinant * scale,
                                       -b / determinant * scale,
                                       -c / determinant * scale,
                                       a / determinant * scale,
                                       (c * t.ty - d * t.tx) / determinant * scale,
                                       (b * t.tx - a * t.ty) / determinant * scale};
    const double sum =
        inverse.a + inverse.b + inverse.c + inverse.d + std::abs(inverse.tx) + std::abs(inverse.ty);
    if (!std::isfinite(sum)) return {};
    return inverse;
}

CGAffineTransform CGAffineTransformInvert(CGAffineTransform t) { return ozcg::inverted(t).value_or(t); }

CGAffineTransform CGAffineTransformConcat(CGAffineTransform t1, CGAffineTransform t2) {
    return {t1.a * t2.a + t1.b * t2.c,           t1.a * t2.b + t1.b * t2.d,
            t1.c * t2.a + t1.d * t2.c,           t1.c * t2.b + t1.d * t2.d,
            t1.tx * t2.a + t1.ty * t2.c + t2.tx, t1.tx * t2.b + t1.ty * t2.d + t2.ty};
}

bool CGAffineTransformEqualToTransform(CGAffineTransform t1, CGAffineTransform t2) {
    return t1.a == t2.a && t1.b == t2.b && t1.c == t2.c && t1.d == t2.d && t1.tx == t2.tx && t1.ty == t2.ty;
}

CGRect CGRectApplyAffineTransform(CGRect rect, CGAffineTransform t) {
    if (CGRectIsNull(rect) || CGRectIsInfinite(rect)) return rect;
    const CGFloat x0 = CGRectGetMinX(rect), y0 = CGRectGetMinY(rect);
    const CGFloat x1 = CGRectGetMaxX(rect), y1 = CGRectGetMaxY(rect);
    const CGPoint a = CGPointApplyAffineTransform({x0, y0}, t), b = CGPointApplyAffineTransform({x1, y0}, t);
    const CGPoint c = CGPointApplyAffineTransform({x1, y1}, t), d = CGPointApplyAffineTransform({x0, y1}, t);
    const auto [left, right] = std::minmax({a.x, b.x, c.x, d.x});
    const auto [bottom, top] = std::minmax({a.y, b.y, c.y, d.y});
    return {{left, bottom}, {right - left, top - bottom}};
}
