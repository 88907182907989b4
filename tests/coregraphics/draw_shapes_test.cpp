// Fills and strokes: the painted area compared with geometry, and rows of pixels compared with text.
#include "canvas.h"

#include <CoreGraphics/OZMInterrupt.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kEllipse = 3.1424723; // the area of the four cubics that draw a circle of radius 1

void add(CGContextRef c, const char* path) {
    const auto p = pathFromText(path);
    CGContextAddPath(c, p);
}

struct Fill {
    const char* path;
    CGPathDrawingMode mode;
    double area;
};

TEST(Fill, CoversItsArea) {
    const Fill fills[] = {
        {"M 2 2 L 12 2 L 12 12 L 2 12 Z", kCGPathFill, 100},
        {"M 2.25 2.5 L 12.75 2.5 L 12.75 9.25 L 2.25 9.25 Z", kCGPathFill, 10.5 * 6.75},
        {"M 1 1 L 30 4 L 7 28", kCGPathFill, 0.5 * (29 * 27 - 6 * 3)}, // a fill closes it
        {"M 1 1 L 1.3 30 L 1.1 30 Z", kCGPathFill, 0.5 * 0.2 * 29},    // a sliver
        {"M 2 2 L 22 2 L 22 22 L 2 22 Z M 7 7 L 17 7 L 17 17 L 7 17 Z", kCGPathFill, 400},
        {"M 2 2 L 22 2 L 22 22 L 2 22 Z M 7 7 L 17 7 L 17 17 L 7 17 Z", kCGPathEOFill, 300},
        {"M 2 2 L 22 2 L 22 22 L 2 22 Z M 7 7 L 7 17 L 17 17 L 17 7 Z", kCGPathFill,
         300},                                                              // the hole is wound the other way
        {"M 2 2 L 12 2 L 12 12 M 20 20 L 30 20 L 30 30", kCGPathFill, 100}, // each closed by filling
        {"M -100 -100 L 100 -100 L 100 16 L -100 16 Z", kCGPathFill,
         32 * 16}, // reaches outside on three sides
    };
    for (const Fill& fill : fills) {
        const Canvas canvas;
        add(canvas, fill.path);
        CGContextDrawPath(canvas, fill.mode);
        EXPECT_NEAR(canvas.area(), fill.area, 0.004 * fill.area + 0.05) << fill.path;
        EXPECT_TRUE(CGContextIsPathEmpty(canvas)) << fill.path;
    }
}

TEST(Fill, CurvesAreFlattenedFinely) {
    for (const double radius : {0.7, 3.0, 14.0, 120.0}) {
        const Canvas canvas(256, 256);
        CGContextFillEllipseInRect(canvas,
                                   CGRectMake(128.3 - radius, 127.6 - radius, 2 * radius, 2 * radius));
        // Chords inscribed would lose 2 % of the smallest area and 0.05 % of the largest.
        EXPECT_NEAR(canvas.area(), kEllipse * radius * radius, 0.02 + 0.004 * radius) << radius;
    }
}

struct Stroke {
    const char* name;
    const char* path;
    CGLineCap cap;
    CGLineJoin join;
    double miterLimit;
    double area; // of a line of width 4
};

