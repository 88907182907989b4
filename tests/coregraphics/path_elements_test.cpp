#include "owned.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(Path, IgnoresSegmentsThatAreNotFiniteOrLackACurrentPoint) {
    struct Case {
        const char* added;
        const char* kept;
    };
    const Case cases[] = {
        {"", ""},
        {"L 1 2", ""},
        {"Z", ""},
        {"C 1 2 3 4 5 6 Q 1 2 3 4 L 1 2 Z M 1 2", "M 1 2"},
        {"M 0 0 L 1 2 Q 3 4 5 6 C 1 2 3 4 5 6 Z", "M 0 0 L 1 2 Q 3 4 5 6 C 1 2 3 4 5 6 Z"},
        {"M 1 2 Z", "M 1 2 Z"},
        {"M 1 2 L 3 4 Z Z", "M 1 2 L 3 4 Z"},
        {"M 1 2 L 3 4 Z L 5 6 Z", "M 1 2 L 3 4 Z M 1 2 L 5 6 Z"},
        {"M 1 2 L 3 4 Z Q 5 6 7 8", "M 1 2 L 3 4 Z M 1 2 Q 5 6 7 8"},
        {"M 1 2 L 3 4 Z C 1 1 2 2 3 3", "M 1 2 L 3 4 Z M 1 2 C 1 1 2 2 3 3"},
        {"M 1 2 L 3 4 Z M 5 6 L 7 8", "M 1 2 L 3 4 Z M 5 6 L 7 8"},
        {"M 0 0 L nan 1 L 1 inf L 2 2", "M 0 0 L 2 2"},
        {"M 0 0 C 1 2 -inf 4 5 6 C 1 2 3 4 5 nan Q nan 1 2 3 Z", "M 0 0 Z"},
        {"M nan 0 L 1 1 M 1 inf Z", ""},
        {"M 1e300 -1e308 L 1e308 1e308", "M 1e+300 -1e+308 L 1e+308 1e+308"},
    };
    for (const Case& c : cases) EXPECT_EQ(textOf(pathFromText(c.added)), c.kept) << c.added;
}

TEST(Path, HasACurrentPoint) {
    EXPECT_EQ(CGPathGetCurrentPoint(pathFromText("")), CGPointZero);
    EXPECT_EQ(CGPathGetCurrentPoint(pathFromText("M 1 2 L 3 4")), CGPointMake(3, 4));
    EXPECT_EQ(CGPathGetCurrentPoint(pathFromText("M 1 2 L 3 4 Z")), CGPointMake(1, 2));
    EXPECT_EQ(CGPathGetCurrentPoint(pathFromText("M 1 2 L 3 4 Z C 1 1 2 2 9 9")), CGPointMake(9, 9));
    EXPECT_TRUE(CGPathIsEmpty(pathFromText("L 1 1")));
    EXPECT_FALSE(CGPathIsEmpty(pathFromText("M 1 1")));
}

using AddShape = void (*)(CGMutablePathRef path, const CGAffineTransform* m);

struct ShapeCase {
    const char* name;
    AddShape add;
    const char* elements;
};

