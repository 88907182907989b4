// Queries of a context, and its path, clip and colours through every function that sets them.
#include "canvas.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(Context, ConvertsBetweenUserAndDeviceSpace) {
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    const Owned<CGContextRef> c(
        CGBitmapContextCreate(nullptr, 40, 20, 8, 0, space, kCGImageAlphaPremultipliedLast));
    EXPECT_EQ(CGContextGetCTM(c), CGAffineTransformIdentity);
    CGContextTranslateCTM(c, 4, 5);
    CGContextScaleCTM(c, 2, 4);
    EXPECT_EQ(CGContextGetCTM(c), CGAffineTransformMake(2, 0, 0, 4, 4, 5));
    EXPECT_EQ(CGContextGetUserSpaceToDeviceSpaceTransform(c), CGContextGetCTM(c));
    EXPECT_EQ(CGContextConvertPointToDeviceSpace(c, {1, 2}), CGPointMake(6, 13));
    EXPECT_EQ(CGContextConvertPointToUserSpace(c, {6, 13}), CGPointMake(1, 2));
    EXPECT_TRUE(CGSizeEqualToSize(CGContextConvertSizeToDeviceSpace(c, {1, 2}), {2, 8}));
    EXPECT_TRUE(CGSizeEqualToSize(CGContextConvertSizeToUserSpace(c, {2, 8}), {1, 2}));
    EXPECT_EQ(CGContextConvertRectToDeviceSpace(c, {{1, 2}, {3, 4}}), CGRectMake(6, 13, 6, 16));
    EXPECT_EQ(CGContextConvertRectToUserSpace(c, {{6, 13}, {6, 16}}), CGRectMake(1, 2, 3, 4));

    EXPECT_EQ(CGBitmapContextGetWidth(c), 40u);
    EXPECT_EQ(CGBitmapContextGetHeight(c), 20u);
    EXPECT_EQ(CGBitmapContextGetBitsPerComponent(c), 8u);
    EXPECT_EQ(CGBitmapContextGetBitsPerPixel(c), 32u);
    EXPECT_GE(CGBitmapContextGetBytesPerRow(c), 160u);
    EXPECT_EQ(CGBitmapContextGetColorSpace(c), space.get());
    EXPECT_EQ(CGBitmapContextGetAlphaInfo(c), kCGImageAlphaPremultipliedLast);
    EXPECT_EQ(CGBitmapContextGetBitmapInfo(c), CGBitmapInfo{kCGImageAlphaPremultipliedLast});
    const Owned<CGImageRef> image(CGBitmapContextCreateImage(c));
    EXPECT_EQ(CGImageGetWidth(image), 40u);
    EXPECT_EQ(CGImageGetHeight(image), 20u);
    EXPECT_EQ(CGImageGetBytesPerRow(image), CGBitmapContextGetBytesPerRow(c));
    EXPECT_EQ(CGImageGetColorSpace(image), space.get());
    EXPECT_EQ(CGImageGetBitmapInfo(image), CGBitmapInfo{kCGImageAlphaPremultipliedLast});
}