TEST(Stroke, CapsAndJoinsCoverTheirArea) {
    const double disc = kPi * 4, corner = kPi; // areas of a round dot, and of a round join at a right angle
    const Stroke strokes[] = {
        {"butt", "M 8 16 L 24 16", kCGLineCapButt, kCGLineJoinMiter, 10, 64},
        {"round", "M 8 16 L 24 16", kCGLineCapRound, kCGLineJoinMiter, 10, 64 + disc},
        {"square", "M 8 16 L 24 16", kCGLineCapSquare, kCGLineJoinMiter, 10, 64 + 16},
        {"dot, butt", "M 16 16 L 16 16", kCGLineCapButt, kCGLineJoinMiter, 10, 0},
        {"dot, round", "M 16 16 L 16 16", kCGLineCapRound, kCGLineJoinMiter, 10, disc},
        {"dot, square", "M 16 16 L 16 16", kCGLineCapSquare, kCGLineJoinMiter, 10, 16},
        {"closed dot, round", "M 16 16 Z", kCGLineCapRound, kCGLineJoinMiter, 10, disc},
        {"miter", "M 8 24 L 8 8 L 24 8", kCGLineCapButt, kCGLineJoinMiter, 10, 128 + 0},
        {"miter too long", "M 8 24 L 8 8 L 24 8", kCGLineCapButt, kCGLineJoinMiter, 1.4, 128 - 2},
        {"no miter", "M 8 24 L 8 8 L 24 8", kCGLineCapButt, kCGLineJoinMiter, -10, 128 - 2},
        {"bevel", "M 8 24 L 8 8 L 24 8", kCGLineCapButt, kCGLineJoinBevel, 10, 128 - 2},
        {"round join", "M 8 24 L 8 8 L 24 8", kCGLineCapButt, kCGLineJoinRound, 10, 128 - 4 + corner},
        {"closed", "M 8 8 L 24 8 L 24 24 L 8 24 Z", kCGLineCapButt, kCGLineJoinMiter, 10, 20 * 20 - 12 * 12},
        {"there and back", "M 8 16 L 24 16 L 8 16", kCGLineCapButt, kCGLineJoinBevel, 10, 64},
    };
    for (const Stroke& s : strokes) {
        const Canvas canvas;
        CGContextSetLineWidth(canvas, 4);
        CGContextSetLineCap(canvas, s.cap);
        CGContextSetLineJoin(canvas, s.join);
        CGContextSetMiterLimit(canvas, s.miterLimit);
        add(canvas, s.path);
        CGContextStrokePath(canvas);
        const bool round = s.cap == kCGLineCapRound || s.join == kCGLineJoinRound;
        EXPECT_NEAR(canvas.area(), s.area, round ? 0.4 : 0.12) << s.name;
    }
}

TEST(Stroke, DashesFollowPatternAndPhase) {
    const struct {
        std::vector<CGFloat> lengths;
        double phase;
        const char* row;
    } cases[] = {
        {{4, 2}, 0, ".####..####..####..####..####...\n"},
        {{4, 2}, 5, "..####..####..####..####..####..\n"},
        {{3}, 0, ".###...###...###...###...###....\n"},
        {{}, 7, ".##############################.\n"},
    };
    for (const auto& c : cases) {
        const Canvas canvas(32, 1);
        CGContextSetLineDash(canvas, c.phase, c.lengths.data(), c.lengths.size());
        add(canvas, "M 1 0.5 L 31 0.5");
        CGContextStrokePath(canvas);
        EXPECT_EQ(canvas.rows(), c.row) << c.phase;
    }
}

struct ClosedDash {
    const char* path;
    std::vector<CGFloat> lengths;
    double phase, area; // of a line of width 4 with butt caps and miter joins
};

TEST(Stroke, DashesGoOnPastTheStartOfAClosedSubpath) {
    const double ring = 20 * 20 - 12 * 12;
    const ClosedDash cases[] = {
        {"M 8 8 L 24 8 L 24 24 L 8 24 Z", {30, 0}, 15, ring}, // no gap at all
        {"M 8 8 L 24 8 L 24 24 L 8 24 Z", {16, 0}, 0, ring},  // nor at the corners
        {"M 8 8 L 24 8 L 24 24 L 8 24 Z", {1000, 1}, 0, ring},
        {"M 8 8 L 24 8 L 24 24 L 8 24 Z", {60, 4}, 56, ring - 16},         // the corner at the start is whole
        {"M 8 8 L 24 8 L 24 24 L 8 24 L 8 8", {60, 4}, 56, ring - 16 - 4}, // an open one has no such corner
    };
    for (const ClosedDash& c : cases) {
        const Canvas canvas;
        CGContextSetLineWidth(canvas, 4);
        CGContextSetLineDash(canvas, c.phase, c.lengths.data(), c.lengths.size());
        add(canvas, c.path);
        CGContextStrokePath(canvas);
        EXPECT_NEAR(canvas.area(), c.area, 0.1) << c.path << ' ' << c.lengths[0];
    }
}