const ShapeCase kShapes[] = {
    {"rect", [](auto p, auto m) { CGPathAddRect(p, m, CGRectMake(4, 6, -3, -4)); },
     "M 1 2 L 4 2 L 4 6 L 1 6 Z"},
    {"ellipse", [](auto p, auto m) { CGPathAddEllipseInRect(p, m, CGRectMake(-2, -1, 4, 2)); },
     "M 2 0 C 2 0.552285 1.10457 1 0 1 C -1.10457 1 -2 0.552285 -2 0 C -2 -0.552285 -1.10457 -1 0 -1 "
     "C 1.10457 -1 2 -0.552285 2 0 Z"},
    {"rounded rect", [](auto p, auto m) { CGPathAddRoundedRect(p, m, CGRectMake(0, 0, 10, 8), 1, 2); },
     "M 1 0 L 9 0 C 9.55228 0 10 0.895431 10 2 L 10 6 C 10 7.10457 9.55228 8 9 8 "
     "L 1 8 C 0.447715 8 0 7.10457 0 6 L 0 2 C 0 0.895431 0.447715 0 1 0 Z"},
    {"radii above half the sides",
     [](auto p, auto m) { CGPathAddRoundedRect(p, m, CGRectMake(0, 0, 2, 2), 9, kInf); },
     "M 1 0 L 1 0 C 1.55228 0 2 0.447715 2 1 L 2 1 C 2 1.55228 1.55228 2 1 2 "
     "L 1 2 C 0.447715 2 0 1.55228 0 1 L 0 1 C 0 0.447715 0.447715 0 1 0 Z"},
    {"no radius", [](auto p, auto m) { CGPathAddRoundedRect(p, m, CGRectMake(0, 0, 2, 2), 0, 1); },
     "M 0 0 L 2 0 L 2 2 L 0 2 Z"},
    {"NaN and negative radius",
     [](auto p, auto m) { CGPathAddRoundedRect(p, m, CGRectMake(0, 0, 2, 2), std::nan(""), -1); },
     "M 0 0 L 2 0 L 2 2 L 0 2 Z"},
    {"lines",
     [](auto p, auto m) {
         const CGPoint points[] = {{1, 1}, {2, 2}, {3, 1}};
         CGPathAddLines(p, m, points, 3);
     },
     "M 1 1 L 2 2 L 3 1"},
    {"null rect", [](auto p, auto m) { CGPathAddRect(p, m, CGRectNull); }, ""},
    {"rect with a NaN side", [](auto p, auto m) { CGPathAddRect(p, m, CGRectMake(0, 0, std::nan(""), 1)); },
     ""},
    {"quarter arc", [](auto p, auto m) { CGPathAddArc(p, m, 0, 0, 1, 0, kPi / 2, false); },
     "M 1 0 C 1 0.552285 0.552285 1 0 1"},
    {"arc of no sweep", [](auto p, auto m) { CGPathAddArc(p, m, 1, 1, 2, 0, 0, true); }, "M 3 1"},
    {"arc of a negative radius", [](auto p, auto m) { CGPathAddArc(p, m, 1, 1, -2, 0, 1, true); }, ""},
};

TEST(Path, Shapes) {
    for (const ShapeCase& c : kShapes) {
        const Owned<CGMutablePathRef> path(CGPathCreateMutable());
        c.add(path, nullptr);
        EXPECT_EQ(textOf(path), c.elements) << c.name;
    }
}

TEST(Path, TransformsShapes) {
    const CGAffineTransform m = CGAffineTransformMake(2, 1, -1, 3, 10, 20);
    for (const ShapeCase& c : kShapes) {
        const Owned<CGMutablePathRef> plain(CGPathCreateMutable()), mapped(CGPathCreateMutable());
        c.add(plain, nullptr);
        c.add(mapped, &m);
        const Owned<CGPathRef> expected(CGPathCreateCopyByTransformingPath(plain, &m));
        EXPECT_EQ(textOf(mapped), textOf(expected)) << c.name;
        EXPECT_EQ(CGPathGetCurrentPoint(mapped), CGPathGetCurrentPoint(expected)) << c.name;
    }
}

TEST(Path, CreateFunctionsReturnTheSameShapes) {
    const Owned<CGPathRef> rounded(CGPathCreateWithRoundedRect(CGRectMake(0, 0, 10, 8), 1, 2, nullptr));
    const Owned<CGPathRef> ellipse(CGPathCreateWithEllipseInRect(CGRectMake(-2, -1, 4, 2), nullptr));
    const Owned<CGPathRef> rect(CGPathCreateWithRect(CGRectMake(1, 2, 3, 4), nullptr));
    EXPECT_EQ(textOf(rounded), kShapes[2].elements);
    EXPECT_EQ(textOf(ellipse), kShapes[1].elements);
    EXPECT_EQ(textOf(rect), kShapes[0].elements);
}

