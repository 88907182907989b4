#include "owned.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(Rect, IsEmptyNullOrInfinite) {
    struct Case {
        CGRect rect;
        bool empty, null, infinite;
    };
    const Case cases[] = {
        {CGRectNull, true, true, false},
        {CGRectInfinite, false, false, true},
        {CGRectZero, true, false, false},
        {CGRectMake(1, 2, 0, 5), true, false, false},
        {CGRectMake(1, 2, 5, 0), true, false, false},
        {CGRectMake(1, 2, -3, 4), false, false, false},
        {CGRectMake(kInf, 0, 1, 1), true, true, false},
        {CGRectMake(0, kInf, 1, 1), true, true, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CGRectIsEmpty(c.rect), c.empty) << c.rect;
        EXPECT_EQ(CGRectIsNull(c.rect), c.null) << c.rect;
        EXPECT_EQ(CGRectIsInfinite(c.rect), c.infinite) << c.rect;
    }
}

TEST(Rect, WithNegativeSidesEqualsItsStandardForm) {
    const CGRect rect = CGRectMake(10, 20, -4, -6);
    const CGRect standard = CGRectStandardize(rect);
    EXPECT_EQ(standard.origin, CGPointMake(6, 14));
    EXPECT_TRUE(CGSizeEqualToSize(standard.size, CGSizeMake(4, 6)));
    EXPECT_EQ(rect, standard);
    const double sides[] = {CGRectGetMinX(rect),  CGRectGetMidX(rect),  CGRectGetMaxX(rect),
                            CGRectGetMinY(rect),  CGRectGetMidY(rect),  CGRectGetMaxY(rect),
                            CGRectGetWidth(rect), CGRectGetHeight(rect)};
    const double expected[] = {6, 8, 10, 14, 17, 20, 4, 6};
    for (size_t i = 0; i < std::size(sides); ++i) EXPECT_EQ(sides[i], expected[i]) << i;
    EXPECT_EQ(CGRectInset(rect, 1, 2), CGRectMake(7, 16, 2, 2));
    EXPECT_EQ(CGRectOffset(rect, 1, 2), CGRectMake(7, 16, 4, 6));
    EXPECT_TRUE(CGRectContainsPoint(rect, {6, 14}));
}

// Standardising a rectangle without negative sides keeps its origin bit for bit.
TEST(Rect, KeepsTheSignOfZeroOrigins) {
    const auto isNegative = [](CGPoint p) { return std::signbit(p.x) && std::signbit(p.y); };
    for (const double side : {0.0, -0.0, 2.0}) {
        const CGRect rect = {{-0.0, -0.0}, {side, side}};
        EXPECT_TRUE(isNegative(CGRectStandardize(rect).origin)) << side;
        EXPECT_TRUE(isNegative(CGRectUnion(rect, CGRectNull).origin)) << side;
        EXPECT_TRUE(isNegative({CGRectGetMinX(rect), CGRectGetMinY(rect)})) << side;
    }
    EXPECT_TRUE(
        isNegative({CGRectGetMaxX({{-0.0, -0.0}, {-1, -1}}), CGRectGetMaxY({{-0.0, -0.0}, {-1, -1}})}));
}

TEST(Rect, InsetAndOffset) {
    EXPECT_EQ(CGRectInset(CGRectMake(0, 0, 4, 4), 2, 2), CGRectMake(2, 2, 0, 0));
    EXPECT_FALSE(CGRectIsNull(CGRectInset(CGRectMake(0, 0, 4, 4), 2, 2)));
    EXPECT_TRUE(CGRectIsNull(CGRectInset(CGRectMake(0, 0, 4, 4), 2.5, 0)));
    EXPECT_TRUE(CGRectIsNull(CGRectInset(CGRectMake(0, 0, 4, 4), -9, 2.5)));
    EXPECT_EQ(CGRectOffset(CGRectInset(CGRectZero, -3, -5), 10, 20), CGRectMake(7, 15, 6, 10));
    EXPECT_TRUE(CGRectIsNull(CGRectOffset(CGRectNull, 1, 1)));
    EXPECT_TRUE(CGRectIsNull(CGRectInset(CGRectNull, -1, -1)));
}