TEST(Stroke, SquareDotsFollowTheLine) {
    const Canvas canvas;
    const CGFloat dots[] = {0, 100};
    CGContextSetLineWidth(canvas, 8);
    CGContextSetLineCap(canvas, kCGLineCapSquare);
    CGContextSetLineDash(canvas, 0, dots, 2);
    add(canvas, "M 16 16 L 30 30");
    CGContextStrokePath(canvas);
    EXPECT_NEAR(canvas.area(), 64, 0.2);
    EXPECT_EQ(canvas.at(19, 16).a, 255); // inside a square that stands on its corner only
    EXPECT_EQ(canvas.at(19, 19).a, 0);   // inside an upright square only
}

TEST(Stroke, ANegativeWidthPaintsNothing) {
    const Canvas canvas;
    CGContextStrokeRectWithWidth(canvas, CGRectMake(4, 4, 9, 9), -1);
    EXPECT_EQ(canvas.area(), 0);
    EXPECT_TRUE(CGContextIsPathEmpty(canvas));
}

TEST(Stroke, ContainsNoPointInAGapOfItsDashes) {
    const Canvas canvas;
    const CGFloat dashes[] = {4, 4};
    CGContextSetLineDash(canvas, 0, dashes, 2);
    add(canvas, "M 0 16 L 32 16");
    EXPECT_TRUE(CGContextPathContainsPoint(canvas, {2, 16}, kCGPathStroke));
    EXPECT_FALSE(CGContextPathContainsPoint(canvas, {6, 16}, kCGPathStroke));
}

TEST(Stroke, UsesTheMatrixAtTheTimeOfStroking) {
    const Canvas canvas;
    add(canvas, "M 16 4 L 16 28");
    CGContextScaleCTM(canvas, 6, 0.5); // Affects the pen, not the path that is already there.
    CGContextStrokePath(canvas);
    EXPECT_NEAR(canvas.area(), 6 * 24, 0.2);
}

TEST(Stroke, DrawsNothingAtWidthZeroOrWithASingularMatrix) {
    const Canvas canvas;
    CGContextSetLineWidth(canvas, 0);
    CGContextStrokeRect(canvas, CGRectMake(4, 4, 9, 9));
    CGContextSaveGState(canvas);
    CGContextSetLineWidth(canvas, 3);
    CGContextScaleCTM(canvas, 0, 1);
    CGContextStrokeRect(canvas, CGRectMake(4, 4, 9, 9));
    CGContextFillRect(canvas, CGRectMake(4, 4, 9, 9));
    CGContextRestoreGState(canvas);
    EXPECT_EQ(canvas.area(), 0);
    CGContextFillRect(canvas, CGRectMake(4, 4, 9, 9));
    EXPECT_EQ(canvas.area(), 81);
}

