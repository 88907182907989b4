#pragma once

#include "base/int_rect.h"
#include "image/image.h"

#include <cstdint>
#include <vector>

namespace ozcg {

/// The parts of the pixels lowest ..< end that an interval covers.
struct PixelInterval {
    int first, last; // the outermost pixels that it touches
    double from, to;

    /// An interval that lies past an end covers the outermost pixel.
    PixelInterval(double center, double half, int lowest, int end);
    /// How much of pixel `i` it covers.
    double weight(int i) const;
    double length() const { return to - from; }
};

/// A weighted sum of premultiplied colours.
struct ColorSum {
    double r = 0, g = 0, b = 0, a = 0;

    void add(uint32_t rgba, double weight);
    /// The colour of the sum divided by the sum of its weights, rounded.
    uint32_t over(double weight) const;
};

/// An image laid out as a grid of `width` by `height` cells, none of them smaller than a pixel. Each holds
/// the exact mean of the area of the image that it covers: premultiplied, bytes R, G, B, A in memory.
class ImageGrid {
public:
    ImageGrid() = default;
    /// Computes the cells of `window`, which must lie within the grid; the others do not exist. Throws
    /// std::bad_alloc.
    ImageGrid(const CGImage& image, int width, int height, const IntRect& window);

    const IntRect& window() const { return m_window; }
    uint32_t cell(int x, int y) const { return row(y)[x - m_window.x0]; }

private:
    void readRows(const CGImage& image);
    void averageRows(const CGImage& image, int width, int height);
    const uint32_t* row(int y) const { return m_cells.data() + offset(y); }
    uint32_t* row(int y) { return m_cells.data() + offset(y); }
    size_t offset(int y) const {
        return static_cast<size_t>(y - m_window.y0) * static_cast<size_t>(m_window.width());
    }

    IntRect m_window;
    std::vector<uint32_t> m_cells;
};

} // namespace ozcg
