// Bitmap contexts: their pixels, images of them, and what the images tell of failures.
#include "canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

const CGRect kAll = {{0, 0}, {32, 32}};

uint8_t firstByteOf(CGImageRef image) {
    const Owned<CFDataRef> data(CGDataProviderCopyData(CGImageGetDataProvider(image)));
    return CFDataGetBytePtr(data)[0];
}

// The pointer to a context's pixels stays valid, and what is written through it changes no image.
TEST(Bitmap, KeepsItsPixelsWhereTheyAre) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    for (const bool hasEarlierImage : {false, true}) {
        const Owned<CGContextRef> c(CGBitmapContextCreate(nullptr, 32, 32, 8, 128, space,
                                                          CGBitmapInfo{kCGImageAlphaPremultipliedLast}));
        Owned<CGImageRef> earlier(hasEarlierImage ? CGBitmapContextCreateImage(c) : nullptr);
        auto* const pixels = static_cast<uint8_t*>(CGBitmapContextGetData(c));
        std::memset(pixels, 10, 128 * 32);
        Owned<CGImageRef> image(CGBitmapContextCreateImage(c));
        CGContextSetGrayFillColor(c, 1, 1);
        CGContextFillRect(c, kAll);
        EXPECT_EQ(CGBitmapContextGetData(c), pixels);
        EXPECT_EQ(pixels[0], 255);
        std::memset(pixels, 20, 128 * 32);
        EXPECT_EQ(firstByteOf(image), 10);
        image = Owned<CGImageRef>();
        EXPECT_EQ(pixels[0], 20);
        EXPECT_EQ(firstByteOf(Owned<CGImageRef>(CGBitmapContextCreateImage(c))), 20);
        EXPECT_EQ(hasEarlierImage ? firstByteOf(earlier) : 0, 0);
    }
}

TEST(Bitmap, GivesTheCallersMemoryBack) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    uint8_t memory[16] = {};
    std::pair<int, void*> released;
    const auto release = [](void* info, void* data) {
        auto& times = *static_cast<std::pair<int, void*>*>(info);
        ++times.first;
        times.second = data;
    };
    CGContextRef c = CGBitmapContextCreateWithData(memory, 2, 2, 8, 8, space, kCGImageAlphaPremultipliedLast,
                                                   release, &released);
    EXPECT_EQ(CGContextRetain(c), c);
    CGContextRelease(c);
    EXPECT_EQ(released.first, 0);
    CGContextFlush(c);
    CGContextRelease(c);
    EXPECT_EQ(released, std::pair(1, static_cast<void*>(memory)));
}

// The fourth byte means nothing: pixels are opaque, whatever it holds.
TEST(Bitmap, CanBeOpaque) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    constexpr CGBitmapInfo little = kCGBitmapByteOrder32Little;
    const struct {
        CGBitmapInfo info;
        size_t r, g, b; // byte offsets
    } cases[] = {
        {kCGImageAlphaNoneSkipFirst, 1, 2, 3},
        {kCGImageAlphaNoneSkipFirst | little, 2, 1, 0},
        {kCGImageAlphaNoneSkipLast, 0, 1, 2},
    };
    for (const auto& c : cases)
        for (const int unused : {0, 90, 255}) {
            const auto byte = static_cast<uint8_t>(unused);
            uint8_t pixel[4] = {byte, byte, byte, byte};
            pixel[c.r] = pixel[c.g] = pixel[c.b] = 200;
            const Owned<CGContextRef> context(CGBitmapContextCreate(pixel, 1, 1, 8, 4, space, c.info));
            ASSERT_TRUE(context) << c.info;
            EXPECT_EQ(CGBitmapContextGetBitmapInfo(context), c.info);
            CGContextSetRGBFillColor(context, 1, 0.5, 0, 0.5);
            CGContextFillRect(context, kAll);
            const auto expectPixel = [&](int r, int g, int b) {
                EXPECT_NEAR(pixel[c.r], r, 1) << c.info << ' ' << unused;
                EXPECT_NEAR(pixel[c.g], g, 1) << c.info << ' ' << unused;
                EXPECT_NEAR(pixel[c.b], b, 1) << c.info << ' ' << unused;
            };
            expectPixel(228, 164, 100);
            CGContextSetBlendMode(context, kCGBlendModeMultiply); // needs the backdrop's alpha
            CGContextSetRGBFillColor(context, 0.5, 0.5, 0.5, 1);
            CGContextFillRect(context, kAll);
            expectPixel(114, 82, 50);
            const Owned<CGImageRef> image(CGBitmapContextCreateImage(context));
            EXPECT_EQ(CGImageGetAlphaInfo(image), c.info & kCGBitmapAlphaInfoMask);
            const Canvas canvas(1, 1);
            CGContextDrawImage(canvas, CGRectMake(0, 0, 1, 1), image);
            EXPECT_EQ(canvas.at(0, 0), (Rgba8{pixel[c.r], pixel[c.g], pixel[c.b], 255}));
            CGContextClearRect(context, kAll);
            expectPixel(0, 0, 0);
        }
}

