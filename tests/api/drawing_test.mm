// The pixels that drawInRect: paints. The screen and these contexts have two pixels per point.
#include "api_test_support.h"

#import <Ozmira/Ozmira.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr uint32_t kRed = 0xFF0000FF;
constexpr uint32_t kBlue = 0x0000FFFF;
constexpr size_t kSide = 80; // pixels

class DrawingTest : public ApiTest {
public:
    DrawingTest() { CGContextScaleCTM(canvas.context(), 2, 2); }

    void draw(CGRect rect, std::string_view text) const {
        [[OZMDocument documentWithURL:write("a.svg", text)] drawInRect:rect inContext:canvas.context()];
    }

    /// The smallest rectangle that contains all painted pixels, measured from the top left.
    CGRect painted() const {
        size_t left = kSide, top = kSide, right = 0, bottom = 0;
        for (size_t y = 0; y < kSide; ++y)
            for (size_t x = 0; x < kSide; ++x) {
                if (canvas.pixel(x, y) == 0) continue;
                left = std::min(left, x), right = std::max(right, x + 1);
                top = std::min(top, y), bottom = std::max(bottom, y + 1);
            }
        if (left >= right) return CGRectZero;
        return CGRectMake(static_cast<CGFloat>(left), static_cast<CGFloat>(top),
                          static_cast<CGFloat>(right - left), static_cast<CGFloat>(bottom - top));
    }

    const Canvas canvas{kSide, kSide};
};

std::vector<CGFloat> numbers(CGRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

TEST_F(DrawingTest, IsCentredAndUprightWhereYPointsUp) {
    draw(CGRectMake(4, 10, 30, 20), redOverBlue(10, 10)); // fitted into 20 x 20 points
    EXPECT_EQ(numbers(painted()),
              numbers(CGRectMake(18, 20, 40, 40))); // 9 points from the left, 10 from top and bottom
    EXPECT_EQ(canvas.pixel(38, 21), kRed);
    EXPECT_EQ(canvas.pixel(38, 58), kBlue);
}

// Where y points down, CGContextDrawImage draws every image upside down, and so this one.
TEST_F(DrawingTest, IsCentredAndUpsideDownWhereYPointsDown) {
    CGContextTranslateCTM(canvas.context(), 0, 40);
    CGContextScaleCTM(canvas.context(), 1, -1);
    draw(CGRectMake(4, 2, 30, 20), redOverBlue(10, 10));
    EXPECT_EQ(numbers(painted()), numbers(CGRectMake(18, 4, 40, 40)));
    EXPECT_EQ(canvas.pixel(38, 5), kBlue);
    EXPECT_EQ(canvas.pixel(38, 42), kRed);
}

TEST_F(DrawingTest, RoundsTheOriginToWholePoints) {
    struct {
        CGFloat scale;
        CGRect rect;
        CGRect expected; // in pixels of the context, from the top left
    } const cases[] = {
        {2, {{3.4, 3.6}, {10, 10}}, {{6, 52}, {20, 20}}},
        {2, {{0, 0}, {20, 25}}, {{0, 34}, {40, 40}}},       // (25 - 20) / 2 rounds to 3
        {2, {{0.5, -0.5}, {10, 10}}, {{2, 62}, {20, 18}}},  // halves round away from zero: 1 and -1
        {2, {{0, 0}, {10.25, 10.25}}, {{0, 59}, {21, 21}}}, // rounded up to 21 pixels, so x is -0.125 points
        {1, {{0, 0}, {10.25, 10.25}}, {{0, 58}, {22, 22}}}, // an image of 11 pixels, enlarged
        {3, {{0, 0}, {10.5, 10.5}}, {{0, 58}, {22, 22}}},   // an image of 32 pixels, reduced to 21 1/3
    };
    for (const auto& test : cases) {
        UIScreen.mainScreen.scale = test.scale;
        CGContextClearRect(canvas.context(), CGRectMake(0, 0, 40, 40));
        draw(test.rect, redOverBlue(10, 10));
        EXPECT_EQ(numbers(painted()), numbers(test.expected)) << test.scale;
    }
    UIScreen.mainScreen.scale = 2;
}

TEST_F(DrawingTest, UsesTheDefaultFillColor) {
    OZMDocument* const document = [OZMDocument documentWithURL:write("a.svg", kUnfilled)];
    [document drawInRect:CGRectMake(0, 0, 40, 40)
               inContext:canvas.context()
        defaultFillColor:UIColor.redColor];
    EXPECT_EQ(canvas.pixel(40, 40), kRed);
}

TEST_F(DrawingTest, DrawsNothingIntoExtremeRectanglesOrNoContext) {
    draw(CGRectMake(NAN, 0, 10, 10), redOverBlue(10, 10));
    draw(CGRectMake(0, 0, 1e12, 1e12), redOverBlue(10, 10));
    draw(CGRectMake(1e300, -INFINITY, 10, 10), redOverBlue(10, 10));
    EXPECT_EQ(numbers(painted()), numbers(CGRectZero));
    [[OZMDocument documentWithURL:url("a.svg")] drawInRect:CGRectMake(0, 0, 10, 10) inContext:nullptr];
}

} // namespace