// Each function appends to the current path what its counterpart appends to a path, mapped by the matrix.
TEST(Context, AddsToItsPathAsPathsDo) {
    const struct {
        const char* name;
        void (*toContext)(CGContextRef c);
        void (*toPath)(CGMutablePathRef p);
    } cases[] = {
        {"quad", [](auto c) { CGContextAddQuadCurveToPoint(c, 1, 2, 3, 4); },
         [](auto p) { CGPathAddQuadCurveToPoint(p, nullptr, 1, 2, 3, 4); }},
        {"cubic", [](auto c) { CGContextAddCurveToPoint(c, 1, 2, 3, 4, 5, 6); },
         [](auto p) { CGPathAddCurveToPoint(p, nullptr, 1, 2, 3, 4, 5, 6); }},
        {"close", [](auto c) { CGContextClosePath(c); }, [](auto p) { CGPathCloseSubpath(p); }},
        {"rects",
         [](auto c) {
             const CGRect rects[] = {{{1, 2}, {3, 4}}, {{9, 9}, {-1, -2}}};
             CGContextAddRects(c, rects, 2);
         },
         [](auto p) {
             CGPathAddRect(p, nullptr, {{1, 2}, {3, 4}});
             CGPathAddRect(p, nullptr, {{9, 9}, {-1, -2}});
         }},
        {"lines",
         [](auto c) {
             const CGPoint points[] = {{1, 1}, {2, 2}, {3, 1}};
             CGContextAddLines(c, points, 3);
         },
         [](auto p) {
             const CGPoint points[] = {{1, 1}, {2, 2}, {3, 1}};
             CGPathAddLines(p, nullptr, points, 3);
         }},
        {"no lines", [](auto c) { CGContextAddLines(c, &CGPointZero, 0); }, [](auto) {}},
        {"ellipse",
         [](auto c) {
             CGContextAddEllipseInRect(c, {{1, 2}, {3, 4}});
         },
         [](auto p) {
             CGPathAddEllipseInRect(p, nullptr, {{1, 2}, {3, 4}});
         }},
        {"arc", [](auto c) { CGContextAddArc(c, 1, 2, 3, 0.5, 2, 0); },
         [](auto p) { CGPathAddArc(p, nullptr, 1, 2, 3, 0.5, 2, false); }},
        {"clockwise arc", [](auto c) { CGContextAddArc(c, 1, 2, 3, 0.5, 2, 1); },
         [](auto p) { CGPathAddArc(p, nullptr, 1, 2, 3, 0.5, 2, true); }},
        {"arc to point", [](auto c) { CGContextAddArcToPoint(c, 9, 8, 9, 20, 2); },
         [](auto p) { CGPathAddArcToPoint(p, nullptr, 9, 8, 9, 20, 2); }},
        {"path", [](auto c) { CGContextAddPath(c, pathFromText("M 1 2 L 3 4 Z")); },
         [](auto p) { CGPathAddPath(p, nullptr, pathFromText("M 1 2 L 3 4 Z")); }},
    };
    for (const CGAffineTransform& m :
         {CGAffineTransformMake(2, 0, 0, -4, 8, 16), CGAffineTransformMake(0, 2, 4, 0, 8, 16),
          CGAffineTransformMake(0, 2, 4, 1, 8, 16), CGAffineTransformMake(1, 1, -1, 1, 8, 16)})
        for (const auto& each : cases) {
            const Canvas c;
            const auto path = pathFromText("M 7 8 L 5 6");
            CGContextConcatCTM(c, m);
            CGContextMoveToPoint(c, 7, 8);
            CGContextAddLineToPoint(c, 5, 6);
            each.toContext(c);
            each.toPath(path);
            const CGPoint current = CGPathGetCurrentPoint(path), found = CGContextGetPathCurrentPoint(c);
            EXPECT_NEAR(found.x, current.x, 1e-9) << each.name;
            EXPECT_NEAR(found.y, current.y, 1e-9) << each.name;
            const Owned<CGPathRef> copy(CGContextCopyPath(c));
            EXPECT_EQ(textOf(copy), textOf(path)) << each.name << m;
            const bool isUpright = m.d == 0 || m.b == 0;
            const CGRect box = CGContextGetPathBoundingBox(c), exact = CGPathGetBoundingBox(path);
            EXPECT_TRUE(CGRectContainsRect(CGRectInset(box, -1e-9, -1e-9), exact)) << each.name;
            if (isUpright || textOf(path).find('C') == std::string::npos) {
                EXPECT_TRUE(CGRectContainsRect(CGRectInset(exact, -1e-9, -1e-9), box)) << each.name << box;
            }
            EXPECT_FALSE(CGContextIsPathEmpty(c));
            CGContextBeginPath(c);
            EXPECT_TRUE(CGContextIsPathEmpty(c));
            EXPECT_EQ(CGContextGetPathCurrentPoint(c), CGPointZero);
            EXPECT_TRUE(CGRectIsNull(CGContextGetPathBoundingBox(c)));
            EXPECT_EQ(CGContextCopyPath(c), nullptr);
        }
}

