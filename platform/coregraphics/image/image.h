// Images, and the memory that a bitmap context shares with the images made of it.
#pragma once

#include "base/ref.h"
#include "values/color_space.h"
#include "values/data_provider.h"

#include <CoreGraphics/CGImage.h>

#include <optional>

namespace ozcg {

/// A block of bytes that a bitmap context draws into. An image of the context holds a reference to it. A
/// writer that does not hold the only reference copies the block first.
class PixelStorage final : public Object {
public:
    /// A block of zeros; NULL when memory is short.
    static Ref<PixelStorage> create(size_t size) noexcept;
    ~PixelStorage() override;

    uint8_t* bytes() noexcept { return m_bytes; }
    const uint8_t* bytes() const noexcept { return m_bytes; }
    size_t size() const noexcept { return m_size; }

private:
    PixelStorage(uint8_t* bytes, size_t size) noexcept
        : Object(TypeId::pixelStorage), m_bytes(bytes), m_size(size) {}

    uint8_t* m_bytes;
    size_t m_size;
};

/// The byte offsets of a pixel's components; kNone: absent.
struct PixelLayout {
    static constexpr uint8_t kNone = 0xFF;

    uint8_t bytesPerPixel = 4;
    uint8_t r = kNone; // in gray layouts r, g and b are the same byte
    uint8_t g = kNone;
    uint8_t b = kNone;
    uint8_t a = kNone;
    bool premultiplied = false;

    bool operator==(const PixelLayout&) const = default;
};

/// The layout of a supported format (8 bits per component; `space` is NULL for alpha only), else nothing.
std::optional<PixelLayout> pixelLayout(size_t bitsPerComponent, size_t bitsPerPixel,
                                       const CGColorSpace* space, CGBitmapInfo bitmapInfo) noexcept;

} // namespace ozcg

/// The description of an image without its bytes.
struct CGImageFormat {
    size_t width = 0;
    size_t height = 0;
    size_t bytesPerRow = 0;
    ozcg::PixelLayout layout;
    ozcg::Ref<CGColorSpace> space; // empty for alpha-only images
    CGBitmapInfo bitmapInfo = 0;
    CGColorRenderingIntent intent = kCGRenderingIntentDefault;
    bool shouldInterpolate = true;
};

/// An immutable image: a format and a provider of bytes.
struct CGImage final : ozcg::Object {
    /// The provider must hold all rows, beginning at its first byte.
    CGImage(CGImageFormat imageFormat, ozcg::Ref<CGDataProvider> dataProvider) noexcept
        : Object(ozcg::TypeId::image), format(std::move(imageFormat)), provider(std::move(dataProvider)) {}

    size_t width() const noexcept { return format.width; }
    size_t height() const noexcept { return format.height; }
    const uint8_t* row(size_t y) const noexcept { return provider->bytes.data() + y * format.bytesPerRow; }

    const CGImageFormat format;
    const ozcg::Ref<CGDataProvider> provider;
};

namespace ozcg {

/// A snapshot of a context's pixels that shares their storage: `format.height` rows, beginning at its first
/// byte. NULL when memory is short. The caller owns the result.
CGImage* createImage(const CGImageFormat& format, const Ref<PixelStorage>& storage) noexcept;

/// Reads pixels x0 ..< x0 + n of a row as premultiplied RGBA (bytes R, G, B, A in memory). The range must lie
/// inside the image.
void readRow(const CGImage& image, size_t y, size_t x0, size_t n, uint32_t* rgba) noexcept;

} // namespace ozcg
