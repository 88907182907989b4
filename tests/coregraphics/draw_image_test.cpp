// Images under any matrix, against the mean over each pixel of the image interpolated between its pixels.
#include "canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

/// A picture in bytes R, G, B, A, and the image of it.
class Picture {
public:
    Picture(int width, int height)
        : m_width(width), m_height(height),
          m_bytes(4 * static_cast<size_t>(width) * static_cast<size_t>(height)) {}

    int width() const { return m_width; }
    int height() const { return m_height; }
    uint8_t* pixel(int x, int y) {
        return m_bytes.data() +
               4 * (static_cast<size_t>(y) * static_cast<size_t>(m_width) + static_cast<size_t>(x));
    }
    Owned<CGImageRef> image(bool shouldInterpolate = true) const {
        const Owned<CFDataRef> data(
            CFDataCreate(nullptr, m_bytes.data(), static_cast<CFIndex>(m_bytes.size())));
        const Owned<CGDataProviderRef> provider(CGDataProviderCreateWithCFData(data));
        const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
        const auto width = static_cast<size_t>(m_width), height = static_cast<size_t>(m_height);
        return Owned<CGImageRef>(CGImageCreate(width, height, 8, 32, 4 * width, space,
                                               kCGImageAlphaPremultipliedLast, provider, nullptr,
                                               shouldInterpolate, kCGRenderingIntentDefault));
    }
    /// A component at a point, interpolated between the centres of the pixels.
    double at(double u, double v, int component) {
        const double x = std::clamp(u - 0.5, 0.0, m_width - 1.0),
                     y = std::clamp(v - 0.5, 0.0, m_height - 1.0);
        const int x0 = static_cast<int>(x), y0 = static_cast<int>(y);
        const int x1 = std::min(x0 + 1, m_width - 1), y1 = std::min(y0 + 1, m_height - 1);
        const double top = std::lerp(pixel(x0, y0)[component], pixel(x1, y0)[component], x - x0);
        const double bottom = std::lerp(pixel(x0, y1)[component], pixel(x1, y1)[component], x - x0);
        return std::lerp(top, bottom, y - y0);
    }

private:
    int m_width, m_height;
    std::vector<uint8_t> m_bytes;
};

Picture noise(std::mt19937& random, int width, int height, bool isOpaque) {
    Picture picture(width, height);
    const auto byte = [&](int most) {
        return static_cast<uint8_t>(std::uniform_int_distribution<int>(0, most)(random));
    };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            uint8_t* const p = picture.pixel(x, y);
            p[3] = isOpaque ? 255 : byte(255);
            for (int i = 0; i < 3; ++i) p[i] = byte(p[3]);
        }
    return picture;
}

struct Errors {
    double mean = 0;
    int pixels = 0;
};

/// The mean error of the pixels that the unit square under a matrix covers wholly.
Errors errorsOf(const Canvas& canvas, Picture& picture, const CGAffineTransform& unitToPixel) {
    constexpr int kSamples = 16;
    const CGAffineTransform toUnit = CGAffineTransformInvert(unitToPixel);
    Errors errors;
    for (size_t y = 0; y < canvas.height(); ++y)
        for (size_t x = 0; x < canvas.width(); ++x) {
            double sum[4] = {};
            bool isInside = true;
            for (int i = 0; i < kSamples * kSamples && isInside; ++i) {
                const CGPoint p = {static_cast<double>(x) + (i % kSamples + 0.5) / kSamples,
                                   static_cast<double>(y) + (i / kSamples + 0.5) / kSamples};
                const CGPoint q = CGPointApplyAffineTransform(p, toUnit);
                isInside = q.x > 0 && q.x < 1 && q.y > 0 && q.y < 1;
                for (int k = 0; k < 4; ++k)
                    sum[k] += picture.at(q.x * picture.width(), (1 - q.y) * picture.height(), k);
            }
            if (!isInside) continue;
            const auto error = [&](int is, double total) {
                return std::abs(is - total / (kSamples * kSamples));
            };
            const Rgba8 is = canvas.at(x, y);
            errors.mean += std::max(
                {error(is.r, sum[0]), error(is.g, sum[1]), error(is.b, sum[2]), error(is.a, sum[3])});
            ++errors.pixels;
        }
    errors.mean /= std::max(errors.pixels, 1);
    return errors;
}

/// Draws into the unit square under a matrix to pixels, y down.
void drawUnder(const Canvas& canvas, const CGAffineTransform& unitToPixel, CGImageRef image) {
    CGContextSaveGState(canvas);
    CGContextConcatCTM(canvas, unitToPixel);
    CGContextDrawImage(canvas, CGRectMake(0, 0, 1, 1), image);
    CGContextRestoreGState(canvas);
}

