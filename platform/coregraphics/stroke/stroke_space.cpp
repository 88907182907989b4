#include "stroke/stroke_space.h"

#include <cmath>

namespace ozcg {

namespace {

constexpr double kHalfDiagonal = 1.4142135623730951; // of a square cap over half the line width

CGAffineTransform linearPart(const CGAffineTransform& t) { return {t.a, t.b, t.c, t.d, 0, 0}; }

bool isSimilarity(const CGAffineTransform& t, double scale) {
    const double slack = 1e-6 * scale;
    const bool turned = std::abs(t.a - t.d) <= slack && std::abs(t.b + t.c) <= slack;
    const bool mirrored = std::abs(t.a + t.d) <= slack && std::abs(t.b - t.c) <= slack;
    return turned || mirrored;
}

// The greatest factor by which a linear map stretches a vector: its larger singular value.
double stretch(const CGAffineTransform& t) {
    const double sum = t.a * t.a + t.b * t.b + t.c * t.c + t.d * t.d, det = t.a * t.d - t.b * t.c;
    return std::sqrt(0.5 * (sum + std::sqrt(std::max(0.0, sum * sum - 4 * det * det))));
}

} // namespace

std::optional<StrokeSpace> StrokeSpace::make(const LineStyle& style, const CGAffineTransform& ctm,
                                             const CGAffineTransform& toPixel) {
    const CGAffineTransform linear = CGAffineTransformConcat(linearPart(ctm), linearPart(toPixel));
    const double scale = std::sqrt(std::abs(linear.a * linear.d - linear.b * linear.c));
    const double halfWidth = 0.5 * style.width * scale;
    if (!(scale > 1e-150) || !(halfWidth > 1e-30) || !(halfWidth < 1e30) || !std::isfinite(scale)) return {};

    StrokeSpace space{};
    space.scale = scale;
    space.pen.halfWidth = halfWidth;
    space.pen.miterLimit = style.miterLimit;
    space.pen.cap = style.cap;
    space.pen.join = style.join;
    space.isPixelSpace = isSimilarity(linear, scale);
    double widest = 1; // the greatest factor from pen space to pixels
    if (space.isPixelSpace) {
        space.toPen = toPixel;
        space.toPixel = CGAffineTransformIdentity;
        space.pen.xAxis = {linear.a / scale, linear.b / scale};
    } else {
        const CGAffineTransform penToPixel = {
            linear.a / scale, linear.b / scale, linear.c / scale, linear.d / scale, 0, 0};
        widest = stretch(penToPixel);
        space.toPixel = penToPixel;
        space.toPen = CGAffineTransformConcat(toPixel, CGAffineTransformInvert(penToPixel));
        if (!std::isfinite(widest) ||
            !std::isfinite(space.toPen.a + space.toPen.b + space.toPen.c + space.toPen.d))
            return {};
    }
    space.pen.tolerance = kPenFlatness / widest;
    const double miter = style.join == Join::miter ? std::max(1.0, style.miterLimit) : 1.0;
    const double cap = style.cap == Cap::square ? kHalfDiagonal : 1.0;
    space.outset = std::min(halfWidth * widest * std::max(miter, cap) + kOutlineSlack, 1e30);
    return space;
}

} // namespace ozcg