// Shapes that reach extremely far are clipped; their coordinates do not wrap around.
TEST(Robustness, FarCoordinates) {
    for (const double far : {1e5, 1e7, 1e9, 1e20, 1e300}) {
        Canvas canvas;
        const CGPoint halfPlane[] = {{-far, -far}, {far, -far}, {far, 16}, {-far, 16}};
        CGContextAddLines(canvas, halfPlane, 4);
        CGContextFillPath(canvas);
        EXPECT_NEAR(canvas.area(), 32 * 16, 0.1) << far;

        canvas = Canvas();
        CGContextMoveToPoint(canvas, 16, 16);
        CGContextAddLineToPoint(canvas, far, 16);
        CGContextAddLineToPoint(canvas, 16, far);
        CGContextFillPath(canvas);
        EXPECT_NEAR(canvas.area(), 16 * 16, 0.1) << far;

        canvas = Canvas();
        CGContextSetLineWidth(canvas, 4);
        CGContextMoveToPoint(canvas, -far, 16);
        CGContextAddLineToPoint(canvas, far, 16);
        CGContextStrokePath(canvas);
        EXPECT_NEAR(canvas.area(), 32 * 4, 0.2) << far;

        canvas = Canvas(); // the pen is an ellipse of 2 by 8 pixels
        CGContextMoveToPoint(canvas, -far, 16);
        CGContextAddLineToPoint(canvas, far, 16);
        CGContextScaleCTM(canvas, 0.5, 2);
        CGContextSetLineWidth(canvas, 4);
        CGContextStrokePath(canvas);
        EXPECT_NEAR(canvas.area(), 32 * 8, 0.2) << far;
    }
    // A closed subpath that reaches far out keeps the join at its start, inside the bitmap.
    for (const double far : {1e5, 1e6, 1e9}) {
        const Canvas corner;
        CGContextSetLineWidth(corner, 20);
        CGContextMoveToPoint(corner, 20, 20);
        CGContextAddLineToPoint(corner, far, 20);
        CGContextAddLineToPoint(corner, 20, far);
        CGContextClosePath(corner);
        CGContextStrokePath(corner);
        EXPECT_EQ(corner.at(11, 11).a, 255) << far;
        EXPECT_EQ(corner.at(8, 8).a, 0) << far;
    }
    // A polyline that leaves the bitmap on one side and returns on the other is not joined across it.
    const Canvas around;
    add(around, "M 16 20.5 L 1e6 20.5 L 1e6 1e6 L -1e6 1e6 L -1e6 4.5 L 16 4.5");
    CGContextStrokePath(around);
    EXPECT_NEAR(around.area(), 32, 0.1);
    // The crest of an arch whose ends are far away is level across the bitmap.
    for (const double far : {1e5, 1e7, 1e9})
        for (const bool upright : {false, true}) {
            const Canvas canvas;
            if (upright) CGContextConcatCTM(canvas, {0, 1, 1, 0, 0, 0});
            CGContextMoveToPoint(canvas, 10 - far, 11 - far);
            CGContextAddCurveToPoint(canvas, 10 - far / 3, 11 + far / 3, 10 + far / 3, 11 + far / 3, 10 + far,
                                     11 - far);
            CGContextFillPath(canvas);
            EXPECT_NEAR(canvas.area(), 32 * 11, 0.5) << far;
        }
    // An extremely large circle through the centre of the bitmap is a half plane; its stroke is a straight
    // line.
    for (const double radius : {1e5, 1e7, 1e9}) {
        const Canvas canvas, stroked;
        const CGRect circle = CGRectMake(16, 16 - radius, 2 * radius, 2 * radius);
        CGContextFillEllipseInRect(canvas, circle);
        EXPECT_NEAR(canvas.area(), 32 * 16, 1) << radius;
        CGContextSetLineWidth(stroked, 4);
        CGContextStrokeEllipseInRect(stroked, circle);
        EXPECT_NEAR(stroked.area(), 32 * 4, 1) << radius;
    }
    for (const double radius : {1e20, 1e300}) {
        const Canvas canvas, beside;
        CGContextFillEllipseInRect(canvas, CGRectMake(-radius, -radius, 2 * radius, 2 * radius));
        EXPECT_EQ(canvas.area(), 32 * 32) << radius;
        CGContextFillEllipseInRect(beside, CGRectMake(40, -radius, radius, 2 * radius));
        EXPECT_EQ(beside.area(), 0) << radius;
    }
}

