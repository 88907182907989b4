// What may be painted: a rectangle with fractional sides, and a mask where that does not say it all.
#pragma once

#include "base/int_rect.h"
#include "base/object.h"
#include "base/ref.h"
#include "raster/coverage.h"
#include "raster/sweep.h"

#include <CoreGraphics/CGGeometry.h>

#include <memory>

namespace ozcg {

/// Coverage of the pixels of a box, row by row; 255 lets everything through.
class ClipMask final : public Object {
public:
    /// A mask whose pixels are not set. The thread keeps the memory of its masks for later ones. Throws
    /// std::bad_alloc.
    static Ref<ClipMask> make(const IntRect& box);

    const IntRect& box() const { return m_box; }
    uint8_t* row(int y) { return m_bytes.get() + offset(y); }
    const uint8_t* row(int y) const { return m_bytes.get() + offset(y); }

private:
    ClipMask() : Object(TypeId::clipMask) {}
    void setBox(const IntRect& box);
    size_t offset(int y) const {
        return static_cast<size_t>(y - m_box.y0) * static_cast<size_t>(m_box.width());
    }

    IntRect m_box;
    std::unique_ptr<uint8_t[]> m_bytes;
    size_t m_capacity = 0;
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
    Ref<const ClipMask> m_mask;
};

} // namespace ozcg
