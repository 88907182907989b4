#pragma once

#include "path/near_pieces.h"
#include "stroke/line_style.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <optional>

namespace ozcg {

/// The space in which a stroke's outline is computed. The pen is a circle in user space, so a path that has
/// been transformed is taken back there (up to scale), unless the transform keeps circles circular.
struct StrokeSpace {
    CGAffineTransform toPen;   // from the path's space
    CGAffineTransform toPixel; // from pen space
    bool isPixelSpace;         // pen space and pixel space are the same
    double scale;              // from user lengths to pen space
    Pen pen;
    double outset; // upper bound of the distance, in pixels, from the path to a point of the outline

    /// For a path that `ctm` has transformed and that `toPixel` takes to pixels. Empty if nothing can be
    /// drawn: the matrix is singular or not finite, or the width is not positive.
    static std::optional<StrokeSpace> make(const LineStyle& style, const CGAffineTransform& ctm,
                                           const CGAffineTransform& toPixel);

    /// The same for pixels with another origin.
    StrokeSpace moved(double dx, double dy) const {
        StrokeSpace space = *this;
        if (isPixelSpace) {
            space.toPen.tx += dx;
            space.toPen.ty += dy;
        } else {
            space.toPen = CGAffineTransformConcat(CGAffineTransformMakeTranslation(dx, dy), toPen);
        }
        return space;
    }
};

} // namespace ozcg
