// Clips, gradients, alpha, images and bitmaps, checked by their pixels.
#include "canvas.h"

#include "raster/vector_code.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

namespace {

const CGRect kAll = {{0, 0}, {32, 32}};

TEST(Clip, Intersects) {
    const struct {
        const char* name;
        std::function<void(CGContextRef)> clip;
        double area;
    } cases[] = {
        {"whole pixels", [](CGContextRef c) { CGContextClipToRect(c, CGRectMake(4, 4, 8, 8)); }, 64},
        {"fractions", [](CGContextRef c) { CGContextClipToRect(c, CGRectMake(4.25, 4.5, 8, 8)); }, 64},
        {"two rectangles",
         [](CGContextRef c) {
             CGContextClipToRect(c, CGRectMake(0, 0, 16.5, 32));
             CGContextClipToRect(c, CGRectMake(8, 8, 32, 8.25));
         },
         8.5 * 8.25},
        {"ellipse",
         [](CGContextRef c) {
             CGContextAddEllipseInRect(c, CGRectMake(4, 4, 20, 20));
             CGContextClip(c);
         },
         314.16},
        {"ellipse and half",
         [](CGContextRef c) {
             CGContextAddEllipseInRect(c, CGRectMake(4, 4, 20, 20));
             CGContextClip(c);
             CGContextClipToRect(c, CGRectMake(0, 0, 14, 32));
         },
         157.08},
        {"even-odd",
         [](CGContextRef c) {
             CGContextAddRect(c, CGRectMake(2, 2, 20, 20));
             CGContextAddRect(c, CGRectMake(7, 7, 10, 10));
             CGContextEOClip(c);
         },
         300},
        {"empty path", [](CGContextRef c) { CGContextClip(c); }, 0},
        {"apart",
         [](CGContextRef c) {
             CGContextClipToRect(c, CGRectMake(0, 0, 4, 4));
             CGContextClipToRect(c, CGRectMake(8, 8, 4, 4));
         },
         0},
    };
    for (const auto& c : cases) {
        const Canvas canvas;
        CGContextSaveGState(canvas);
        c.clip(canvas);
        CGContextFillRect(canvas, kAll);
        EXPECT_NEAR(canvas.area(), c.area, 0.008 * c.area + 0.1) << c.name;
        CGContextRestoreGState(canvas);
        CGContextFillRect(canvas, kAll);
        EXPECT_NEAR(canvas.area(), 1024, 0.01) << c.name;
    }
}

TEST(Antialiasing, CanBeSwitchedOff) {
    const Canvas canvas;
    CGContextSetShouldAntialias(canvas, false);
    CGContextFillEllipseInRect(canvas, CGRectMake(3.3, 3.3, 20, 20));
    EXPECT_EQ(canvas.rows().find('+'), std::string::npos);
    EXPECT_NEAR(canvas.area(), 314, 12);
}

Owned<CGGradientRef> redToBlue(double alphaAtEnd = 1) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    const CGFloat colors[] = {1, 0, 0, 1, 0, 0, 1, alphaAtEnd}, locations[] = {0, 1};
    return Owned<CGGradientRef>(CGGradientCreateWithColorComponents(space, colors, locations, 2));
}

void expectNear(const Rgba8& p, const Rgba8& wanted, const char* name) {
    const int worst = std::max({std::abs(p.r - wanted.r), std::abs(p.g - wanted.g), std::abs(p.b - wanted.b),
                                std::abs(p.a - wanted.a)});
    EXPECT_LE(worst, 2) << name << ": " << p << " instead of " << wanted;
}

TEST(Gradient, LinearInterpolatesAlongItsAxis) {
    const Canvas canvas;
    CGContextDrawLinearGradient(canvas, redToBlue(0.5), {8, 0}, {24, 0}, 3);
    expectNear(canvas.at(2, 5), {255, 0, 0, 255}, "before");
    expectNear(canvas.at(30, 5), {0, 0, 128, 128}, "after");
    const double t = (16.5 - 8) / 16, a = 1 - 0.5 * t;
    expectNear(canvas.at(16, 5),
               {int(255 * (1 - t) * a + 0.5), 0, int(255 * t * a + 0.5), int(255 * a + 0.5)}, "middle");
    EXPECT_TRUE(canvas.isPremultiplied());

    const Canvas bare;
    CGContextDrawLinearGradient(bare, redToBlue(), {8, 0}, {24, 0}, 0);
    EXPECT_EQ(bare.at(7, 5), Rgba8());
    EXPECT_EQ(bare.at(24, 5), Rgba8());
    EXPECT_EQ(bare.at(12, 5).a, 255);
}

