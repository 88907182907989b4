// Points, sizes, vectors and rectangles.
//
// A rectangle may have a negative width or height; every function on rectangles except CGRectMake works on
// its standardised form. CGRectNull, whose origin is infinite, is the intersection of rectangles that have
// nothing in common.
#pragma once

#include <CoreGraphics/CGBase.h>

typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;

typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;

typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;

/// A side of a rectangle.
CF_ENUM(uint32_t, CGRectEdge){CGRectMinXEdge, CGRectMinYEdge, CGRectMaxXEdge, CGRectMaxYEdge};

CF_EXTERN_C_BEGIN

extern const CGPoint CGPointZero;
extern const CGSize CGSizeZero;
extern const CGRect CGRectZero;
/// The null rectangle: infinite origin, size 0. Not the same as a rectangle without area.
extern const CGRect CGRectNull;
/// The rectangle that contains everything.
extern const CGRect CGRectInfinite;

CG_INLINE CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint p = {x, y};
    return p;
}
CG_INLINE CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize s = {width, height};
    return s;
}
CG_INLINE CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect r = {{x, y}, {width, height}};
    return r;
}

/// Smallest x of the standardised rectangle. The five below are its middle and largest x, and the same for y.
CGFloat CGRectGetMinX(CGRect rect);
CGFloat CGRectGetMidX(CGRect rect);
CGFloat CGRectGetMaxX(CGRect rect);
CGFloat CGRectGetMinY(CGRect rect);
CGFloat CGRectGetMidY(CGRect rect);
CGFloat CGRectGetMaxY(CGRect rect);
/// Width of the standardised rectangle, never negative.
CGFloat CGRectGetWidth(CGRect rect);
/// Height of the standardised rectangle, never negative.
CGFloat CGRectGetHeight(CGRect rect);

/// Exact equality of both coordinates.
bool CGPointEqualToPoint(CGPoint point1, CGPoint point2);
/// Exact equality of width and height.
bool CGSizeEqualToSize(CGSize size1, CGSize size2);
/// Exact equality of the standardised rectangles; all null rectangles are equal.
bool CGRectEqualToRect(CGRect rect1, CGRect rect2);

/// The same area with a width and a height that are not negative. CGRectNull is returned unchanged.
CGRect CGRectStandardize(CGRect rect);
/// True if the width or the height is 0, and for the null rectangle.
bool CGRectIsEmpty(CGRect rect);
/// True if either coordinate of the origin is positive infinity.
bool CGRectIsNull(CGRect rect);
/// True for CGRectInfinite.
bool CGRectIsInfinite(CGRect rect);
/// The rectangle with its sides moved inwards by dx and dy, or outwards if they are negative. CGRectNull if
/// its width or height would become negative.
CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy);
/// The smallest rectangle with integral coordinates that contains `rect`.
CGRect CGRectIntegral(CGRect rect);
/// The smallest rectangle that contains both; a null rectangle adds nothing.
CGRect CGRectUnion(CGRect r1, CGRect r2);
/// The area common to both; CGRectNull if they are disjoint or only touch.
CGRect CGRectIntersection(CGRect r1, CGRect r2);
/// The rectangle moved by (dx, dy). CGRectNull is returned unchanged.
CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy);
/// Cuts a slice off a rectangle at the given side, `amount` wide, clamped to the rectangle; `remainder` gets
/// the rest. Either result may be NULL.
void CGRectDivide(CGRect rect, CGRect* slice, CGRect* remainder, CGFloat amount, CGRectEdge edge);
/// True for points inside and on the sides of smallest x and y; false on the other two sides and for an empty
/// rectangle.
bool CGRectContainsPoint(CGRect rect, CGPoint point);
/// True if the union of both is `rect1`.
bool CGRectContainsRect(CGRect rect1, CGRect rect2);
/// True if the intersection is not null.
bool CGRectIntersectsRect(CGRect rect1, CGRect rect2);

CF_EXTERN_C_END
