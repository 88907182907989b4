#include "image/image.h"
#include "owned.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

// The same type for all, so that they can be combined.
constexpr CGBitmapInfo little = kCGBitmapByteOrder32Little, big = kCGBitmapByteOrder32Big;
constexpr CGBitmapInfo words = kCGBitmapByteOrder16Little, floats = kCGBitmapFloatComponents;

enum class Space { none, gray, rgb };

Owned<CGColorSpaceRef> makeSpace(Space space) {
    switch (space) {
    case Space::gray: return Owned<CGColorSpaceRef>(CGColorSpaceCreateDeviceGray());
    case Space::rgb: return Owned<CGColorSpaceRef>(CGColorSpaceCreateDeviceRGB());
    case Space::none: break;
    }
    return Owned<CGColorSpaceRef>();
}

Owned<CGDataProviderRef> providerOf(const Bytes& bytes) {
    const Owned<CFDataRef> data(CFDataCreate(nullptr, bytes.data(), static_cast<CFIndex>(bytes.size())));
    return Owned<CGDataProviderRef>(CGDataProviderCreateWithCFData(data));
}

Owned<CGImageRef> makeImage(size_t width, size_t height, size_t bitsPerPixel, size_t bytesPerRow, Space space,
                            CGBitmapInfo info, const Bytes& bytes) {
    return Owned<CGImageRef>(CGImageCreate(width, height, 8, bitsPerPixel, bytesPerRow, makeSpace(space),
                                           info, providerOf(bytes), nullptr, false,
                                           kCGRenderingIntentDefault));
}

Bytes rowOf(CGImageRef image, size_t y, size_t x0, size_t n) {
    std::vector<uint32_t> pixels(n);
    ozcg::readRow(*image, y, x0, n, pixels.data());
    Bytes bytes(4 * n);
    std::memcpy(bytes.data(), pixels.data(), bytes.size());
    return bytes;
}

TEST(Image, ReadsEveryFormat) {
    struct Case {
        size_t bitsPerPixel;
        Space space;
        CGBitmapInfo info;
        Bytes pixel, rgba;
    };
    const Case cases[] = {
        {32, Space::rgb, kCGImageAlphaPremultipliedLast, {10, 20, 30, 40}, {10, 20, 30, 40}},
        {32, Space::rgb, kCGImageAlphaPremultipliedFirst, {40, 10, 20, 30}, {10, 20, 30, 40}},
        {32, Space::rgb, kCGImageAlphaPremultipliedFirst | big, {40, 10, 20, 30}, {10, 20, 30, 40}},
        {32, Space::rgb, kCGImageAlphaPremultipliedFirst | little, {30, 20, 10, 40}, {10, 20, 30, 40}},
        {32, Space::rgb, kCGImageAlphaPremultipliedLast | little, {40, 30, 20, 10}, {10, 20, 30, 40}},
        {32, Space::rgb, kCGImageAlphaLast, {255, 128, 1, 128}, {128, 64, 1, 128}},
        {32, Space::rgb, kCGImageAlphaFirst | little, {1, 128, 255, 128}, {128, 64, 1, 128}},
        {32, Space::rgb, kCGImageAlphaNoneSkipLast, {10, 20, 30, 40}, {10, 20, 30, 255}},
        {32, Space::rgb, kCGImageAlphaNoneSkipFirst | little, {30, 20, 10, 40}, {10, 20, 30, 255}},
        {24, Space::rgb, kCGImageAlphaNone, {10, 20, 30}, {10, 20, 30, 255}},
        {16, Space::gray, kCGImageAlphaLast, {100, 51}, {20, 20, 20, 51}},
        {16, Space::gray, kCGImageAlphaPremultipliedFirst, {51, 20}, {20, 20, 20, 51}},
        {16, Space::gray, kCGImageAlphaNoneSkipLast, {100, 51}, {100, 100, 100, 255}},
        {8, Space::gray, kCGImageAlphaNone, {77}, {77, 77, 77, 255}},
        {8, Space::none, kCGImageAlphaOnly, {77}, {0, 0, 0, 77}},
    };
    for (const Case& c : cases) {
        // Two rows of three pixels with a byte of padding between the rows. The last pixel is the one that is
        // read.
        const size_t bytesPerPixel = c.bitsPerPixel / 8, bytesPerRow = 3 * bytesPerPixel + 1;
        Bytes bytes(2 * bytesPerRow - 1);
        std::ranges::copy(c.pixel, bytes.end() - static_cast<ptrdiff_t>(bytesPerPixel));
        const auto image = makeImage(3, 2, c.bitsPerPixel, bytesPerRow, c.space, c.info, bytes);
        ASSERT_NE(image.get(), nullptr) << c.bitsPerPixel << " bits, info " << c.info;
        EXPECT_EQ(rowOf(image, 1, 2, 1), c.rgba) << c.bitsPerPixel << " bits, info " << c.info;
        EXPECT_EQ(CGImageGetBitmapInfo(image), c.info);
        EXPECT_EQ(CGImageGetBitsPerPixel(image), c.bitsPerPixel);
        EXPECT_EQ(CGImageGetBytesPerRow(image), bytesPerRow);
        EXPECT_EQ(CGImageGetBitsPerComponent(image), 8u);
        EXPECT_EQ(CGImageGetPixelFormatInfo(image), kCGImagePixelFormatPacked);
        EXPECT_EQ(CGImageGetByteOrderInfo(image), c.info & kCGImageByteOrderMask);
    }
}

