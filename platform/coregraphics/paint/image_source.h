#pragma once

#include "image/image.h"
#include "paint/paint_source.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <optional>
#include <vector>

namespace ozcg {

/// The colours of an image under a transform. Each pixel is the average of the area of the image that it
/// covers, taken to be at least one image pixel wide and high. This copies exactly where the pixels align,
/// interpolates linearly where the image is enlarged, and averages areas where it is reduced.
class ImageSource final : public PaintSource {
public:
    /// `toPixel` takes the unit square, in which the image stands upright with y up, to pixels. Without
    /// `smooth` the image pixel at the centre is taken. Empty if the matrix is singular. Throws
    /// std::bad_alloc.
    static std::optional<ImageSource> make(const CGImage& image, const CGAffineTransform& toPixel,
                                           bool smooth);
    void fetch(int x, int y, size_t n, uint32_t* rgba) override;

private:
    explicit ImageSource(const CGImage& image) : m_image(image) {}
    uint32_t average(double u, double v) const;
    uint32_t nearest(double u, double v) const;
    uint32_t pixel(int x, int y) const {
        return m_pixels[static_cast<size_t>(y) * m_image.width() + static_cast<size_t>(x)];
    }
    void copyRow(int x, int y, size_t n, uint32_t* rgba) const;

    const CGImage& m_image;
    CGAffineTransform m_toImage{};       // from pixels to image pixels, y down
    double m_halfU = 0.5, m_halfV = 0.5; // of the part that is averaged
    bool m_smooth = true;
    bool m_copies = false;          // the image pixels lie on the pixel grid
    std::vector<uint32_t> m_pixels; // of the whole image, unless it copies
};

} // namespace ozcg
