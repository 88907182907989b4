#include "image/image.h"

#include "base/out_of_memory.h"

#include <cstdlib>

using ozcg::Ref;

namespace ozcg {

Ref<PixelStorage> PixelStorage::create(size_t size) noexcept {
    auto* const bytes = static_cast<uint8_t*>(std::calloc(size ? size : 1, 1));
    if (!bytes) return {};
    auto* const storage = new (std::nothrow) PixelStorage(bytes, size);
    if (!storage) std::free(bytes);
    return Ref<PixelStorage>::adopting(storage);
}

PixelStorage::~PixelStorage() { std::free(m_bytes); }

CGImage* createImage(const CGImageFormat& format, const Ref<PixelStorage>& storage) noexcept {
    const std::span<const uint8_t> rows(storage->bytes(), format.bytesPerRow * format.height);
    auto owner = Ref<const Object>::retaining(storage.get());
    auto provider = Ref<CGDataProvider>::adopting(ozcg::create<CGDataProvider>(std::move(owner), rows));
    return noteFailure(provider ? ozcg::create<CGImage>(format, std::move(provider)) : nullptr);
}

} // namespace ozcg

namespace {

CGImageAlphaInfo alphaInfo(CGBitmapInfo info) {
    return static_cast<CGImageAlphaInfo>(info & kCGBitmapAlphaInfoMask);
}

// Bytes that an image's rows span; nothing when there are more than can be counted.
std::optional<size_t> bytesOf(size_t width, size_t height, size_t bytesPerPixel, size_t bytesPerRow) {
    size_t rowBytes = 0, size = 0;
    if (__builtin_mul_overflow(width, bytesPerPixel, &rowBytes) ||
        __builtin_mul_overflow(height - 1, bytesPerRow, &size) ||
        __builtin_add_overflow(size, rowBytes, &size) || rowBytes > bytesPerRow)
        return {};
    return size;
}

} // namespace

CFTypeID CGImageGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::image); }

CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                         size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
                         CGDataProviderRef provider, const CGFloat* decode, bool shouldInterpolate,
                         CGColorRenderingIntent intent) {
    const auto layout = ozcg::pixelLayout(bitsPerComponent, bitsPerPixel, space, bitmapInfo);
    if (!provider) return ozcg::createdFrom<CGImage>(provider);
    if (!layout || decode || width == 0 || height == 0) return ozcg::noObject<CGImage>();
    const auto size = bytesOf(width, height, layout->bytesPerPixel, bytesPerRow);
    if (!size || *size > provider->bytes.size()) return ozcg::noObject<CGImage>();
    CGImageFormat format = {
        width,      height, bytesPerRow,      *layout, Ref<CGColorSpace>::retaining(space),
        bitmapInfo, intent, shouldInterpolate};
    return ozcg::noteFailure(
        ozcg::create<CGImage>(std::move(format), Ref<CGDataProvider>::retaining(provider)));
}

CGImageRef CGImageCreateCopy(CGImageRef image) { return ozcg::retained(image); }

CGImageRef CGImageCreateCopyWithColorSpace(CGImageRef image, CGColorSpaceRef space) {
    if (!image) return ozcg::createdFrom<CGImage>(image);
    if (!space) return ozcg::createdFrom<CGImage>(space);
    if (!image->format.space || image->format.space->components() != space->components())
        return ozcg::noObject<CGImage>();
    CGImageFormat format = image->format;
    format.space = Ref<CGColorSpace>::retaining(space);
    return ozcg::noteFailure(ozcg::create<CGImage>(std::move(format), image->provider));
}

CGImageRef CGImageCreateWithImageInRect(CGImageRef image, CGRect rect) {
    if (!image) return ozcg::createdFrom<CGImage>(image);
    const CGRect whole = {{0, 0},
                          {static_cast<CGFloat>(image->width()), static_cast<CGFloat>(image->height())}};
    const CGRect part = CGRectIntersection(CGRectIntegral(rect), whole);
    if (CGRectIsEmpty(part)) return ozcg::noObject<CGImage>();

    CGImageFormat format = image->format;
    format.width = static_cast<size_t>(part.size.width);
    format.height = static_cast<size_t>(part.size.height);
    const size_t skipped = static_cast<size_t>(part.origin.y) * format.bytesPerRow +
                           static_cast<size_t>(part.origin.x) * format.layout.bytesPerPixel;
    auto owner = Ref<const ozcg::Object>::retaining(image->provider.get());
    auto provider = Ref<CGDataProvider>::adopting(
        ozcg::create<CGDataProvider>(std::move(owner), image->provider->bytes.subspan(skipped)));
    return ozcg::noteFailure(provider ? ozcg::create<CGImage>(std::move(format), std::move(provider))
                                      : nullptr);
}

CGImageRef CGImageRetain(CGImageRef image) { return ozcg::retained(image); }

void CGImageRelease(CGImageRef image) { ozcg::released(image); }

size_t CGImageGetWidth(CGImageRef image) { return image ? image->width() : 0; }

size_t CGImageGetHeight(CGImageRef image) { return image ? image->height() : 0; }

size_t CGImageGetBitsPerComponent(CGImageRef image) { return image ? 8 : 0; }

size_t CGImageGetBitsPerPixel(CGImageRef image) {
    return image ? size_t{8} * image->format.layout.bytesPerPixel : 0;
}

size_t CGImageGetBytesPerRow(CGImageRef image) { return image ? image->format.bytesPerRow : 0; }

CGColorSpaceRef CGImageGetColorSpace(CGImageRef image) { return image ? image->format.space.get() : nullptr; }

CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image) {
    return image ? alphaInfo(image->format.bitmapInfo) : kCGImageAlphaNone;
}

CGDataProviderRef CGImageGetDataProvider(CGImageRef image) { return image ? image->provider.get() : nullptr; }

bool CGImageGetShouldInterpolate(CGImageRef image) { return image && image->format.shouldInterpolate; }

CGColorRenderingIntent CGImageGetRenderingIntent(CGImageRef image) {
    return image ? image->format.intent : kCGRenderingIntentDefault;
}

CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image) { return image ? image->format.bitmapInfo : 0; }

CGImageByteOrderInfo CGImageGetByteOrderInfo(CGImageRef image) {
    return static_cast<CGImageByteOrderInfo>(CGImageGetBitmapInfo(image) & kCGImageByteOrderMask);
}

CGImagePixelFormatInfo CGImageGetPixelFormatInfo(CGImageRef image) {
    return static_cast<CGImagePixelFormatInfo>(CGImageGetBitmapInfo(image) & kCGImagePixelFormatMask);
}