TEST(Gradient, RadialUsesTheLargestCircleThroughAPixel) {
    const Canvas canvas;
    CGContextDrawRadialGradient(canvas, redToBlue(), {12.5, 16.5}, 0, {16.5, 16.5}, 12, 3);
    expectNear(canvas.at(12, 16), {255, 0, 0, 255}, "focus");
    // The circle at position s ends at x = 12.5 + 16 s on the right and at x = 12.5 - 8 s on the left.
    expectNear(canvas.at(20, 16), {128, 0, 128, 255}, "half-way right");
    expectNear(canvas.at(8, 16), {128, 0, 128, 255}, "half-way left");
    expectNear(canvas.at(0, 0), {0, 0, 255, 255}, "outside");

    const Canvas cone; // The focus is outside the end circle, so nothing is painted outside their cone.
    CGContextDrawRadialGradient(cone, redToBlue(), {2.5, 16.5}, 0, {22.5, 16.5}, 5, 3);
    EXPECT_EQ(cone.at(2, 2), Rgba8());
    EXPECT_EQ(cone.at(20, 16).a, 255);
}

TEST(Gradient, DrawsNothingIfDegenerate) {
    const Canvas canvas;
    const auto gradient = redToBlue();
    CGContextDrawLinearGradient(canvas, gradient, {5, 5}, {5, 5}, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 4, {5, 5}, 4, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 0, {9, 5}, 0, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 0, {9, 5}, -3, 3);
    CGContextDrawLinearGradient(canvas, nullptr, {5, 5}, {9, 5}, 3);
    CGContextScaleCTM(canvas, 1, 0);
    CGContextDrawLinearGradient(canvas, gradient, {5, 5}, {9, 5}, 3);
    EXPECT_EQ(canvas.area(), 0);
}

TEST(Alpha, AppliesToEverything) {
    const std::function<void(CGContextRef)> drawings[] = {
        [](CGContextRef c) { CGContextFillRect(c, kAll); },
        [](CGContextRef c) {
            CGContextDrawLinearGradient(c, redToBlue(), {0, 0}, {32, 0}, 3);
        },
        [](CGContextRef c) {
            const Canvas source;
            CGContextFillRect(source, kAll);
            const Owned<CGImageRef> image(CGBitmapContextCreateImage(source));
            CGContextDrawImage(c, kAll, image);
        }};
    for (const auto& draw : drawings) {
        const Canvas canvas;
        CGContextSetAlpha(canvas, 0.25);
        draw(canvas);
        EXPECT_NEAR(canvas.at(9, 9).a, 64, 1);
        EXPECT_TRUE(canvas.isPremultiplied());
    }
}

/// An image of four quarters: red and green above blue and white.
Owned<CGImageRef> quarters(size_t side) {
    const Canvas canvas(side, side);
    const double h = static_cast<double>(side) / 2;
    CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
    CGContextFillRect(canvas, CGRectMake(0, 0, h, h));
    CGContextSetRGBFillColor(canvas, 0, 1, 0, 1);
    CGContextFillRect(canvas, CGRectMake(h, 0, h, h));
    CGContextSetRGBFillColor(canvas, 0, 0, 1, 1);
    CGContextFillRect(canvas, CGRectMake(0, h, h, h));
    CGContextSetRGBFillColor(canvas, 1, 1, 1, 1);
    CGContextFillRect(canvas, CGRectMake(h, h, h, h));
    return Owned<CGImageRef>(CGBitmapContextCreateImage(canvas));
}

TEST(Image, IsUprightWhereYPointsUp) {
    for (const bool yUp : {true, false}) {
        const Canvas canvas;
        if (yUp) CGContextConcatCTM(canvas, CGAffineTransformInvert(CGContextGetCTM(canvas)));
        CGContextDrawImage(canvas, CGRectMake(8, 8, 16, 16), quarters(16));
        const Rgba8 red = {255, 0, 0, 255}, blue = {0, 0, 255, 255};
        EXPECT_EQ(canvas.at(8, 8), yUp ? red : blue);
        EXPECT_EQ(canvas.at(8, 23), yUp ? blue : red);
        EXPECT_EQ(canvas.at(7, 8), Rgba8());
        EXPECT_EQ(canvas.at(23, 24), Rgba8());
    }
}