TEST(Path, ArcsStayAtTheirRadius) {
    struct Case {
        double start, end;
        bool clockwise;
        double sweep;
    };
    const Case cases[] = {
        {0, 2 * kPi, false, 2 * kPi},
        {0, 2 * kPi, true, -2 * kPi},
        {0, -9 * kPi, false, 2 * kPi},
        {1, 2, false, 1},
        {1, 2, true, 1 - 2 * kPi},
        {2, 1, false, 2 * kPi - 1},
        {2, 1, true, -1},
        {0, 1.2 * kPi, false, 1.2 * kPi},
        {7, 8, true, 1 - 2 * kPi},
    };
    for (const Case& c : cases) {
        const Owned<CGMutablePathRef> path(CGPathCreateMutable()), relative(CGPathCreateMutable());
        CGPathAddArc(path, nullptr, 3, 4, 5, c.start, c.end, c.clockwise);
        CGPathAddRelativeArc(relative, nullptr, 3, 4, 5, c.start, c.sweep);
        EXPECT_EQ(textOf(path), textOf(relative)) << c.start << ' ' << c.end << ' ' << c.clockwise;
        const CGPoint end = CGPathGetCurrentPoint(path);
        EXPECT_NEAR(end.x, 3 + 5 * std::cos(c.start + c.sweep), 1e-9);
        EXPECT_NEAR(end.y, 4 + 5 * std::sin(c.start + c.sweep), 1e-9);
        EXPECT_FALSE(CGPathContainsPoint(path, nullptr,
                                         {3 + 5.01 * std::cos(c.start + c.sweep / 2), // outside
                                          4 + 5.01 * std::sin(c.start + c.sweep / 2)},
                                         false));
        EXPECT_TRUE(CGPathContainsPoint(
            path, nullptr,
            {3 + 4.99 * std::cos(c.start + c.sweep / 2), 4 + 4.99 * std::sin(c.start + c.sweep / 2)}, false));
    }
    const auto manyTurns = pathFromText("M 0 0");
    CGPathAddRelativeArc(manyTurns, nullptr, 0, 0, 1, 0, 1e9 * kPi + kPi / 2);
    EXPECT_NEAR(CGPathGetCurrentPoint(manyTurns).y, 1, 1e-6);
    EXPECT_LT(textOf(manyTurns).size(), 2000u);
    const auto oneAndAHalf = pathFromText("M 0 0"), twoAndAHalf = pathFromText("M 0 0");
    CGPathAddRelativeArc(oneAndAHalf, nullptr, 0, 0, 1, 0.5, 3 * kPi);
    CGPathAddRelativeArc(twoAndAHalf, nullptr, 0, 0, 1, 0.5,
                         5 * kPi); // covers what the other covers
    EXPECT_EQ(textOf(twoAndAHalf), textOf(oneAndAHalf));
}

TEST(Path, ArcToPointTouchesBothLines) {
    struct Case {
        const char* name;
        const char* before;
        CGPoint corner, towards;
        double radius;
        const char* elements;
    };
    const Case cases[] = {
        {"left turn", "M 0 0", {10, 0}, {10, 10}, 4, "M 0 0 L 6 0 C 8.20914 0 10 1.79086 10 4"},
        {"right turn", "M 0 0", {10, 0}, {10, -10}, 4, "M 0 0 L 6 0 C 8.20914 0 10 -1.79086 10 -4"},
        {"oblique",
         "M 0 0",
         {10, 10},
         {20, 0},
         5 * std::numbers::sqrt2,
         "M 0 0 L 5 5 C 7.76142 7.76142 12.2386 7.76142 15 5"},
        {"straight on", "M 0 0", {10, 0}, {20, 0}, 4, "M 0 0 L 10 0"},
        {"straight back", "M 0 0", {10, 0}, {5, 0}, 4, "M 0 0 L 10 0"},
        {"no first line", "M 0 0", {0, 0}, {5, 5}, 4, "M 0 0 L 0 0"},
        {"no radius", "M 0 0", {10, 0}, {10, 10}, 0, "M 0 0 L 10 0"},
        {"infinite point", "M 0 0", {10, kInf}, {10, 10}, 0, "M 0 0"},
        {"no current point", "", {10, 0}, {10, 10}, 4, ""},
        {"after a close",
         "M 0 0 L 0 5 Z",
         {10, 0},
         {10, 10},
         10,
         "M 0 0 L 0 5 Z M 0 0 L 0 0 C 5.52285 0 10 4.47715 10 10"},
    };
    for (const Case& c : cases) {
        const auto path = pathFromText(c.before);
        CGPathAddArcToPoint(path, nullptr, c.corner.x, c.corner.y, c.towards.x, c.towards.y, c.radius);
        EXPECT_EQ(textOf(path), c.elements) << c.name;
    }
    const CGAffineTransform twice = CGAffineTransformMakeScale(2, 2);
    const auto path = pathFromText("M 0 0");
    CGPathAddArcToPoint(path, &twice, 10, 0, 10, 10, 5);
    EXPECT_EQ(textOf(path), "M 0 0 L 10 0 C 15.5228 0 20 4.47715 20 10");
}