TEST(Rect, UnionIntersectionAndContainment) {
    struct Case {
        CGRect a, b, united, common;
        bool contains;
    };
    const CGRect r = CGRectMake(0, 0, 10, 10);
    const Case cases[] = {
        {r, CGRectMake(5, 5, 10, 2), CGRectMake(0, 0, 15, 10), CGRectMake(5, 5, 5, 2), false},
        {r, CGRectMake(2, 3, 4, 5), r, CGRectMake(2, 3, 4, 5), true},
        {r, CGRectMake(6, 8, -4, -5), r, CGRectMake(2, 3, 4, 5), true},
        {r, CGRectMake(10, 0, 5, 5), CGRectMake(0, 0, 15, 10), CGRectNull, false}, // touches
        {r, CGRectMake(20, 20, 1, 1), CGRectMake(0, 0, 21, 21), CGRectNull, false},
        {r, CGRectMake(20, 20, 0, 0), CGRectMake(0, 0, 20, 20), CGRectNull, false},
        {r, CGRectNull, r, CGRectNull, true},
        {CGRectNull, r, r, CGRectNull, false},
        {CGRectNull, CGRectNull, CGRectNull, CGRectNull, true},
        {CGRectInfinite, r, CGRectInfinite, r, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CGRectUnion(c.a, c.b), c.united) << c.a << c.b;
        EXPECT_EQ(CGRectIntersection(c.a, c.b), c.common) << c.a << c.b;
        EXPECT_EQ(CGRectIntersectsRect(c.a, c.b), !CGRectIsNull(c.common)) << c.a << c.b;
        EXPECT_EQ(CGRectContainsRect(c.a, c.b), c.contains) << c.a << c.b;
    }
}

TEST(Rect, ContainsItsMinimumEdgesButNotItsMaximumEdges) {
    const CGRect rect = CGRectMake(1, 1, 2, 2);
    EXPECT_TRUE(CGRectContainsPoint(rect, {1, 1}));
    for (const CGPoint p :
         {CGPointMake(3, 2), CGPointMake(2, 3), CGPointMake(0.5, 2), CGPointMake(std::nan(""), 2)})
        EXPECT_FALSE(CGRectContainsPoint(rect, p)) << p;
    EXPECT_FALSE(CGRectContainsPoint(CGRectMake(1, 1, 0, 2), {1, 1}));
    EXPECT_FALSE(CGRectContainsPoint(CGRectNull, {1, 1}));
}

TEST(Rect, IntegralRoundsOutwards) {
    EXPECT_EQ(CGRectIntegral(CGRectMake(0.5, -0.5, 2, 2)), CGRectMake(0, -1, 3, 3));
    EXPECT_EQ(CGRectIntegral(CGRectMake(2, 3, 4, 5)), CGRectMake(2, 3, 4, 5));
    EXPECT_TRUE(CGRectIsNull(CGRectIntegral(CGRectNull)));
}

TEST(Rect, DividesFromEverySide) {
    struct Case {
        CGRectEdge edge;
        double amount;
        CGRect slice, rest;
    };
    const Case cases[] = {
        {CGRectMinXEdge, 2, {{0, 0}, {2, 5}}, {{2, 0}, {8, 5}}},
        {CGRectMaxXEdge, 2, {{8, 0}, {2, 5}}, {{0, 0}, {8, 5}}},
        {CGRectMinYEdge, 2, {{0, 0}, {10, 2}}, {{0, 2}, {10, 3}}},
        {CGRectMaxYEdge, 2, {{0, 3}, {10, 2}}, {{0, 0}, {10, 3}}},
        {CGRectMinXEdge, 99, {{0, 0}, {10, 5}}, {{10, 0}, {0, 5}}},
        {CGRectMinXEdge, -1, {{0, 0}, {0, 5}}, {{0, 0}, {10, 5}}},
    };
    for (const Case& c : cases) {
        CGRect slice, rest;
        CGRectDivide(CGRectMake(0, 0, 10, 5), &slice, &rest, c.amount, c.edge);
        EXPECT_EQ(slice, c.slice) << c.edge;
        EXPECT_EQ(rest, c.rest) << c.edge;
    }
    CGRectDivide(CGRectZero, nullptr, nullptr, 1, CGRectMinXEdge);
}