TEST(Image, RefusesUnsupportedFormats) {
    struct Case {
        const char* why;
        size_t width, height, bitsPerComponent, bitsPerPixel, bytesPerRow;
        Space space;
        CGBitmapInfo info;
    };
    const Case cases[] = {
        {"no width", 0, 2, 8, 32, 8, Space::rgb, kCGImageAlphaLast},
        {"no height", 2, 0, 8, 32, 8, Space::rgb, kCGImageAlphaLast},
        {"short rows", 2, 2, 8, 32, 7, Space::rgb, kCGImageAlphaLast},
        {"more rows than bytes", 2, 3, 8, 32, 8, Space::rgb, kCGImageAlphaLast},
        {"size that overflows", SIZE_MAX / 2, 2, 8, 32, SIZE_MAX - 1, Space::rgb, kCGImageAlphaLast},
        {"height that overflows", 2, SIZE_MAX, 8, 32, 8, Space::rgb, kCGImageAlphaLast},
        {"16 bits per component", 1, 1, 16, 64, 8, Space::rgb, kCGImageAlphaLast},
        {"float components", 2, 2, 8, 32, 8, Space::rgb, kCGImageAlphaLast | floats},
        {"no space", 2, 2, 8, 32, 8, Space::none, kCGImageAlphaLast},
        {"space for alpha only", 2, 2, 8, 8, 8, Space::gray, kCGImageAlphaOnly},
        {"gray as RGB", 2, 2, 8, 32, 8, Space::gray, kCGImageAlphaLast},
        {"no room for alpha", 2, 2, 8, 24, 8, Space::rgb, kCGImageAlphaLast},
        {"byte order of 24 bits", 2, 2, 8, 24, 8, Space::rgb, little},
        {"16-bit byte order", 2, 2, 8, 32, 8, Space::rgb, kCGImageAlphaLast | words},
        {"unknown alpha", 2, 2, 8, 32, 8, Space::rgb, 9},
    };
    const auto provider = providerOf(Bytes(16));
    const auto make = [&](const Case& c, const CGFloat* decode) {
        return Owned<CGImageRef>(CGImageCreate(c.width, c.height, c.bitsPerComponent, c.bitsPerPixel,
                                               c.bytesPerRow, makeSpace(c.space), c.info, provider, decode,
                                               false, kCGRenderingIntentDefault));
    };
    for (const Case& c : cases) EXPECT_EQ(make(c, nullptr).get(), nullptr) << c.why;
    const Case good = {"", 2, 2, 8, 32, 8, Space::rgb, kCGImageAlphaLast};
    const CGFloat decode[8] = {0, 1, 0, 1, 0, 1, 0, 1};
    EXPECT_NE(make(good, nullptr).get(), nullptr);
    EXPECT_EQ(make(good, decode).get(), nullptr);
}

