#include "owned.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

struct Pen {
    double width = 2;
    CGLineCap cap = kCGLineCapButt;
    CGLineJoin join = kCGLineJoinMiter;
    double miterLimit = 10;
};

Owned<CGPathRef> stroked(CGPathRef path, const Pen& pen, const CGAffineTransform* transform = nullptr) {
    return Owned<CGPathRef>(
        CGPathCreateCopyByStrokingPath(path, transform, pen.width, pen.cap, pen.join, pen.miterLimit));
}

void expectNear(CGRect found, CGRect expected, double tolerance, const char* what) {
    ASSERT_EQ(CGRectIsNull(found), CGRectIsNull(expected)) << what << found;
    if (CGRectIsNull(expected)) return;
    EXPECT_NEAR(CGRectGetMinX(found), CGRectGetMinX(expected), tolerance) << what;
    EXPECT_NEAR(CGRectGetMinY(found), CGRectGetMinY(expected), tolerance) << what;
    EXPECT_NEAR(CGRectGetMaxX(found), CGRectGetMaxX(expected), tolerance) << what;
    EXPECT_NEAR(CGRectGetMaxY(found), CGRectGetMaxY(expected), tolerance) << what;
}

struct OutlineCase {
    const char* path;
    Pen pen;
    CGRect box;
};

const OutlineCase kOutlines[] = {
    {"M 0 0 L 10 0", {2, kCGLineCapButt}, {{0, -1}, {10, 2}}},
    {"M 0 0 L 10 0", {2, kCGLineCapSquare}, {{-1, -1}, {12, 2}}},
    {"M 0 0 L 10 0", {2, kCGLineCapRound}, {{-1, -1}, {12, 2}}},
    {"M 3 4 L 3 4", {2, kCGLineCapButt}, CGRectNull},
    {"M 3 4 L 3 4", {2, kCGLineCapSquare}, {{2, 3}, {2, 2}}},
    {"M 3 4 L 3 4", {2, kCGLineCapRound}, {{2, 3}, {2, 2}}},
    {"M 3 4 Z", {2, kCGLineCapRound}, {{2, 3}, {2, 2}}},
    {"M 3 4", {2, kCGLineCapRound}, CGRectNull},
    {"M 0 0 L 10 0", {0, kCGLineCapRound}, CGRectNull},
    {"M 0 0 L 10 0", {-2, kCGLineCapRound}, CGRectNull},
    {"M 0 0 L 10 0 L 10 10 L 0 10 Z", {2}, {{-1, -1}, {12, 12}}},
    {"M 0 0 L 10 0 L 10 10", {2, kCGLineCapButt, kCGLineJoinMiter}, {{0, -1}, {11, 11}}},
    // At a right angle, the miter is 1.41 times as long as the line is wide.
    {"M 0 10 L 0 0 L 10 10",
     {2, kCGLineCapButt, kCGLineJoinMiter, 3},
     {{-1, -2.414214}, {11.707107, 13.121320}}},
    {"M 0 10 L 0 0 L 10 10",
     {2, kCGLineCapButt, kCGLineJoinMiter, 2},
     {{-1, -0.707107}, {11.707107, 11.414214}}},
    {"M 0 10 L 0 0 L 10 10", {2, kCGLineCapButt, kCGLineJoinRound}, {{-1, -1}, {11.707107, 11.707107}}},
    {"M 0 0 C 0 8 12 8 12 0", {2, kCGLineCapButt}, {{-1, 0}, {14, 7}}},
    {"M 0 0 L 10 0 L 0 0", {2, kCGLineCapButt, kCGLineJoinRound}, {{0, -1}, {11, 2}}},
};

constexpr double kTolerance = 0.01; // for flattened curves and round caps

TEST(StrokedPath, HasTheBoundsOfTheStroke) {
    for (const OutlineCase& c : kOutlines)
        expectNear(CGPathGetBoundingBox(stroked(pathFromText(c.path), c.pen)), c.box, kTolerance, c.path);
}

TEST(StrokedPath, HasTheSameShapeAtEveryScale) {
    for (const double scale : {1e-300, 1e-9, 1e9, 1e300}) {
        const CGAffineTransform m = CGAffineTransformMakeScale(scale, scale);
        for (const OutlineCase& c : kOutlines) {
            const Owned<CGPathRef> path(CGPathCreateCopyByTransformingPath(pathFromText(c.path), &m));
            Pen pen = c.pen;
            pen.width *= scale;
            const CGRect box = CGPathGetBoundingBox(stroked(path, pen));
            expectNear(CGRectIsNull(box) ? box
                                         : CGRectMake(box.origin.x / scale, box.origin.y / scale,
                                                      box.size.width / scale, box.size.height / scale),
                       c.box, kTolerance, c.path);
        }
    }
}

