// The clip: a rectangle with fractional sides and, where that is not enough, a mask.
#pragma once

#include "base/int_rect.h"
#include "base/object.h"
#include "base/ref.h"
#include "raster/coverage.h"
#include "raster/sweep.h"

#include <CoreGraphics/CGGeometry.h>

#include <memory>

namespace ozcg {

/// The clip's coverage of the pixels of a box, row by row; 255 is fully inside.
class ClipMask final : public Object {
public:
    /// A mask with uninitialised pixels, if possible in memory that the thread has kept. Throws
    /// std::bad_alloc.
    static Ref<ClipMask> make(const IntRect& box);
    /// Frees the masks that the calling thread keeps and that no clip holds.
    static void releaseKept() noexcept;

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
    /// A whole bitmap.
    Clip(int width, int height);

    bool empty() const { return m_outer.empty(); }
    /// The smallest box of pixels that holds everything inside the clip.
    const IntRect& outer() const { return m_outer; }
    /// True when every pixel of `box` lies wholly inside the clip.
    bool containsWhole(const IntRect& box) const { return !m_mask && m_inner.contains(box); }

    /// Intersects with an upright rectangle. Sides within rounding errors of a pixel boundary are moved onto
    /// it; without antialiasing, sides move such that the pixels inside are those whose centres are.
    void intersect(const CGRect& rect, bool antialias);
    /// Writes the rows of a shape in the accumulator to a mask, multiplied by the present one, and empties
    /// the accumulator. Its box must lie within outer() and the mask's. Throws std::bad_alloc and
    /// Interrupted.
    void writeRows(ClipMask& mask, CoverageAccumulator& shape, FillRule rule) const;
    /// Intersects with the box of a mask that writeRows() has filled, and takes the mask.
    void replaceMask(Ref<const ClipMask> mask);
    void makeEmpty() { *this = Clip(); }

    /// Multiplies the coverage of pixels x0 ..< x0 + n of row y by the clip's. They must lie within outer().
    void apply(int y, int x0, size_t n, uint8_t* coverage) const;

private:
    void setSides(double x0, double y0, double x1, double y1);

    double m_x0 = 0, m_y0 = 0, m_x1 = 0, m_y1 = 0;
    IntRect m_outer, m_inner; // the pixels that the rectangle touches; those wholly inside
    Ref<const ClipMask> m_mask;
};

} // namespace ozcg
