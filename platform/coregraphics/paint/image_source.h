#pragma once

#include "paint/image_grid.h"
#include "paint/paint_source.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <optional>
#include <vector>

namespace ozcg {

/// The colours of an image under a transform: copied exactly where image pixels lie on the pixel grid,
/// interpolated linearly where the image is enlarged, and averaged over the area that a pixel covers where it
/// is reduced. The last is exact where the axes of the image are upright. Elsewhere a pixel is the mean of
/// samples spread over its area, of the image reduced along its own axes first, no further than that area
/// reaches along them.
class ImageSource final : public PaintSource {
public:
    /// `toPixel` takes the unit square, in which the image stands upright with y up, to pixels. Without
    /// `smooth` the image pixel at the centre is taken. Only the pixels of `visible` may be fetched. Empty if
    /// the matrix is singular. Throws std::bad_alloc.
    static std::optional<ImageSource> make(const CGImage& image, const CGAffineTransform& toPixel,
                                           bool smooth, const IntRect& visible);
    void fetch(int x, int y, size_t n, uint32_t* rgba) override;

private:
    /// How a pixel gets its colour.
    enum class Way { copy, nearest, upright, samples };

    explicit ImageSource(const CGImage& image) : m_image(image) {}
    void prepareSamples(const IntRect& visible);
    void makeGrid(int width, int height, double marginX, double marginY, const IntRect& visible);
    void copyRow(int x, int y, size_t n, uint32_t* rgba) const;
    uint32_t nearest(double u, double v) const;
    uint32_t average(double u, double v) const;
    uint32_t meanOfSamples(double u, double v) const;

    const CGImage& m_image;
    Way m_way = Way::copy;
    CGAffineTransform m_toGrid{};        // from pixels to cells of the grid, y down
    ImageGrid m_grid;                    // unless it copies
    double m_halfX = 0.5, m_halfY = 0.5; // of the part of the grid that is averaged
    std::vector<CGPoint> m_offsets;      // of the samples from the centre of a pixel, in cells
};

} // namespace ozcg