// The work of drawing depends on the bitmap and the path, not on how far a pen or a curve reaches. If it took
// too much, the interrupt would abandon the path, and there would be no image.
TEST(Robustness, WidePensAndFarCurves) {
    const struct {
        double width, miterLimit, reach;
        CGAffineTransform matrix;
    } cases[] = {{3e9, 10, 1e9, CGAffineTransformIdentity},
                 {1, 1e12, 1e12, CGAffineTransformIdentity},
                 {3e20, 10, 1e20, CGAffineTransformIdentity},
                 {1, 10, 1e300, {1e60, 0, 0, 1e-60, 0, 0}},
                 {1, 1e9, 1e300, {1e-90, 1e60, 1e60, 1, 0, 0}}};
    OZMSetDrawingInterrupt([](void*) { return true; }, nullptr);
    for (const auto& c : cases) {
        const Canvas canvas;
        const double r = c.reach;
        CGContextMoveToPoint(canvas, 0, 0);
        CGContextAddCurveToPoint(canvas, r, r, -r, -r, 8, 8);
        CGContextAddCurveToPoint(canvas, r, 0, -r, -r, 0, 0);
        CGContextSetLineWidth(canvas, c.width);
        CGContextSetMiterLimit(canvas, c.miterLimit);
        CGContextConcatCTM(canvas, c.matrix);
        CGContextStrokePath(canvas);
        EXPECT_TRUE(Owned<CGImageRef>(CGBitmapContextCreateImage(canvas))) << r;
        EXPECT_TRUE(canvas.area() == 32 * 32 || c.width < r) << r; // A pen as wide covers everything.
    }
    OZMSetDrawingInterrupt(nullptr, nullptr);
}

// The curve's products overflow in the space of the pen, though all of its points are finite.
TEST(Robustness, CurvesInAHugeSpace) {
    const Canvas canvas;
    constexpr double k = 0x1p53, step = 2048 * k;
    CGContextConcatCTM(canvas, {2 * k, 1 / k, -2 * k, 1 / k, 0, 0});
    CGContextMoveToPoint(canvas, 0, 0);
    CGContextAddCurveToPoint(canvas, step, step, 2 * step, 2 * step, 3 * step, 3 * step);
    CGContextSetLineWidth(canvas, 1e-14);
    CGContextSetLineJoin(canvas, kCGLineJoinRound);
    CGContextStrokePath(canvas);
    EXPECT_TRUE(Owned<CGImageRef>(CGBitmapContextCreateImage(canvas)));
}

TEST(Robustness, InfinityAndNaN) {
    const double inf = std::numeric_limits<double>::infinity(),
                 nan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {inf, -inf, nan}) {
        const Canvas canvas;
        add(canvas, "M 4 4 L 20 4");
        CGContextAddLineToPoint(canvas, bad, 9);
        CGContextAddCurveToPoint(canvas, 1, bad, 2, 2, 3, 3);
        CGContextAddLineToPoint(canvas, 20, 20);
        CGContextAddLineToPoint(canvas, 4, 20);
        CGContextFillPath(canvas);
        EXPECT_NEAR(canvas.area(), 256, 0.01);
        CGContextSetLineWidth(canvas, bad);
        CGContextSetMiterLimit(canvas, bad);
        const CGFloat dashes[] = {bad, 1};
        CGContextSetLineDash(canvas, bad, dashes, 2);
        CGContextStrokeRect(canvas, CGRectMake(bad, 1, 5, bad));
        CGContextConcatCTM(canvas, CGAffineTransformMake(bad, 1, 1, bad, 0, 0));
        CGContextFillRect(canvas, CGRectMake(0, 0, 30, 30));
        EXPECT_NEAR(canvas.area(), 256, 0.01);
    }
}