// Noise is the hardest of pictures: nothing hides a sample that is left out.
TEST(Image, IsCloseToTheMeanUnderEveryMatrix) {
    std::mt19937 random(5);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const int sizes[] = {1, 2, 5, 16, 33, 100, 200};
    Errors all;
    for (int i = 0; i < 60; ++i) {
        Picture picture = noise(random, sizes[random() % 7], sizes[random() % 7], i % 2);
        CGAffineTransform matrix = CGAffineTransformMakeTranslation(between(20, 44), between(20, 44));
        matrix = CGAffineTransformRotate(matrix, between(-3, 3));
        matrix = CGAffineTransformConcat({1, between(-0.8, 0.8), between(-0.8, 0.8), 1, 0, 0}, matrix);
        matrix = CGAffineTransformScale(matrix, between(5, 60), between(-60, -5));
        matrix = CGAffineTransformTranslate(matrix, -0.5, -0.5);
        const Canvas canvas(64, 64);
        drawUnder(canvas, matrix, picture.image());
        const Errors errors = errorsOf(canvas, picture, matrix);
        EXPECT_LE(errors.mean, 14) << picture.width() << " x " << picture.height() << matrix;
        all.mean += errors.mean * errors.pixels;
        all.pixels += errors.pixels;
    }
    EXPECT_GT(all.pixels, 10'000);
    EXPECT_LE(all.mean / all.pixels, 2.5);
}

// Squares of which a quarter is white, reduced so far that each pixel covers one or more: all are a quarter
// gray.
TEST(Image, HasItsMeanHoweverFarReduced) {
    for (const int reduction : {128, 256})
        for (const double degrees : {0.0, 0.01, 0.5, 30.0, 45.0, 90.01, 200.0}) {
            Picture squares(1024, 1024);
            for (int y = 0; y < 1024; ++y)
                for (int x = 0; x < 1024; ++x)
                    if (x % 32 < 16 && y % 32 < 16) std::fill_n(squares.pixel(x, y), 4, uint8_t{255});
            const double side = 1024.0 / reduction;
            CGAffineTransform matrix = CGAffineTransformMakeTranslation(64, 64);
            matrix = CGAffineTransformRotate(matrix, degrees * 3.14159265358979323846 / 180);
            matrix = CGAffineTransformScale(matrix, side, -side);
            matrix = CGAffineTransformTranslate(matrix, -0.5, -0.5);
            const Canvas canvas(128, 128);
            drawUnder(canvas, matrix, squares.image());
            const int half = std::max(1, static_cast<int>(side * 0.3));
            for (int y = 64 - half; y < 64 + half; ++y)
                for (int x = 64 - half; x < 64 + half; ++x)
                    ASSERT_NEAR(canvas.at(static_cast<size_t>(x), static_cast<size_t>(y)).a, 64, 10)
                        << reduction << " at " << degrees << " degrees: " << x << ", " << y;
        }
}

// What a clip hides does not change what is left.
TEST(Image, LooksTheSameThroughAClip) {
    std::mt19937 random(3);
    const Picture picture = noise(random, 150, 90, false);
    const CGAffineTransform matrices[] = {{50, 13, -9, -40, 10, 45}, {50, 0.01, 0.01, -40, 10, 45},
                                          {50, 0, 0, -40, 10, 45},   {0, -150, -90, 0, 100, 155},
                                          {150, 0, 0, -90, -40, 70}, {900, 300, -250, -800, -300, 500}};
    for (const CGAffineTransform& matrix : matrices)
        for (const CGInterpolationQuality quality : {kCGInterpolationDefault, kCGInterpolationNone}) {
            const Canvas whole(64, 64), parts(64, 64);
            CGContextSetInterpolationQuality(whole, quality);
            CGContextSetInterpolationQuality(parts, quality);
            drawUnder(whole, matrix, picture.image());
            for (const CGRect& part : {CGRectMake(0, 0, 13, 64), CGRectMake(13, 0, 51, 31),
                                       CGRectMake(13, 31, 40, 33), CGRectMake(53, 31, 11, 33)}) {
                CGContextSaveGState(parts);
                CGContextClipToRect(parts, part);
                drawUnder(parts, matrix, picture.image());
                CGContextRestoreGState(parts);
            }
            for (size_t y = 0; y < 64; ++y)
                for (size_t x = 0; x < 64; ++x)
                    ASSERT_EQ(parts.at(x, y), whole.at(x, y)) << matrix << x << ", " << y;
        }
}

// Numbers so extreme that the way from a pixel to the image overflows.
TEST(Image, SurvivesEveryMatrix) {
    std::mt19937 random(4);
    const Picture picture = noise(random, 7, 5, false);
    const double numbers[] = {0, 1, -3, 1e-300, 5e-324, 1e9, -1e155, 1e300, 1.7e308};
    const auto any = [&] { return numbers[random() % std::size(numbers)]; };
    for (int i = 0; i < 2000; ++i) {
        const Canvas canvas(16, 16);
        drawUnder(canvas, {any(), any(), any(), any(), any(), any()}, picture.image());
        ASSERT_TRUE(canvas.isPremultiplied());
    }
}

TEST(Image, ShowsItsPixelsIfItShouldNotBeInterpolated) {
    Picture picture(2, 1);
    std::fill_n(picture.pixel(1, 0), 4, uint8_t{255});
    const struct {
        bool shouldInterpolate;
        CGInterpolationQuality quality;
        bool isSmooth;
    } cases[] = {
        {true, kCGInterpolationDefault, true}, {false, kCGInterpolationDefault, false},
        {true, kCGInterpolationNone, false},   {false, kCGInterpolationNone, false},
        {false, kCGInterpolationHigh, true},   {false, kCGInterpolationLow, true},
        {false, kCGInterpolationMedium, true},
    };
    for (const auto& c : cases) {
        const Canvas canvas(32, 4);
        CGContextSetInterpolationQuality(canvas, c.quality);
        CGContextDrawImage(canvas, CGRectMake(0, 0, 32, 4), picture.image(c.shouldInterpolate));
        EXPECT_EQ(canvas.at(15, 1).a > 64, c.isSmooth) << c.shouldInterpolate << c.quality;
    }
}

TEST(Image, LeavesTheCurrentPath) {
    Picture picture(1, 1);
    const Canvas canvas;
    for (const CGRect& rect : {CGRectMake(1, 1, 9, 9), CGRectMake(90, 1, 9, 9)}) {
        CGContextAddRect(canvas, CGRectMake(2, 3, 4, 5));
        CGContextDrawImage(canvas, rect, picture.image());
        EXPECT_EQ(CGContextGetPathBoundingBox(canvas), CGRectMake(2, 3, 4, 5));
        CGContextBeginPath(canvas);
    }
}

} // namespace
