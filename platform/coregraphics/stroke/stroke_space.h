#pragma once

#include "path/far_curve.h"
#include "stroke/stroker.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <memory>
#include <optional>
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
    std::shared_ptr<const std::vector<double>> dashes; // shared by saved states; NULL: a solid line

    std::span<const double> dashLengths() const {
        return dashes ? std::span<const double>(*dashes) : std::span<const double>();
    }
};

/// Where a stroke is worked out. The pen is a circle in user space, so a path that is already transformed
/// goes back there (up to scale) unless the transform keeps circles round.
struct StrokeSpace {
    CGAffineTransform toPen;   // from the path's space
    CGAffineTransform toPixel; // from pen space
    bool direct;               // pen space is pixel space
    double scale;              // of user lengths in pen space
    Pen pen;
    double reach; // how far, in pixels, the stroke may lie from the path

    /// For a path that `ctm` has transformed and that `toPixel` takes to pixels. None when nothing can be
    /// drawn: a singular or non-finite matrix, a width that is not positive.
    static std::optional<StrokeSpace> make(const LineStyle& style, const CGAffineTransform& ctm,
                                           const CGAffineTransform& toPixel);

    /// The same for pixels that are counted from another origin.
    StrokeSpace moved(double dx, double dy) const {
        StrokeSpace space = *this;
        if (direct) {
            space.toPen.tx += dx;
            space.toPen.ty += dy;
        } else {
            space.toPen = CGAffineTransformConcat(CGAffineTransformMakeTranslation(dx, dy), toPen);
        }
        return space;
    }
};

} // namespace ozcg
