// Images, and the memory that a bitmap context shares with the images made of it.
#pragma once

#include "base/ref.h"
#include "values/color_space.h"
#include "values/data_provider.h"

#include <CoreGraphics/CGImage.h>

#include <optional>

namespace ozcg {

/// A block of bytes that a bitmap context draws into. A snapshot of the context is an image that holds a
/// reference; whoever wants to write while the block is not unique copies it first.
class PixelStorage final : public Object {
public:
    /// Zeroed bytes, fresh from the system when there are many; NULL when memory is short.
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

/// Where the components of a pixel lie, as byte offsets; kNone: not there.
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

/// The layout of a supported format (8 bits per component; `space` NULL for alpha only), or nothing.
std::optional<PixelLayout> pixelLayout(size_t bitsPerComponent, size_t bitsPerPixel,
                                       const CGColorSpace* space, CGBitmapInfo bitmapInfo) noexcept;

} // namespace ozcg

/// What an image is, apart from its bytes.
struct CGImageFormat {
    size_t width = 0;
    size_t height = 0;
    size_t bytesPerRow = 0;
    ozcg::PixelLayout layout;
    ozcg::Ref<CGColorSpace> space; // empty for alpha-only images
    CGBitmapInfo bitmapInfo = 0;
    CGColorRenderingIntent intent = kCGRenderingIntentDefault;
    bool shouldInterpolate = false;
};

struct CGImage final : ozcg::Object {
    /// The provider must hold all rows, from its first byte on.
    CGImage(CGImageFormat imageFormat, ozcg::Ref<CGDataProvider> dataProvider) noexcept
        : Object(ozcg::TypeId::image), format(std::move(imageFormat)), provider(std::move(dataProvider)) {}

    size_t width() const noexcept { return format.width; }
    size_t height() const noexcept { return format.height; }
    const uint8_t* row(size_t y) const noexcept { return provider->bytes.data() + y * format.bytesPerRow; }

    const CGImageFormat format;
    const ozcg::Ref<CGDataProvider> provider;
};

namespace ozcg {

/// A snapshot of a context's pixels, which share the storage: `format.height` rows from its first byte on.
/// NULL when memory is short. The caller owns the result.
CGImage* createImage(const CGImageFormat& format, const Ref<PixelStorage>& storage) noexcept;

/// Pixels x0 ..< x0 + n of a row as premultiplied RGBA (bytes R, G, B, A in memory), which is what an image
/// that says so already holds. The range must lie inside.
void readRow(const CGImage& image, size_t y, size_t x0, size_t n, uint32_t* rgba) noexcept;

} // namespace ozcg