// The line width is 4.
TEST(Context, KnowsWhichPointsDrawingWouldPaint) {
    const struct {
        const char* name;
        CGPoint point;
        bool fill, evenOddFill, stroke; // by either kind of drawing alone
    } cases[] = {
        {"inside of one", {6, 16}, true, true, false},
        {"inside of both", {16, 16}, true, false, false},
        {"on the inner line", {9, 16}, true, true, true},
        {"across it", {11, 16}, true, false, true},
        {"beside the outer line", {1, 16}, false, false, true},
        {"far outside", {-1, 16}, false, false, false},
    };
    for (const double scale : {1.0, 3.0}) {
        const Canvas c;
        CGContextScaleCTM(c, scale, scale);
        CGContextSetLineWidth(c, 4);
        CGContextAddRect(c, CGRectMake(2, 2, 28, 28));
        CGContextAddRect(c, CGRectMake(10, 10, 12, 12));
        for (const auto& each : cases) {
            const auto contains = [&](CGPathDrawingMode mode) {
                return CGContextPathContainsPoint(c, each.point, mode);
            };
            EXPECT_EQ(contains(kCGPathFill), each.fill) << each.name;
            EXPECT_EQ(contains(kCGPathEOFill), each.evenOddFill) << each.name;
            EXPECT_EQ(contains(kCGPathStroke), each.stroke) << each.name;
            EXPECT_EQ(contains(kCGPathFillStroke), each.fill || each.stroke) << each.name;
            EXPECT_EQ(contains(kCGPathEOFillStroke), each.evenOddFill || each.stroke) << each.name;
        }
    }
}

TEST(Context, DrawsByEveryFunction) {
    const struct {
        const char* name;
        void (*draw)(CGContextRef c);
        double area;
    } cases[] = {
        {"two of three points, then none",
         [](auto c) {
             const CGPoint points[] = {{2, 2.5}, {12, 2.5}, {2, 8.5}, {12, 8.5}, {20, 20}};
             CGContextStrokeLineSegments(c, points, 5);
         },
         20},
        {"overlapping rects",
         [](auto c) {
             const CGRect rects[] = {{{2, 2}, {4, 4}}, {{4, 4}, {4, 4}}};
             CGContextFillRects(c, rects, 2);
         },
         28},
        {"nested rects, stroked over",
         [](auto c) {
             CGContextSetLineWidth(c, 2);
             CGContextAddRect(c, CGRectMake(4, 4, 20, 20));
             CGContextAddRect(c, CGRectMake(9, 9, 10, 10));
             CGContextDrawPath(c, kCGPathFillStroke);
         },
         22 * 22},
        {"the same, even-odd",
         [](auto c) {
             CGContextSetLineWidth(c, 2);
             CGContextAddRect(c, CGRectMake(4, 4, 20, 20));
             CGContextAddRect(c, CGRectMake(9, 9, 10, 10));
             CGContextDrawPath(c, kCGPathEOFillStroke);
         },
         22 * 22 - 8 * 8},
        {"a rect with a width of its own, then one without",
         [](auto c) {
             CGContextStrokeRectWithWidth(c, CGRectMake(4, 4, 8, 8), 4);
             CGContextStrokeRect(c, CGRectMake(18.5, 18.5, 8, 8));
         },
         (12 * 12 - 4 * 4) + (9 * 9 - 7 * 7)},
        {"a hole, then more",
         [](auto c) {
             CGContextFillRect(c, CGRectMake(2, 2, 10, 10));
             CGContextClearRect(c, CGRectMake(4, 4, 2, 2));
             CGContextFillRect(c, CGRectMake(20, 20, 3, 3));
         },
         100 - 4 + 9},
        {"clip to rects",
         [](auto c) {
             const CGRect rects[] = {{{2, 2}, {4, 4}}, {{4, 4}, {4, 4}}};
             CGContextClipToRects(c, rects, 2);
             CGContextFillRect(c, CGRectMake(0, 0, 32, 32));
         },
         28},
        {"a path forgotten by what draws a shape of its own",
         [](auto c) {
             CGContextAddRect(c, CGRectMake(2, 2, 20, 20));
             CGContextFillRect(c, CGRectMake(4, 4, 2, 2));
             CGContextAddRect(c, CGRectMake(2, 2, 20, 20));
             CGContextStrokeRect(c, CGRectMake(20.5, 20.5, 2, 2));
             CGContextAddRect(c, CGRectMake(2, 2, 20, 20));
             CGContextStrokeLineSegments(c, nullptr, 0);
             CGContextAddRect(c, CGRectMake(2, 2, 20, 20));
             CGContextFillEllipseInRect(c, CGRectMake(8, 8, 0, 2));
             CGContextAddRect(c, CGRectMake(2, 2, 20, 20));
             CGContextStrokeEllipseInRect(c, CGRectMake(8, 8, 0, 0));
         },
         4 + 9 - 1},
        {"shapes side by side, blended",
         [](auto c) {
             const CGRect rects[] = {{{2, 2}, {4, 4}}, {{20, 2}, {4, 4}}};
             CGContextSetBlendMode(c, kCGBlendModeXOR);
             CGContextFillRects(c, rects, 2);
         },
         32},
        {"settings without an effect",
         [](auto c) {
             CGContextSetFlatness(c, 1e9);
             CGContextSetRenderingIntent(c, kCGRenderingIntentSaturation);
             CGContextFillRect(c, CGRectMake(2, 2, 5, 5));
             CGContextFlush(c);
         },
         25},
        {"whole pixels in spite of antialiasing",
         [](auto c) {
             CGContextSetAllowsAntialiasing(c, false);
             CGContextSetShouldAntialias(c, true);
             CGContextFillRect(c, CGRectMake(2.2, 2.2, 4, 4));
         },
         16},
    };
    for (const auto& each : cases) {
        const Canvas canvas;
        each.draw(canvas);
        EXPECT_NEAR(canvas.area(), each.area, 0.02) << each.name;
    }
}

