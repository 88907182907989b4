#include "base/out_of_memory.h"
#include "context/context.h"

#include <optional>

using namespace ozcg;

namespace {

// The greatest width and height: floats hold coordinates up to it to within 1/256.
constexpr size_t kMaxSide = 65535;
// The largest bitmap: 2^30 pixels, 4 GB.
constexpr size_t kMaxPixels = size_t{1} << 30;
constexpr size_t kRowAlignment = 16; // where the context chooses the length of rows

std::optional<PixelOrder> orderOf(CGBitmapInfo info) {
    const bool little = (info & kCGBitmapByteOrderMask) == kCGBitmapByteOrder32Little;
    switch (info & ~uint32_t{kCGBitmapByteOrderMask}) {
    case kCGImageAlphaNoneSkipFirst:
    case kCGImageAlphaPremultipliedFirst: return little ? PixelOrder::bgra : PixelOrder::argb;
    case kCGImageAlphaNoneSkipLast:
    case kCGImageAlphaPremultipliedLast: return little ? std::optional<PixelOrder>() : PixelOrder::rgba;
    default: return {};
    }
}

bool isKnownByteOrder(CGBitmapInfo info) {
    const uint32_t order = info & kCGBitmapByteOrderMask;
    return order == kCGBitmapByteOrderDefault || order == kCGBitmapByteOrder32Little ||
           order == kCGBitmapByteOrder32Big;
}

bool isOpaque(CGBitmapInfo info) {
    const CGBitmapInfo alpha = info & kCGBitmapAlphaInfoMask;
    return alpha == kCGImageAlphaNoneSkipFirst || alpha == kCGImageAlphaNoneSkipLast;
}

std::optional<BitmapFormat> formatOf(size_t width, size_t height, size_t bitsPerComponent, size_t bytesPerRow,
                                     bool mayChooseRow, CGColorSpaceRef space, CGBitmapInfo info) {
    if (width == 0 || height == 0 || width > kMaxSide || height > kMaxSide || width * height > kMaxPixels)
        return {};
    if (bitsPerComponent != 8 || !space || space->components() != 3 || !isKnownByteOrder(info)) return {};
    const std::optional<PixelOrder> order = orderOf(info);
    if (!order) return {};
    if (bytesPerRow == 0 && mayChooseRow)
        bytesPerRow = (4 * width + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
    if (bytesPerRow < 4 * width || bytesPerRow > SIZE_MAX / height) return {};
    return BitmapFormat{width, height, bytesPerRow, info, *order, isOpaque(info)};
}

size_t sizeOf(const BitmapFormat& format) { return format.bytesPerRow * format.height; }

} // namespace

CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo) {
    return CGBitmapContextCreateWithData(data, width, height, bitsPerComponent, bytesPerRow, space,
                                         bitmapInfo, nullptr, nullptr);
}

CGContextRef CGBitmapContextCreateWithData(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                           size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo,
                                           CGBitmapContextReleaseDataCallback releaseCallback,
                                           void* releaseInfo) {
    const std::optional<BitmapFormat> format =
        formatOf(width, height, bitsPerComponent, bytesPerRow, !data, space, bitmapInfo);
    if (!format) return nullptr;
    if (data) {
        const BorrowedPixels pixels = {static_cast<uint8_t*>(data), releaseCallback, releaseInfo};
        return create<CGContext>(*format, space, pixels);
    }
    Ref<PixelStorage> storage = PixelStorage::create(sizeOf(*format));
    return storage ? create<CGContext>(*format, space, std::move(storage)) : nullptr;
}

void* CGBitmapContextGetData(CGContextRef c) {
    if (!c) return nullptr;
    return orWhenOutOfMemory(static_cast<void*>(nullptr), [&]() -> void* { return c->exposedPixels(); });
}

size_t CGBitmapContextGetWidth(CGContextRef c) { return c ? c->format.width : 0; }

size_t CGBitmapContextGetHeight(CGContextRef c) { return c ? c->format.height : 0; }

size_t CGBitmapContextGetBitsPerComponent(CGContextRef c) { return c ? 8 : 0; }

size_t CGBitmapContextGetBitsPerPixel(CGContextRef c) { return c ? 32 : 0; }

size_t CGBitmapContextGetBytesPerRow(CGContextRef c) { return c ? c->format.bytesPerRow : 0; }

CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef c) { return c ? c->space.get() : nullptr; }

CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef c) {
    return static_cast<CGImageAlphaInfo>(CGBitmapContextGetBitmapInfo(c) & kCGBitmapAlphaInfoMask);
}

CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef c) { return c ? c->format.info : 0; }

CGImageRef CGBitmapContextCreateImage(CGContextRef c) {
    return c ? noteFailure(c->isIncomplete ? nullptr : c->createImage()) : noObject<CGImage>();
}