TEST(Image, AveragesWhenReducedAndInterpolatesWhenEnlarged) {
    const Canvas small(1, 1);
    CGContextDrawImage(small, CGRectMake(0, 0, 1, 1), quarters(64));
    expectNear(small.at(0, 0), {128, 128, 128, 255}, "mean of all quarters");

    const Canvas large;
    CGContextDrawImage(large, kAll, quarters(2)); // Upside down here: blue and white above red and green.
    expectNear(large.at(0, 0), {0, 0, 255, 255}, "corner");
    expectNear(large.at(15, 0), {120, 120, 255, 255}, "between");
    const Canvas blocks;
    CGContextSetInterpolationQuality(blocks, kCGInterpolationNone);
    CGContextDrawImage(blocks, kAll, quarters(2));
    EXPECT_EQ(blocks.at(15, 0), (Rgba8{0, 0, 255, 255}));
    EXPECT_EQ(blocks.at(16, 0), (Rgba8{255, 255, 255, 255}));
}

TEST(Bitmap, RefusesUnsupportedSizesAndFormats) {
    const Owned<CGColorSpaceRef> rgb(CGColorSpaceCreateDeviceRGB()), gray(CGColorSpaceCreateDeviceGray());
    const auto refused = [](size_t w, size_t h, size_t bits, size_t row, CGColorSpaceRef space,
                            CGBitmapInfo info) {
        return CGBitmapContextCreate(nullptr, w, h, bits, row, space, info) == nullptr;
    };
    EXPECT_TRUE(refused(0, 4, 8, 0, rgb, 2));
    EXPECT_TRUE(refused(4, 0, 8, 0, rgb, 2));
    EXPECT_TRUE(refused(SIZE_MAX, SIZE_MAX, 8, 0, rgb, 2));
    EXPECT_TRUE(refused(70000, 1, 8, 0, rgb, 2));
    EXPECT_TRUE(refused(4, 4, 8, 15, rgb, 2));
    EXPECT_TRUE(refused(4, 4, 16, 0, rgb, 2));
    EXPECT_TRUE(refused(4, 4, 8, 0, gray, 2));
    EXPECT_TRUE(refused(4, 4, 8, 0, nullptr, 2));
    EXPECT_TRUE(refused(4, 4, 8, 0, rgb, kCGImageAlphaLast));
}

TEST(Bitmap, DrawsIntoTheCallersMemoryButNotIntoThePadding) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    for (const ozcg::VectorCode* const code : ozcg::vectorCodes()) {
        ozcg::chooseVectorCode(code);
        for (size_t width = 1; width <= 40; ++width) {
            const size_t used = 4 * width, rowBytes = used + 8;
            std::vector<uint8_t> memory(rowBytes * 8, 0x5A);
            for (size_t y = 0; y < 8; ++y) std::memset(memory.data() + rowBytes * y, 0, used);
            const Owned<CGContextRef> c(
                CGBitmapContextCreate(memory.data(), width, 8, 8, rowBytes, space, 2));
            // A triangle that reaches past the right end of every row, then everything.
            CGContextMoveToPoint(c, 0, 8);
            CGContextAddLineToPoint(c, 80, 0);
            CGContextAddLineToPoint(c, 80, 8);
            CGContextFillPath(c);
            CGContextFillRect(c, CGRectMake(-4, -4, 100, 100));
            for (size_t i = 0; i < memory.size(); ++i)
                ASSERT_EQ(memory[i], i % rowBytes >= used    ? 0x5A
                                     : i % rowBytes % 4 == 0 ? 255
                                                             : 0)
                    << code->instructionSet << ", " << width << " pixels wide, byte " << i;
        }
    }
    ozcg::chooseVectorCode(nullptr);
}

TEST(Bitmap, SnapshotsDoNotChange) {
    const Canvas canvas;
    const Owned<CGImageRef> before(CGBitmapContextCreateImage(canvas));
    CGContextFillRect(canvas, kAll);
    const Owned<CFDataRef> data(CGDataProviderCopyData(CGImageGetDataProvider(before)));
    for (CFIndex i = 0; i < CFDataGetLength(data); ++i) ASSERT_EQ(CFDataGetBytePtr(data)[i], 0);
    EXPECT_EQ(canvas.area(), 1024);
}

} // namespace
