// The pixel formats of images, and how their pixels are read.
#include "base/unorm8.h"
#include "image/image.h"
#include "values/color.h"

#include <cstring>

namespace ozcg {

namespace {

enum class AlphaPlace { none, first, last };

AlphaPlace placeOf(CGImageAlphaInfo info) {
    switch (info) {
    case kCGImageAlphaPremultipliedFirst:
    case kCGImageAlphaFirst:
    case kCGImageAlphaNoneSkipFirst: return AlphaPlace::first;
    case kCGImageAlphaPremultipliedLast:
    case kCGImageAlphaLast:
    case kCGImageAlphaNoneSkipLast: return AlphaPlace::last;
    case kCGImageAlphaNone:
    case kCGImageAlphaOnly: break;
    }
    return AlphaPlace::none;
}

void readWords(const uint8_t* from, const PixelLayout& layout, size_t n, uint32_t* rgba) {
    const bool opaque = layout.a == PixelLayout::kNone;
    const int r = 8 * layout.r, g = 8 * layout.g, b = 8 * layout.b, a = opaque ? 0 : 8 * layout.a;
    const uint32_t full = opaque ? 0xFF : 0;
    for (size_t i = 0; i < n; ++i) {
        uint32_t word;
        std::memcpy(&word, from + 4 * i, sizeof word);
        rgba[i] =
            pixelOf((word >> r) & 0xFF, (word >> g) & 0xFF, (word >> b) & 0xFF, ((word >> a) & 0xFF) | full);
    }
}

void readBytes(const uint8_t* from, const PixelLayout& layout, size_t n, uint32_t* rgba) {
    const auto at = [&](uint8_t offset, uint32_t otherwise) {
        return offset == PixelLayout::kNone ? otherwise : from[offset];
    };
    for (size_t i = 0; i < n; ++i, from += layout.bytesPerPixel)
        rgba[i] = pixelOf(at(layout.r, 0), at(layout.g, 0), at(layout.b, 0), at(layout.a, 0xFF));
}

void premultiply(size_t n, uint32_t* rgba) {
    for (size_t i = 0; i < n; ++i) {
        const uint32_t pixel = rgba[i], a = pixel >> 24;
        const auto times = [&](int shift) { return multiplyUnorm8((pixel >> shift) & 0xFF, a); };
        rgba[i] = pixelOf(times(0), times(8), times(16), a);
    }
}

} // namespace

std::optional<PixelLayout> pixelLayout(size_t bitsPerComponent, size_t bitsPerPixel,
                                       const CGColorSpace* space, CGBitmapInfo bitmapInfo) noexcept {
    constexpr CGBitmapInfo known = kCGBitmapAlphaInfoMask | kCGBitmapByteOrderMask;
    const CGBitmapInfo alpha = bitmapInfo & kCGBitmapAlphaInfoMask,
                       order = bitmapInfo & kCGBitmapByteOrderMask;
    if (bitsPerComponent != 8 || (bitmapInfo & ~known) || alpha > kCGImageAlphaOnly) return {};
    PixelLayout layout;
    if (alpha == kCGImageAlphaOnly) {
        if (space || bitsPerPixel != 8 || order != kCGBitmapByteOrderDefault) return {};
        layout.bytesPerPixel = 1;
        layout.a = 0;
        layout.premultiplied = true; // black
        return layout;
    }

    if (!space) return {};
    const auto info = static_cast<CGImageAlphaInfo>(alpha);
    const AlphaPlace place = placeOf(info);
    const auto colors = static_cast<uint8_t>(space->components());
    layout.bytesPerPixel = static_cast<uint8_t>(colors + (place == AlphaPlace::none ? 0 : 1));
    if (bitsPerPixel != size_t{8} * layout.bytesPerPixel) return {};
    const bool swapped = order == kCGBitmapByteOrder32Little;
    const bool ordered = swapped || order == kCGBitmapByteOrder32Big;
    if (order != kCGBitmapByteOrderDefault && !(ordered && layout.bytesPerPixel == 4)) return {};

    const auto byte = [&](int index) { return static_cast<uint8_t>(swapped ? 3 - index : index); };
    const int first = place == AlphaPlace::first ? 1 : 0;
    layout.r = byte(first);
    layout.g = byte(colors == 1 ? first : first + 1);
    layout.b = byte(colors == 1 ? first : first + 2);
    const bool skipped = info == kCGImageAlphaNoneSkipFirst || info == kCGImageAlphaNoneSkipLast;
    if (place != AlphaPlace::none && !skipped) layout.a = byte(first == 1 ? 0 : colors);
    layout.premultiplied = info == kCGImageAlphaPremultipliedFirst || info == kCGImageAlphaPremultipliedLast;
    return layout;
}

void readRow(const CGImage& image, size_t y, size_t x0, size_t n, uint32_t* rgba) noexcept {
    const PixelLayout& layout = image.format.layout;
    const uint8_t* const from = image.row(y) + x0 * layout.bytesPerPixel;
    if (layout.bytesPerPixel == 4)
        readWords(from, layout, n, rgba);
    else
        readBytes(from, layout, n, rgba);
    if (layout.a != PixelLayout::kNone && !layout.premultiplied) premultiply(n, rgba);
}

} // namespace ozcg