TEST(Image, CanBeCropped) {
    Bytes bytes(4 * 12);
    std::iota(bytes.begin(), bytes.end(), uint8_t{0});
    const auto image = makeImage(4, 3, 32, 16, Space::rgb, kCGImageAlphaPremultipliedLast, bytes);
    struct Case {
        CGRect rect;
        size_t width, height;
        uint8_t first; // The first byte; 0 if there is no image.
    };
    const Case cases[] = {
        {CGRectMake(1, 1, 2, 2), 2, 2, 20},
        {CGRectMake(3, 3, -2, -2), 2, 2, 20},
        {CGRectMake(1.5, 1.5, 1, 1), 2, 2, 20},
        {CGRectMake(2, 1, 99, 99), 2, 2, 24},
        {CGRectMake(4, 0, 1, 1), 0, 0, 0},
        {CGRectMake(1, 1, 0, 1), 0, 0, 0},
        {CGRectNull, 0, 0, 0},
        {CGRectMake(std::nan(""), 0, 1, 1), 0, 0, 0},
        {CGRectMake(1, -1e300, 1e300, 2e300), 3, 3, 4},
    };
    for (const Case& c : cases) {
        const Owned<CGImageRef> part(CGImageCreateWithImageInRect(image, c.rect));
        EXPECT_EQ(CGImageGetWidth(part), c.width) << c.rect;
        EXPECT_EQ(CGImageGetHeight(part), c.height) << c.rect;
        if (part.get()) {
            EXPECT_EQ(rowOf(part, 0, 0, 1)[0], c.first) << c.rect;
            EXPECT_EQ(rowOf(part, c.height - 1, c.width - 1, 1)[0],
                      c.first + (c.height - 1) * 16 + (c.width - 1) * 4);
        }
    }
}

TEST(Image, CanBeCopiedWithAnotherSpace) {
    const auto image = makeImage(1, 1, 32, 4, Space::rgb, kCGImageAlphaPremultipliedLast, {1, 2, 3, 4});
    const Owned<CGColorSpaceRef> sRGB(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    const Owned<CGImageRef> copy(CGImageCreateCopyWithColorSpace(image, sRGB));
    EXPECT_EQ(CGImageGetColorSpace(copy), sRGB.get());
    EXPECT_EQ(rowOf(copy, 0, 0, 1), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(CGImageCreateCopyWithColorSpace(image, makeSpace(Space::gray)), nullptr);
    EXPECT_EQ(CGImageCreateCopyWithColorSpace(nullptr, sRGB), nullptr);
}

TEST(Image, ReturnsItsBytes) {
    const Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8};
    const auto image = makeImage(2, 1, 32, 8, Space::rgb, kCGImageAlphaFirst, bytes);
    const Owned<CFDataRef> data(CGDataProviderCopyData(CGImageGetDataProvider(image)));
    ASSERT_EQ(CFDataGetLength(data), 8);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), CFDataGetBytePtr(data)));
    EXPECT_EQ(CGImageGetAlphaInfo(image), kCGImageAlphaFirst);
}

TEST(Image, ItsBytesStayWhenTheCallersChange) {
    Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8};
    Owned<CGDataProviderRef> provider(
        CGDataProviderCreateWithData(nullptr, bytes.data(), bytes.size(), nullptr));
    Owned<CGImageRef> image(CGImageCreate(2, 1, 8, 32, 8, makeSpace(Space::rgb), kCGImageAlphaFirst, provider,
                                          nullptr, false, kCGRenderingIntentDefault));
    Owned<CGImageRef> part(CGImageCreateWithImageInRect(image, CGRectMake(1, 0, 1, 1)));
    const Owned<CFDataRef> whole(CGDataProviderCopyData(CGImageGetDataProvider(image)));
    const Owned<CFDataRef> ofPart(CGDataProviderCopyData(CGImageGetDataProvider(part)));
    part = Owned<CGImageRef>();
    image = Owned<CGImageRef>();
    provider = Owned<CGDataProviderRef>();
    std::ranges::fill(bytes, uint8_t{0});
    EXPECT_EQ(CFDataGetBytePtr(whole)[0], 1);
    EXPECT_EQ(CFDataGetBytePtr(ofPart)[0], 5);
}