TEST(Clip, TakesInfiniteRectanglesAtEveryScale) {
    for (const double scale : {1e-300, 0.5, 1.0, 2.0, 3.0, 1e9, 1e300})
        for (const double angle : {0.0, 0.4}) {
            const Canvas clipped, filled;
            for (const CGContextRef c : {clipped.operator CGContextRef(), filled.operator CGContextRef()}) {
                CGContextTranslateCTM(c, 9, 9);
                CGContextRotateCTM(c, angle);
                CGContextScaleCTM(c, scale, scale);
            }
            CGContextFillRect(filled, CGRectInfinite);
            EXPECT_EQ(filled.area(), 1024) << scale << ' ' << angle;
            CGContextClipToRect(clipped, CGRectInfinite);
            CGContextConcatCTM(clipped, CGAffineTransformInvert(CGContextGetCTM(clipped)));
            CGContextFillRect(clipped, kAll);
            EXPECT_EQ(clipped.area(), 1024) << scale << ' ' << angle;
        }
}

// Without antialiasing, a rectangle clips to the pixels whose centres lie inside, as a filled path does.
TEST(Clip, HasWholePixelsWithoutAntialiasing) {
    const struct {
        CGRect rect;
        double area;
    } cases[] = {
        {{{4.3, 4.3}, {8, 8}}, 64},    {{{4.6, 4.6}, {8, 8}}, 64},    {{{10.5, 10.5}, {10, 10}}, 100},
        {{{4.6, 4.6}, {0.8, 0.8}}, 0}, {{{4.4, 4.4}, {0.2, 0.2}}, 1}, {{{-9.7, 3}, {12.3, 2.4}}, 6},
    };
    for (const auto& each : cases) {
        const Canvas canvas;
        CGContextSetShouldAntialias(canvas, false);
        CGContextClipToRect(canvas, each.rect);
        CGContextSetShouldAntialias(canvas, true);
        CGContextFillRect(canvas, kAll);
        EXPECT_EQ(canvas.area(), each.area) << each.rect;
    }
}

// A clip too large to be computed at once is computed in bands: they join without a seam.
TEST(Clip, CanBeLargerThanWhatIsComputedAtOnce) {
    constexpr double kSide = 4096;
    const Canvas clipped(4096, 4096), filled(4096, 4096);
    const CGRect ellipse = CGRectMake(0.5, 0.25, kSide - 1, kSide - 0.5);
    CGContextAddEllipseInRect(clipped, ellipse);
    CGContextClip(clipped);
    CGContextFillRect(clipped, CGRectMake(0, 0, kSide, kSide));
    CGContextFillEllipseInRect(filled, ellipse);
    EXPECT_EQ(std::memcmp(CGBitmapContextGetData(clipped), CGBitmapContextGetData(filled), 4 * 4096 * 4096),
              0);
}

} // namespace
