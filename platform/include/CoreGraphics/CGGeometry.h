// Points, sizes, vectors and rectangles.
//
// A rectangle may have negative sides; every function below but CGRectMake and the equality of parts works on
// its standardised form. CGRectNull (infinite origin) is the result of an intersection that is not there.
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

typedef struct CGVector {
    CGFloat dx;
    CGFloat dy;
} CGVector;

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
/// No rectangle: infinite origin, size 0. Not the same as a rectangle without area.
extern const CGRect CGRectNull;
/// The rectangle that holds everything.
extern const CGRect CGRectInfinite;

CG_INLINE CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint p = {x, y};
    return p;
}
CG_INLINE CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize s = {width, height};
    return s;
}
CG_INLINE CGVector CGVectorMake(CGFloat dx, CGFloat dy) {
    CGVector v = {dx, dy};
    return v;
}
CG_INLINE CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect r = {{x, y}, {width, height}};
    return r;
}

/// Smallest x of the standardised rectangle; likewise the five below.
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
/// Exact equality of both sides.
bool CGSizeEqualToSize(CGSize size1, CGSize size2);
/// Exact equality of the standardised rectangles; all null rectangles are equal.
bool CGRectEqualToRect(CGRect rect1, CGRect rect2);

/// The same area with sides that are not negative; CGRectNull stays what it is.
CGRect CGRectStandardize(CGRect rect);
/// True when the width or the height is 0, and for the null rectangle.
bool CGRectIsEmpty(CGRect rect);
/// True when either origin coordinate is positive infinity.
bool CGRectIsNull(CGRect rect);
/// True for CGRectInfinite.
bool CGRectIsInfinite(CGRect rect);
/// Each side moved inwards by dx and dy (outwards when negative); CGRectNull when a side would turn negative.
CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy);
/// The smallest rectangle with whole coordinates around `rect`.
CGRect CGRectIntegral(CGRect rect);
/// The smallest rectangle around both; a null rectangle adds nothing.
CGRect CGRectUnion(CGRect r1, CGRect r2);
/// What both have in common; CGRectNull when they are apart or only touch.
CGRect CGRectIntersection(CGRect r1, CGRect r2);
/// The rectangle moved; CGRectNull stays what it is.
CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy);
/// Cuts `amount` (clamped into the rectangle) off the given side into `slice`; `remainder` gets the rest.
/// Either may be NULL.
void CGRectDivide(CGRect rect, CGRect* slice, CGRect* remainder, CGFloat amount, CGRectEdge edge);
/// True inside and on the sides of smallest x and y, false on the other two sides and for an empty rectangle.
bool CGRectContainsPoint(CGRect rect, CGPoint point);
/// True when the union of both is `rect1`.
bool CGRectContainsRect(CGRect rect1, CGRect rect2);
/// True when the intersection is not null.
bool CGRectIntersectsRect(CGRect rect1, CGRect rect2);

CF_EXTERN_C_END