TEST(StrokedPath, CoversThePenAndNothingElse) {
    const Owned<CGPathRef> circle(CGPathCreateWithEllipseInRect(CGRectMake(-10, -10, 20, 20), nullptr));
    const auto ring = stroked(circle, {2});
    for (int degrees = 0; degrees < 360; degrees += 5) {
        const double x = std::cos(degrees * 0.017453292519943295),
                     y = std::sin(degrees * 0.017453292519943295);
        for (const double radius : {0.0, 8.99, 11.01, 15.0})
            EXPECT_FALSE(CGPathContainsPoint(ring, nullptr, {radius * x, radius * y}, false)) << radius;
        for (const double radius : {9.01, 10.0, 10.98})
            EXPECT_TRUE(CGPathContainsPoint(ring, nullptr, {radius * x, radius * y}, false)) << radius;
    }
}

// A line meets a curve at 30 degrees: however soon the curve bends away, the miter is that of its tangent.
TEST(StrokedPath, JoinsCurvesByTheirTangents) {
    constexpr double kDirectionX = -0.86602540378443865, kDirectionY = 0.5; // of 150 degrees
    for (const double handle : {40.0, 20.0, 10.0, 5.0}) {
        const Owned<CGMutablePathRef> corner(CGPathCreateMutable());
        CGPathMoveToPoint(corner, nullptr, 0, 0);
        CGPathAddLineToPoint(corner, nullptr, 50, 0);
        CGPathAddCurveToPoint(corner, nullptr, 50 + handle * kDirectionX, handle * kDirectionY, 0, 60, 0, 80);
        // 10 / sin(15 degrees) along the bisector from the corner
        const CGRect box = CGPathGetBoundingBox(stroked(corner, {.width = 20}));
        EXPECT_NEAR(CGRectGetMaxX(box), 50 + 37.3205, 0.01) << handle;
    }
}

// At corners this sharp, rounding dominates the sum of the two normals.
TEST(StrokedPath, MitersStayWithinTheirLimit) {
    constexpr double kLimit = 1e8;
    double longest = 0; // distance from the corner; the half width is 1
    for (int i = 0; i < 4000; ++i) {
        const double direction = 0.01 * i, angle = 1e-8 + 1e-11 * i;
        const Owned<CGMutablePathRef> corner(CGPathCreateMutable());
        CGPathMoveToPoint(corner, nullptr, std::cos(direction), std::sin(direction));
        CGPathAddLineToPoint(corner, nullptr, 0, 0);
        CGPathAddLineToPoint(corner, nullptr, std::cos(direction + angle), std::sin(direction + angle));
        const CGRect box = CGPathGetBoundingBox(stroked(corner, {.miterLimit = kLimit}));
        longest = std::max({longest, std::hypot(CGRectGetMinX(box), CGRectGetMinY(box)),
                            std::hypot(CGRectGetMaxX(box), CGRectGetMaxY(box))});
    }
    EXPECT_NEAR(longest, kLimit, 1e-3 * kLimit);
}

TEST(StrokedPath, IsTransformedWithItsPen) {
    const CGAffineTransform m = CGAffineTransformMake(3, 0, 0, 1, 100, 0);
    const auto outline = stroked(pathFromText("M 0 0 L 0 10"), {2}, &m);
    expectNear(CGPathGetBoundingBox(outline), CGRectMake(97, 0, 6, 10), 1e-9, "vertical line");
}

TEST(StrokedPath, AcceptsExtremeNumbers) {
    for (const double width : {kInf, std::nan(""), 1e308, 5e-324})
        for (const char* path :
             {"M 0 0 L 1 1 C 1e300 0 0 -1e300 5 5 Z", "M -1e308 0 L 1e308 1e308 L 0 -1e308 Z",
              "M 0 0 C 5e-324 0 0 5e-324 0 0", "M 0 0 L 1e-300 0 L 1e300 0"}) {
            const auto outline =
                stroked(pathFromText(path), {width, kCGLineCapRound, kCGLineJoinRound, kInf});
            ASSERT_NE(outline.get(), nullptr);
            const CGRect box = CGPathGetBoundingBox(outline);
            EXPECT_TRUE(CGRectIsNull(box) || (std::isfinite(box.origin.x) && std::isfinite(box.origin.y)))
                << path;
        }
    EXPECT_EQ(stroked(nullptr, {}).get(), nullptr);
}