TEST(Context, ClipHasABox) {
    const Canvas c;
    EXPECT_EQ(CGContextGetClipBoundingBox(c), CGRectMake(0, 0, 32, 32));
    CGContextScaleCTM(c, 2, 4);
    CGContextClipToRect(c, CGRectMake(1, 2, 3, 4));
    EXPECT_EQ(CGContextGetClipBoundingBox(c), CGRectMake(1, 2, 3, 4));
    CGContextClip(c);
    EXPECT_TRUE(CGRectIsNull(CGContextGetClipBoundingBox(c)));
}

TEST(Context, ColoursComeFromEverySpace) {
    const Owned<CGColorSpaceRef> rgb(CGColorSpaceCreateDeviceRGB()), gray(CGColorSpaceCreateDeviceGray());
    const Owned<CGColorRef> red(CGColorCreateSRGB(1, 0, 0, 1)), faint(CGColorCreateGenericGray(1, 0.4));
    const CGFloat components[] = {0.2, 1, 0.6, 1};
    const Canvas c(2, 1);
    const auto drawn = [&] { // the fill on the left, the stroke on the right
        CGContextClearRect(c, CGRectMake(0, 0, 2, 1));
        CGContextFillRect(c, CGRectMake(0, 0, 1, 1));
        CGContextMoveToPoint(c, 1.5, 0);
        CGContextAddLineToPoint(c, 1.5, 1);
        CGContextStrokePath(c);
        return std::pair(c.at(0, 0), c.at(1, 0));
    };
    const Rgba8 black = {0, 0, 0, 255}, white = {102, 102, 102, 102}, mint = {51, 255, 153, 255};
    EXPECT_EQ(drawn(), std::pair(black, black));
    CGContextSetFillColorWithColor(c, red);
    CGContextSetStrokeColorWithColor(c, faint);
    EXPECT_EQ(drawn(), std::pair(Rgba8{255, 0, 0, 255}, white));
    CGContextSetFillColorSpace(c, rgb);
    CGContextSetStrokeColorSpace(c, gray);
    EXPECT_EQ(drawn(), std::pair(black, black));
    CGContextSetFillColor(c, components);
    CGContextSetStrokeColor(c, components);
    EXPECT_EQ(drawn(), std::pair(mint, Rgba8{51, 51, 51, 255}));
    CGContextSetFillColorSpace(c, gray);
    CGContextSetStrokeColorSpace(c, rgb);
    EXPECT_EQ(drawn(), std::pair(black, black));
    CGContextSetGrayFillColor(c, 1, 0.4);
    CGContextSetRGBStrokeColor(c, 0.2, 1, 0.6, 1);
    EXPECT_EQ(drawn(), std::pair(white, mint));
}