TEST(Robustness, ManyContoursStatesAndDashes) {
    for (const auto& [count, half] : {std::pair{300, 0}, std::pair{301, 128}}) {
        const Canvas evenOdd;
        for (int i = 0; i < count; ++i) add(evenOdd, "M 0 0 L 32 0 L 32 10.5 L 0 10.5 Z");
        CGContextEOFillPath(evenOdd);
        EXPECT_NEAR(evenOdd.at(5, 10).a, half, 1);
        EXPECT_EQ(evenOdd.at(5, 9).a, half ? 255 : 0);
    }
    const Canvas canvas;
    for (int i = 0; i < 300; ++i) add(canvas, "M 0 0 L 32 0 L 32 10.5 L 0 10.5 Z");
    CGContextFillPath(canvas);
    EXPECT_EQ(canvas.at(5, 9).a, 255);
    EXPECT_GE(canvas.at(5, 10).a, 127);
    EXPECT_EQ(canvas.at(5, 11).a, 0);

    for (int i = 0; i < 5000; ++i) {
        CGContextSaveGState(canvas);
        CGContextTranslateCTM(canvas, 1, 0);
    }
    for (int i = 0; i < 6000; ++i) CGContextRestoreGState(canvas);
    EXPECT_EQ(CGContextGetCTM(canvas).tx, 0);

    // Beyond the limit of dashes a line is solid, whether the limit is reached in a dash or in a gap.
    const CGFloat tiny[] = {1e-9, 1e-9};
    for (const double phase : {0.0, 1e-9}) {
        const Canvas line;
        CGContextSetLineDash(line, phase, tiny, 2);
        CGContextMoveToPoint(line, -5e8, 20);
        CGContextAddLineToPoint(line, 5e8, 20);
        CGContextStrokePath(line);
        EXPECT_NEAR(line.area(), 32, 0.5) << phase;
    }
    // Dashes that fit into a bitmap are drawn one by one, however fine.
    const CGFloat fine[] = {0.1, 0.1};
    const Canvas strip(4000, 1);
    CGContextSetLineDash(strip, 0, fine, 2);
    add(strip, "M 0 0.5 L 4000 0.5");
    CGContextStrokePath(strip);
    EXPECT_NEAR(strip.area(), 2000, 10);
    // The limit also keeps a wide pen with round caps from spending long on every dash.
    const Canvas wide;
    CGContextSetLineWidth(wide, 1e8);
    CGContextSetLineCap(wide, kCGLineCapRound);
    CGContextSetLineDash(wide, 0, tiny, 2);
    add(wide, "M 0 0 L 32 32");
    CGContextStrokePath(wide);
    EXPECT_EQ(wide.area(), 32 * 32);
}

// A curve that leaves to the right and arrives going down, whatever its handles: the edges of its butt caps
// are upright and level. A handle just behind its point does not reverse the cap.
TEST(Stroke, CapsOfCurvesStandAcrossTheTangent) {
    const struct {
        const char* path;
        double slack; // in pixels of a column or row
    } cases[] = {
        {"M 8 24 C 24 24 40 40 40 56", 0.15},   {"M 8 24 C 8 24 40 24 40 56", 0.15},
        {"M 8 24 C 40 24 40 56 40 56", 0.15},   {"M 8 24 Q 40 24 40 56", 0.15},
        {"M 8 24 C 7.99 24 40 24 40 56", 0.75}, {"M 8 24 C 40 24 40 56.01 40 56", 0.75},
    };
    for (const auto& c : cases) {
        const Canvas canvas(64, 64);
        CGContextSetLineWidth(canvas, 12);
        add(canvas, c.path);
        CGContextStrokePath(canvas);
        double outside[2] = {}, inside[2] = {}; // of the edges of either cap
        for (size_t i = 0; i < 64; ++i) {
            outside[0] += canvas.at(7, i).a / 255.0;
            inside[0] += canvas.at(8, i).a / 255.0;
            outside[1] += canvas.at(i, 56).a / 255.0;
            inside[1] += canvas.at(i, 55).a / 255.0;
        }
        for (const size_t cap : {0u, 1u}) {
            EXPECT_NEAR(outside[cap], 0, c.slack) << c.path;
            EXPECT_NEAR(inside[cap], 12, c.slack) << c.path;
        }
    }
}

// A short segment between two turns that almost reverse the line has no room for an inner join.
TEST(Stroke, NearlyReversedLinesStayWithinThePensReach) {
    for (int i = 0; i < 500; ++i) {
        const Canvas canvas(80, 80);
        const double scale = 0.8 + 0.0004 * i;
        CGContextScaleCTM(canvas, scale, scale);
        CGContextSetLineJoin(canvas, kCGLineJoinBevel);
        add(canvas, "M 35.9529 57.5727 L 17.2798 57.3978 L 18.0473 57.3979 "
                    "C 14.525 57.3974 13.5769 63.8952 18.8787 63.8958");
        CGContextStrokePath(canvas);
        // Pixels at the edges of what is painted three times may count in full.
        EXPECT_NEAR(canvas.area() / (scale * scale), 28.4, 1.8) << scale;
    }
}

} // namespace
