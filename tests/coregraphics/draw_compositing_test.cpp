// Clips, gradients, alpha, images and bitmaps, checked by their pixels.
#include "canvas.h"

#include "raster/vector_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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
        {"narrower than a pixel", [](CGContextRef c) { CGContextClipToRect(c, CGRectMake(4.25, 4, 0.5, 8)); },
         4},
        {"lower than a pixel", [](CGContextRef c) { CGContextClipToRect(c, CGRectMake(4, 4.25, 8, 0.5)); },
         4},
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
        {"right half and ellipse",
         [](CGContextRef c) {
             CGContextClipToRect(c, CGRectMake(14, 0, 18, 32));
             CGContextAddEllipseInRect(c, CGRectMake(4, 4, 20, 20));
             CGContextClip(c);
         },
         157.08},
        {"lower half and ellipse",
         [](CGContextRef c) {
             CGContextClipToRect(c, CGRectMake(0, 14, 32, 18));
             CGContextAddEllipseInRect(c, CGRectMake(4, 4, 20, 20));
             CGContextClip(c);
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
    const Canvas filled(96, 96), clipped(96, 96);
    const CGRect rect = CGRectMake(3.3, 3.3, 90, 90);
    CGContextSetShouldAntialias(filled, false);
    CGContextFillEllipseInRect(filled, rect);
    EXPECT_EQ(filled.rows().find('+'), std::string::npos);
    EXPECT_NEAR(filled.area(), 6362, 50);

    CGContextSetShouldAntialias(clipped, false);
    CGContextAddEllipseInRect(clipped, rect);
    CGContextClip(clipped);
    CGContextSetShouldAntialias(clipped, true);
    CGContextFillRect(clipped, CGRectMake(0, 0, 96, 96));
    EXPECT_EQ(clipped.rows(), filled.rows());
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

TEST(Gradient, LinearHasItsColoursAtKnownPoints) {
    const struct {
        const char* name;
        CGPoint start, end;
    } cases[] = {
        {"across", {8, 0}, {24, 0}},     {"down", {0, 8}, {0, 24}},      {"diagonal", {8, 8}, {24, 24}},
        {"rising", {24, 8}, {8, 24}},    {"backwards", {24, 0}, {8, 0}}, {"steep", {12, 4}, {14, 28}},
        {"short", {16, 16}, {16.5, 16}},
    };
    for (const auto& c : cases) {
        const Canvas bare, canvas;
        CGContextDrawLinearGradient(bare, redToBlue(0.5), c.start, c.end, 0);
        CGContextDrawLinearGradient(canvas, redToBlue(0.5), c.start, c.end, 3);
        EXPECT_TRUE(canvas.isPremultiplied()) << c.name;
        const double dx = c.end.x - c.start.x, dy = c.end.y - c.start.y;
        for (size_t y = 0; y < 32; ++y)
            for (size_t x = 0; x < 32; ++x) {
                const double along = ((static_cast<double>(x) + 0.5 - c.start.x) * dx +
                                      (static_cast<double>(y) + 0.5 - c.start.y) * dy) /
                                     (dx * dx + dy * dy);
                const double t = std::clamp(along, 0.0, 1.0), a = 255 * (1 - 0.5 * t);
                const Rgba8 expected = {int((1 - t) * a + 0.5), 0, int(t * a + 0.5), int(a + 0.5)};
                expectNear(canvas.at(x, y), expected, c.name);
                expectNear(bare.at(x, y), along == t ? expected : Rgba8(), c.name);
            }
    }
}

TEST(Gradient, EndsInItsOuterStops) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    const CGFloat colors[] = {1, 0, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1}, locations[] = {0, 0, 1, 1};
    const Owned<CGGradientRef> gradient(CGGradientCreateWithColorComponents(space, colors, locations, 4));
    const Canvas linear, radial;
    CGContextDrawLinearGradient(linear, gradient, {8, 0}, {24, 0}, 3);
    CGContextDrawRadialGradient(radial, gradient, {0, 16}, 8, {0, 16}, 24, 3);
    for (const Canvas* const canvas : {&linear, &radial}) {
        EXPECT_EQ(canvas->at(7, 16), (Rgba8{255, 0, 0, 255}));
        EXPECT_EQ(canvas->at(8, 16), (Rgba8{0, 255, 0, 255}));
        EXPECT_EQ(canvas->at(23, 16), (Rgba8{0, 255, 0, 255}));
        EXPECT_EQ(canvas->at(24, 16), (Rgba8{0, 0, 255, 255}));
    }
}

struct Circle {
    CGPoint center;
    double radius;
};

// The greatest position up to `last` whose circle passes through a point, searched for step by step; NaN when
// there is none from `first` on.
double greatestPosition(const Circle& start, const Circle& end, CGPoint p, double first, double last) {
    const auto outside =
        [&](double s) { // distance of the point from the circle at a position; negative inside
            const double x = start.center.x + s * (end.center.x - start.center.x);
            const double y = start.center.y + s * (end.center.y - start.center.y);
            const double radius = start.radius + s * (end.radius - start.radius);
            return radius < 0 ? std::nan("") : std::hypot(p.x - x, p.y - y) - radius;
        };
    for (double high = last, low; high > first; high = low) {
        low = std::max(first, high - (std::abs(high) < 1.5 ? 0.0005 : 0.02 * std::abs(high)));
        double from = outside(low);
        if (!(from * outside(high) <= 0)) continue;
        for (int i = 0; i < 40; ++i) {
            const double middle = 0.5 * (low + high), at = outside(middle);
            (from * at <= 0 ? high : low) = middle;
            if (low == middle) from = at;
        }
        return low;
    }
    return std::nan("");
}

TEST(Gradient, RadialUsesTheLargestCircleThroughAPixel) {
    const struct {
        const char* name;
        Circle start, end;
    } cases[] = {
        {"focus off the centre", {{12.3, 16.4}, 0}, {{16.5, 16.5}, 12}},
        {"ring", {{16.3, 16.4}, 5}, {{16.3, 16.4}, 12}},
        {"inwards", {{16.3, 16.4}, 14}, {{12.5, 18.4}, 3}},
        {"tube to the right", {{8.3, 14.4}, 6}, {{22.3, 14.4}, 6}},
        {"tube downwards", {{14.3, 8.4}, 6}, {{14.3, 22.4}, 6}},
        {"cone", {{4.3, 14.4}, 1}, {{22.3, 20.4}, 7}},
        {"cone to a point", {{4.3, 14.4}, 7}, {{22.3, 20.4}, 0}},
        // Circles that touch from inside, or nearly: the quadratic term of their equation vanishes.
        {"touching", {{6.4, 16.4}, 0}, {{6.4 + 2.1, 16.4 + 2.8}, 3.5}},
        {"touching within rounding", {{6.3, 16.4}, 0}, {{6.3 + 2.3, 16.4 + 7.1}, std::hypot(2.3, 7.1)}},
        {"touching circles", {{9.1, 12.7}, 2.2}, {{9.1 + 1.1, 12.7 + 4.7}, 2.2 + std::hypot(1.1, 4.7)}},
        {"nearly touching", {{6.3, 16.4}, 0}, {{6.3 + 2.3, 16.4 + 7.1}, std::hypot(2.3, 7.1) * (1 + 1e-6)}},
    };
    for (const auto& c : cases)
        for (const CGGradientDrawingOptions options : {0u, 1u, 2u, 3u}) {
            const Canvas canvas;
            CGContextDrawRadialGradient(canvas, redToBlue(), c.start.center, c.start.radius, c.end.center,
                                        c.end.radius, options);
            for (size_t y = 0; y < 32; y += 3)
                for (size_t x = 0; x < 32; x += 3) {
                    const CGPoint p = {static_cast<double>(x) + 0.5, static_cast<double>(y) + 0.5};
                    const double found = greatestPosition(
                        c.start, c.end, p, options & kCGGradientDrawsBeforeStartLocation ? -1e7 : 0,
                        options & kCGGradientDrawsAfterEndLocation ? 1e7 : 1);
                    const double t = std::clamp(found, 0.0, 1.0);
                    const Rgba8 expected = std::isnan(found)
                                               ? Rgba8()
                                               : Rgba8{int(255 * (1 - t) + 0.5), 0, int(255 * t + 0.5), 255};
                    expectNear(canvas.at(x, y), expected, c.name);
                }
        }
}

TEST(Gradient, DrawsNothingIfDegenerate) {
    const Canvas canvas;
    const auto gradient = redToBlue();
    CGContextDrawLinearGradient(canvas, gradient, {5, 5}, {5, 5}, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 4, {5, 5}, 4, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 0, {9, 5}, 0, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 0, {9, 5}, -3, 3);
    CGContextDrawLinearGradient(canvas, nullptr, {5, 5}, {9, 5}, 3);
    CGContextDrawLinearGradient(canvas, gradient, {5, 5}, {1e200, 5}, 3);
    CGContextDrawLinearGradient(canvas, gradient, {5, 5}, {std::nan(""), 5}, 3);
    CGContextDrawRadialGradient(canvas, gradient, {5, 5}, 1, {9, 1e200}, 3, 3);
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

TEST(Image, TurnsWithItsColours) {
    for (const double degrees : {0.0, 30.0, 45.0, 90.0, 200.0}) {
        const Canvas canvas;
        CGContextTranslateCTM(canvas, 16, 16);
        CGContextRotateCTM(canvas, degrees * 0.017453292519943295);
        CGContextDrawImage(canvas, CGRectMake(-9, -9, 18, 18), quarters(16)); // upside down, as above
        const std::pair<CGPoint, Rgba8> centers[] = {{{-4.5, -4.5}, {0, 0, 255, 255}},
                                                     {{4.5, -4.5}, {255, 255, 255, 255}},
                                                     {{-4.5, 4.5}, {255, 0, 0, 255}},
                                                     {{4.5, 4.5}, {0, 255, 0, 255}}};
        for (const auto& [center, color] : centers) {
            const CGPoint p = CGPointApplyAffineTransform(
                center, CGAffineTransformMakeRotation(degrees * 0.017453292519943295));
            EXPECT_EQ(canvas.at(static_cast<size_t>(16 + p.x), static_cast<size_t>(16 + p.y)), color)
                << degrees;
        }
    }
}

// Stripes one pixel wide, reduced to a quarter and rotated.
TEST(Image, AveragesWhenReducedAndTurned) {
    for (const bool level : {false, true}) {
        const Canvas stripes(64, 64);
        for (int i = 0; i < 64; i += 2)
            CGContextFillRect(stripes, level ? CGRectMake(0, i, 64, 1) : CGRectMake(i, 0, 1, 64));
        const Owned<CGImageRef> image(CGBitmapContextCreateImage(stripes));
        for (const double angle : {0.0, 0.5, 1.6, 2.4}) {
            const Canvas canvas;
            CGContextTranslateCTM(canvas, 16, 16);
            CGContextRotateCTM(canvas, angle);
            CGContextDrawImage(canvas, CGRectMake(-8, -8, 16, 16), image);
            for (size_t y = 12; y < 20; ++y)
                for (size_t x = 12; x < 20; ++x) EXPECT_NEAR(canvas.at(x, y).a, 128, 24) << angle;
        }
    }
}

TEST(Bitmap, RefusesWhatItCannotHold) {
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

// Images of a bitmap taken between drawings: each keeps the pixels of its moment.
TEST(Bitmap, SnapshotsDoNotChange) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    std::vector<uint8_t> memory(4 * 32 * 32);
    for (void* const pixels : {static_cast<void*>(nullptr), static_cast<void*>(memory.data())}) {
        const Owned<CGContextRef> c(CGBitmapContextCreate(pixels, 32, 32, 8, 4 * 32, space, 2));
        const Owned<CGImageRef> empty(CGBitmapContextCreateImage(c));
        CGContextSetGrayFillColor(c, 1, 1);
        CGContextFillRect(c, kAll);
        const Owned<CGImageRef> white(CGBitmapContextCreateImage(c)), again(CGBitmapContextCreateImage(c));
        CGContextClearRect(c, kAll);
        const Owned<CGImageRef> cleared(CGBitmapContextCreateImage(c));
        std::memset(CGBitmapContextGetData(c), 0x7F, memory.size());
        const std::pair<CGImageRef, uint8_t> images[] = {
            {empty, 0}, {white, 255}, {again, 255}, {cleared, 0}};
        for (const auto& [image, expected] : images) {
            const Owned<CFDataRef> data(CGDataProviderCopyData(CGImageGetDataProvider(image)));
            ASSERT_EQ(CFDataGetLength(data), static_cast<CFIndex>(memory.size()));
            for (size_t i = 0; i < memory.size(); ++i) ASSERT_EQ(CFDataGetBytePtr(data)[i], expected) << i;
        }
    }
}

} // namespace
