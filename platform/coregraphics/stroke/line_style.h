#pragma once

#include "stroke/stroker.h"

#include <CoreGraphics/CGPath.h>

#include <memory>
#include <span>
#include <vector>

namespace ozcg {

/// The line attributes of a graphics state, in user space.
struct LineStyle {
    double width = 1;
    Cap cap = Cap::butt;
    Join join = Join::miter;
    double miterLimit = 10;
    double dashPhase = 0;
    std::shared_ptr<const std::vector<double>> dashes; // shared with saved states; NULL: a solid line

    std::span<const double> dashLengths() const {
        return dashes ? std::span<const double>(*dashes) : std::span<const double>();
    }
};

/// The cap and the join for CoreGraphics's values; unknown values count as butt caps and miter joins.
constexpr Cap capOf(CGLineCap cap) noexcept {
    return cap == kCGLineCapRound ? Cap::round : cap == kCGLineCapSquare ? Cap::square : Cap::butt;
}
constexpr Join joinOf(CGLineJoin join) noexcept {
    return join == kCGLineJoinRound ? Join::round : join == kCGLineJoinBevel ? Join::bevel : Join::miter;
}

} // namespace ozcg