TEST(Context, NullIsNoContextAndNoArgument) {
    for (const bool isNull : {true, false}) {
        const Canvas canvas;
        CGContextRef const c = isNull ? nullptr : canvas.operator CGContextRef();
        CGContextAddRects(c, nullptr, 2);
        CGContextAddLines(c, nullptr, 2);
        CGContextAddPath(c, nullptr);
        CGContextFillRects(c, nullptr, 2);
        CGContextStrokeLineSegments(c, nullptr, 4);
        CGContextSetFillColorWithColor(c, nullptr);
        CGContextSetStrokeColorWithColor(c, nullptr);
        CGContextSetFillColorSpace(c, nullptr);
        CGContextSetStrokeColorSpace(c, nullptr);
        CGContextSetFillColor(c, nullptr);
        CGContextSetStrokeColor(c, nullptr);
        CGContextDrawImage(c, CGRectMake(0, 0, 9, 9), nullptr);
        CGContextDrawLinearGradient(c, nullptr, {}, {9, 9}, 0);
        CGContextDrawRadialGradient(c, nullptr, {}, 0, {9, 9}, 4, 0);
        CGContextSetLineDash(c, 0, nullptr, 3);
        EXPECT_EQ(canvas.area(), 0);
    }
    const CGRect rect = CGRectMake(1, 2, 3, 4);
    CGContextSaveGState(nullptr);
    CGContextRestoreGState(nullptr);
    CGContextConcatCTM(nullptr, CGAffineTransformIdentity);
    CGContextScaleCTM(nullptr, 1, 1);
    CGContextTranslateCTM(nullptr, 1, 1);
    CGContextRotateCTM(nullptr, 1);
    CGContextSetLineWidth(nullptr, 1);
    CGContextSetLineCap(nullptr, kCGLineCapRound);
    CGContextSetLineJoin(nullptr, kCGLineJoinRound);
    CGContextSetMiterLimit(nullptr, 1);
    CGContextSetAlpha(nullptr, 1);
    CGContextSetBlendMode(nullptr, kCGBlendModeCopy);
    CGContextSetShouldAntialias(nullptr, true);
    CGContextSetAllowsAntialiasing(nullptr, true);
    CGContextSetInterpolationQuality(nullptr, kCGInterpolationNone);
    CGContextSetGrayFillColor(nullptr, 1, 1);
    CGContextSetGrayStrokeColor(nullptr, 1, 1);
    CGContextSetRGBFillColor(nullptr, 1, 1, 1, 1);
    CGContextSetRGBStrokeColor(nullptr, 1, 1, 1, 1);
    CGContextBeginPath(nullptr);
    CGContextMoveToPoint(nullptr, 1, 1);
    CGContextAddLineToPoint(nullptr, 1, 1);
    CGContextAddCurveToPoint(nullptr, 1, 1, 1, 1, 1, 1);
    CGContextAddQuadCurveToPoint(nullptr, 1, 1, 1, 1);
    CGContextClosePath(nullptr);
    CGContextAddRect(nullptr, rect);
    CGContextAddLines(nullptr, &rect.origin, 1);
    CGContextAddEllipseInRect(nullptr, rect);
    CGContextAddArc(nullptr, 1, 1, 1, 0, 1, 0);
    CGContextAddArcToPoint(nullptr, 1, 1, 2, 2, 1);
    CGContextAddPath(nullptr, pathFromText("M 1 1"));
    CGContextDrawPath(nullptr, kCGPathFillStroke);
    CGContextStrokeRectWithWidth(nullptr, rect, 1);
    CGContextClearRect(nullptr, rect);
    CGContextClip(nullptr);
    CGContextEOClip(nullptr);
    EXPECT_TRUE(CGContextIsPathEmpty(nullptr));
    EXPECT_EQ(CGContextGetPathCurrentPoint(nullptr), CGPointZero);
    EXPECT_TRUE(CGRectIsNull(CGContextGetPathBoundingBox(nullptr)));
    EXPECT_TRUE(CGRectIsNull(CGContextGetClipBoundingBox(nullptr)));
    EXPECT_EQ(CGContextCopyPath(nullptr), nullptr);
    EXPECT_FALSE(CGContextPathContainsPoint(nullptr, {1, 1}, kCGPathFill));
    EXPECT_EQ(CGContextGetInterpolationQuality(nullptr), kCGInterpolationDefault);
    EXPECT_EQ(CGContextGetCTM(nullptr), CGAffineTransformIdentity);
    EXPECT_EQ(CGBitmapContextGetData(nullptr), nullptr);
    EXPECT_EQ(CGBitmapContextGetWidth(nullptr) + CGBitmapContextGetHeight(nullptr), 0u);
    EXPECT_EQ(CGBitmapContextGetBytesPerRow(nullptr) + CGBitmapContextGetBitsPerPixel(nullptr), 0u);
    EXPECT_EQ(CGBitmapContextGetBitsPerComponent(nullptr) + CGBitmapContextGetBitmapInfo(nullptr), 0u);
    EXPECT_EQ(CGBitmapContextGetColorSpace(nullptr), nullptr);
    EXPECT_EQ(CGBitmapContextCreateImage(nullptr), nullptr);
}

} // namespace