TEST(Image, SnapshotSharesTheStorage) {
    const auto storage = ozcg::PixelStorage::create(16);
    EXPECT_TRUE(std::ranges::all_of(std::span(storage->bytes(), 16), [](uint8_t byte) { return byte == 0; }));
    CGImageFormat format;
    format.width = format.height = 2;
    format.bytesPerRow = 8;
    format.bitmapInfo = kCGImageAlphaPremultipliedLast;
    format.layout = *ozcg::pixelLayout(8, 32, makeSpace(Space::rgb), format.bitmapInfo);
    {
        const Owned<CGImageRef> image(ozcg::createImage(format, storage));
        EXPECT_FALSE(storage->isUnique());
        storage->bytes()[12] = 9;
        EXPECT_EQ(rowOf(image, 1, 1, 1), (Bytes{9, 0, 0, 0}));
    }
    EXPECT_TRUE(storage->isUnique());
}

TEST(Image, NullIsNoImage) {
    EXPECT_EQ(CGImageGetWidth(nullptr) + CGImageGetHeight(nullptr) + CGImageGetBytesPerRow(nullptr), 0u);
    EXPECT_EQ(CGImageGetBitsPerComponent(nullptr) + CGImageGetBitsPerPixel(nullptr), 0u);
    EXPECT_EQ(CGImageGetColorSpace(nullptr), nullptr);
    EXPECT_EQ(CGImageGetDataProvider(nullptr), nullptr);
    EXPECT_EQ(CGImageGetAlphaInfo(nullptr), kCGImageAlphaNone);
    EXPECT_EQ(CGImageGetBitmapInfo(nullptr), 0u);
    EXPECT_FALSE(CGImageGetShouldInterpolate(nullptr));
    EXPECT_EQ(CGImageGetRenderingIntent(nullptr), kCGRenderingIntentDefault);
    EXPECT_EQ(CGImageCreateCopy(nullptr), nullptr);
    EXPECT_EQ(CGImageCreateWithImageInRect(nullptr, CGRectMake(0, 0, 1, 1)), nullptr);
}

TEST(DataProvider, ReleasesItsBytesOnce) {
    int released = 0;
    uint8_t bytes[4] = {1, 2, 3, 4};
    {
        const Owned<CGDataProviderRef> provider(CGDataProviderCreateWithData(
            &released, bytes, sizeof bytes, [](void* info, const void* data, size_t size) {
                ++*static_cast<int*>(info);
                EXPECT_EQ(static_cast<const uint8_t*>(data)[3], 4);
                EXPECT_EQ(size, 4u);
            }));
        const Owned<CGImageRef> image(CGImageCreate(1, 1, 8, 32, 4, makeSpace(Space::rgb), kCGImageAlphaLast,
                                                    provider, nullptr, true, kCGRenderingIntentPerceptual));
        EXPECT_TRUE(CGImageGetShouldInterpolate(image));
        EXPECT_EQ(CGImageGetRenderingIntent(image), kCGRenderingIntentPerceptual);
        const Owned<CGImageRef> part(CGImageCreateWithImageInRect(image, CGRectMake(0, 0, 1, 1)));
        EXPECT_EQ(released, 0);
    }
    EXPECT_EQ(released, 1);
    EXPECT_EQ(CGDataProviderCreateWithData(nullptr, nullptr, 1, nullptr), nullptr);
    EXPECT_EQ(CGDataProviderCreateWithCFData(nullptr), nullptr);
    EXPECT_EQ(CFDataCreate(nullptr, bytes, -1), nullptr);
}

} // namespace
