#pragma once

#include "image/image.h"
#include "paint/paint_source.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <optional>
#include <vector>

namespace ozcg {

/// The colours of an image under a transform: each pixel is the average of the part of the image below it,
/// which is at least one image pixel wide and high. That copies exactly where pixels line up, interpolates
/// linearly where the image is enlarged, and averages areas where it is reduced.
class ImageSource final : public PaintSource {
public:
    /// `toPixel` takes the unit square, with the image upright in it and y up, to pixels. `smooth` false
    /// takes the image pixel below the centre instead. None for a singular matrix. Throws std::bad_alloc.
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
    bool m_copies = false;          // image pixels lie exactly below pixels
    std::vector<uint32_t> m_pixels; // of the whole image, unless it copies
};

} // namespace ozcg