TEST(AffineTransform, AppliesTheAddedTransformFirst) {
    const CGAffineTransform t = CGAffineTransformMake(2, 1, -1, 3, 10, 20);
    const CGPoint p = {5, 7};
    const CGAffineTransform parts[] = {CGAffineTransformMakeTranslation(3, 4),
                                       CGAffineTransformMakeScale(3, 4), CGAffineTransformMakeRotation(0.5)};
    const CGAffineTransform wholes[] = {CGAffineTransformTranslate(t, 3, 4), CGAffineTransformScale(t, 3, 4),
                                        CGAffineTransformRotate(t, 0.5)};
    for (size_t i = 0; i < std::size(parts); ++i) {
        const CGPoint expected = CGPointApplyAffineTransform(CGPointApplyAffineTransform(p, parts[i]), t);
        for (const CGAffineTransform& whole : {wholes[i], CGAffineTransformConcat(parts[i], t)}) {
            const CGPoint found = CGPointApplyAffineTransform(p, whole);
            EXPECT_NEAR(found.x, expected.x, 1e-12) << i;
            EXPECT_NEAR(found.y, expected.y, 1e-12) << i;
        }
    }
    const CGPoint up = CGPointApplyAffineTransform({1, 0}, CGAffineTransformMakeRotation(std::acos(0)));
    EXPECT_NEAR(up.y, 1, 1e-15); // from x towards y
    const CGSize size = CGSizeApplyAffineTransform({1, 1}, t);
    EXPECT_TRUE(CGSizeEqualToSize(size, CGSizeMake(1, 4)));
}

TEST(AffineTransform, IsInvertedUnlessSingular) {
    const CGAffineTransform t = CGAffineTransformMake(2, 1, -1, 3, 10, 20);
    const CGPoint p =
        CGPointApplyAffineTransform(CGPointApplyAffineTransform({5, 7}, t), CGAffineTransformInvert(t));
    EXPECT_NEAR(p.x, 5, 1e-12);
    EXPECT_NEAR(p.y, 7, 1e-12);
    EXPECT_TRUE(CGAffineTransformIsIdentity(CGAffineTransformInvert(CGAffineTransformIdentity)));
    for (const CGAffineTransform& singular :
         {CGAffineTransformMake(0, 0, 0, 0, 1, 2), CGAffineTransformMake(1, 2, 2, 4, 5, 6),
          CGAffineTransformMake(kInf, 0, 0, 1, 0, 0), CGAffineTransformMake(1e-310, 0, 0, 1e-310, 0, 0)})
        EXPECT_EQ(CGAffineTransformInvert(singular), singular);
    // The determinants overflow and underflow.
    for (const double scale : {0x1p600, 0x1p-600})
        EXPECT_EQ(CGAffineTransformInvert(CGAffineTransformMake(scale, 0, 0, -scale, scale, 3 * scale)),
                  CGAffineTransformMake(1 / scale, 0, 0, -1 / scale, -1, 3));
}

TEST(AffineTransform, ReturnsTheBoundsOfATransformedRect) {
    const CGAffineTransform quarter = CGAffineTransformMake(0, 1, -1, 0, 0, 0);
    EXPECT_EQ(CGRectApplyAffineTransform(CGRectMake(1, 2, 3, 4), quarter), CGRectMake(-6, 1, 4, 3));
    EXPECT_EQ(CGRectApplyAffineTransform(CGRectMake(4, 6, -3, -4), quarter), CGRectMake(-6, 1, 4, 3));
    EXPECT_TRUE(CGRectIsNull(CGRectApplyAffineTransform(CGRectNull, quarter)));
    EXPECT_TRUE(CGRectIsInfinite(CGRectApplyAffineTransform(CGRectInfinite, quarter)));
}

} // namespace