TEST(Path, AppendsOtherPathsAndItself) {
    const auto path = pathFromText("M 1 2 L 3 4 Z");
    const CGAffineTransform shift = CGAffineTransformMakeTranslation(10, 0);
    CGPathAddPath(path, &shift, path);
    EXPECT_EQ(textOf(path), "M 1 2 L 3 4 Z M 11 2 L 13 4 Z");
    CGPathAddLineToPoint(path, nullptr, 0, 0);
    EXPECT_EQ(textOf(path), "M 1 2 L 3 4 Z M 11 2 L 13 4 Z M 11 2 L 0 0");
    CGPathAddPath(path, nullptr, nullptr);
    CGPathAddPath(nullptr, nullptr, path);

    // Segments that the transform takes to infinity are left out; the others stay.
    const CGAffineTransform huge = CGAffineTransformMakeScale(1e10, 1e10);
    const auto far = pathFromText("M 0 0 L 1 1"), added = pathFromText("M 1 1 L 1e305 1 L 2 1 Q 1 1 2 2 Z");
    CGPathAddPath(far, &huge, added);
    EXPECT_EQ(textOf(far), "M 0 0 L 1 1 M 1e+10 1e+10 L 2e+10 1e+10 Q 1e+10 1e+10 2e+10 2e+10 Z");
}

TEST(Path, CopiesAreIndependent) {
    const auto path = pathFromText("M 1 2 L 3 4");
    const Owned<CGPathRef> copy(CGPathCreateCopy(path));
    const Owned<CGMutablePathRef> mutableCopy(CGPathCreateMutableCopy(path));
    EXPECT_TRUE(CFEqual(path, copy));
    CGPathAddLineToPoint(path, nullptr, 5, 6);
    CGPathCloseSubpath(mutableCopy);
    EXPECT_EQ(textOf(copy), "M 1 2 L 3 4");
    EXPECT_EQ(textOf(mutableCopy), "M 1 2 L 3 4 Z");
    EXPECT_FALSE(CGPathEqualToPath(path, copy));
    EXPECT_FALSE(CGPathEqualToPath(nullptr, copy));
    EXPECT_TRUE(CGPathEqualToPath(nullptr, nullptr));
}

TEST(Path, MayGrowDuringApply) {
    const auto path = pathFromText("M 0 0 L 1 1 L 2 2");
    CGPathApply(path, path.get(), [](void* info, const CGPathElement*) {
        for (int i = 0; i < 100; ++i)
            CGPathAddLineToPoint(static_cast<CGMutablePathRef>(info), nullptr, i, i);
    });
    EXPECT_EQ(CGPathGetCurrentPoint(path), CGPointMake(99, 99));
}

TEST(Path, AcceptsNull) {
    CGPathMoveToPoint(nullptr, nullptr, 1, 1);
    CGPathAddRects(nullptr, nullptr, nullptr, 3);
    CGPathAddLines(nullptr, nullptr, nullptr, 3);
    CGPathApply(nullptr, nullptr, nullptr);
    const auto path = pathFromText("M 1 2");
    CGPathAddRects(path, nullptr, nullptr, 3);
    CGPathAddLines(path, nullptr, nullptr, 3);
    CGPathAddLines(path, nullptr, &CGPointZero, 0);
    CGPathApply(path, nullptr, nullptr);
    EXPECT_EQ(textOf(path), "M 1 2");
    EXPECT_TRUE(CGPathIsEmpty(nullptr));
    EXPECT_FALSE(CGPathIsRect(nullptr, nullptr));
    EXPECT_EQ(CGPathCreateCopy(nullptr), nullptr);
    EXPECT_EQ(CGPathCreateCopyByTransformingPath(nullptr, nullptr), nullptr);
    EXPECT_EQ(CGPathGetCurrentPoint(nullptr), CGPointZero);
    EXPECT_TRUE(CGRectIsNull(CGPathGetBoundingBox(nullptr)));
    EXPECT_FALSE(CGPathContainsPoint(nullptr, nullptr, CGPointZero, false));
}

TEST(Path, CanBeCopiedAndTransformed) {
    const auto path = pathFromText("M 1 2 L 3 4 Q 5 6 7 8 Z");
    const CGAffineTransform doubled = CGAffineTransformMakeScale(2, 2);
    const Owned<CGMutablePathRef> copy(CGPathCreateMutableCopyByTransformingPath(path, &doubled));
    CGPathAddLineToPoint(copy, nullptr, 9, 9);
    EXPECT_EQ(textOf(copy), "M 2 4 L 6 8 Q 10 12 14 16 Z M 2 4 L 9 9");
    EXPECT_EQ(textOf(path), "M 1 2 L 3 4 Q 5 6 7 8 Z");
    EXPECT_EQ(CGPathCreateMutableCopyByTransformingPath(nullptr, &doubled), nullptr);
}

} // namespace
