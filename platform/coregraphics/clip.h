// What may be painted: a rectangle with fractional sides, and a mask where that does not say it all.
#pragma once

#include "coverage.h"
#include "int_rect.h"
#include "sweep.h"

#include <CoreGraphics/CGGeometry.h>

#include <memory>

namespace ozcg {

/// Coverage of the pixels of a box, row by row; 255 lets everything through.
struct ClipMask {
    explicit ClipMask(const IntRect& area)
        : box(area),
          bytes(new uint8_t[static_cast<size_t>(area.width()) * static_cast<size_t>(area.height())]) {}
    uint8_t* row(int y) { return bytes.get() + offset(y); }
    const uint8_t* row(int y) const { return bytes.get() + offset(y); }

    const IntRect box;
    const std::unique_ptr<uint8_t[]> bytes;

private:
    size_t offset(int y) const { return static_cast<size_t>(y - box.y0) * static_cast<size_t>(box.width()); }
};

/// A clip in pixels. Copies share the mask.
class Clip {
public:
    Clip() = default;
    /// Everything inside of a bitmap.
    Clip(int width, int height);

    bool empty() const { return m_outer.empty(); }
    /// The pixels that anything can be painted on.
    const IntRect& outer() const { return m_outer; }
    /// True when every pixel of `box` may be painted whole.
    bool holds(const IntRect& box) const { return !m_mask && m_inner.contains(box); }

    /// Intersects with an upright rectangle; sides that lie on pixel boundaries, give or take a rounding
    /// error, stay sharp.
    void intersect(const CGRect& rect);
    /// Intersects with a shape in the accumulator, whose box must lie within outer(), and empties the
    /// accumulator. Throws std::bad_alloc.
    void intersect(CoverageAccumulator& shape, FillRule rule, bool antialias);
    void makeEmpty() { *this = Clip(); }

    /// Multiplies the coverage of pixels x0 ..< x0 + n of row y by the clip's. They must lie within outer().
    void apply(int y, int x0, size_t n, uint8_t* coverage) const;

private:
    void setSides(double x0, double y0, double x1, double y1);

    double m_x0 = 0, m_y0 = 0, m_x1 = 0, m_y1 = 0;
    IntRect m_outer, m_inner; // pixels touched by the rectangle, and pixels wholly inside
    std::shared_ptr<const ClipMask> m_mask;
};

} // namespace ozcg