TEST(DashedPath, SplitsLines) {
    struct Case {
        const char* path;
        double phase;
        std::vector<CGFloat> lengths;
        const char* dashes;
    };
    const Case cases[] = {
        {"M 0 0 L 10 0", 0, {3, 2}, "M 0 0 L 3 0 M 5 0 L 8 0"},
        {"M 0 0 L 10 0", 1, {3, 2}, "M 0 0 L 2 0 M 4 0 L 7 0 M 9 0 L 10 0"},
        {"M 0 0 L 10 0", -1, {3, 2}, "M 1 0 L 4 0 M 6 0 L 9 0"},
        {"M 0 0 L 10 0", 0, {4}, "M 0 0 L 4 0 M 8 0 L 10 0"},
        {"M 0 0 L 10 0", 0, {1, 2, 3}, "M 0 0 L 1 0 M 3 0 L 6 0 M 7 0 L 9 0"},
        {"M 0 0 L 4 0 L 4 4", 0, {6, 1}, "M 0 0 L 4 0 L 4 2 M 4 3 L 4 4"},
        {"M 0 0 L 4 0 M 0 9 L 4 9", 0, {3, 3}, "M 0 0 L 3 0 M 0 9 L 3 9"},
        {"M 0 0 L 4 0 L 0 3 Z", 0, {10, 1}, "M 0 1 L 0 0 L 4 0 L 0 3 L 0 2"}, // past the start
        {"M 0 0 L 4 0 L 0 3 Z", 0, {20, 1}, "M 0 0 L 4 0 L 0 3 Z"},
        {"M 0 0 L 10 0", 0, {3, 0, 1, 2}, "M 0 0 L 4 0 M 6 0 L 10 0"}, // no gap
        {"M 0 0 L 10 0", 1, {3, 2, 4, 0}, "M 0 0 L 2 0 M 4 0 L 10 0"},
        {"M 0 0 L 10 0", 4, {3, 0}, "M 0 0 L 10 0"},
        {"M 0 0 L 10 0", 13, {3, 2}, "M 2 0 L 5 0 M 7 0 L 10 0"},
        {"M 0 0 L 10 0", -1, {1e308}, "M 0 0 L 10 0"}, // repeated, the pattern has no finite length
        {"M 0 0 L 10 0", 0, {0, 5}, "M 0 0 L 0 0 M 5 0 L 5 0"},
        {"M 0 0 L 10 0", 0, {0, 0}, "M 0 0 L 10 0"},
        {"M 0 0 L 10 0", 0, {-1, 2}, "M 0 0 L 10 0"},
        {"M 0 0 L 10 0", 0, {kInf}, "M 0 0 L 10 0"},
        {"M 0 0 L 10 0", std::nan(""), {1, 2}, "M 0 0 L 10 0"},
        {"M 0 0 L 1e301 0", 0, {3e300, 2e300}, "M 0 0 L 3e+300 0 M 5e+300 0 L 8e+300 0"},
        {"M 5 5", 0, {3, 2}, ""},
        {"", 0, {3, 2}, ""},
    };
    for (const Case& c : cases) {
        const Owned<CGPathRef> dashed(CGPathCreateCopyByDashingPath(pathFromText(c.path), nullptr, c.phase,
                                                                    c.lengths.data(), c.lengths.size()));
        EXPECT_EQ(textOf(dashed), c.dashes) << c.path << ' ' << c.lengths[0];
    }
    const CGFloat length = 1;
    EXPECT_EQ(CGPathCreateCopyByDashingPath(pathFromText("M 0 0"), nullptr, 0, &length, 0), nullptr);
    EXPECT_EQ(CGPathCreateCopyByDashingPath(pathFromText("M 0 0"), nullptr, 0, nullptr, 1), nullptr);
    EXPECT_EQ(CGPathCreateCopyByDashingPath(nullptr, nullptr, 0, &length, 1), nullptr);
}

TEST(DashedPath, FollowsCurves) {
    const Owned<CGPathRef> circle(CGPathCreateWithEllipseInRect(CGRectMake(-10, -10, 20, 20), nullptr));
    const CGFloat quarters[] = {15.707963267948966, 47.12388980384690};
    const CGAffineTransform shift = CGAffineTransformMakeTranslation(100, 0);
    const Owned<CGPathRef> dashed(CGPathCreateCopyByDashingPath(circle, &shift, 0, quarters, 2));
    expectNear(CGPathGetBoundingBox(dashed), CGRectMake(100, 0, 10, 10), 0.01, "quarter circle");
}

} // namespace
