// Paths: sequences of subpaths made of lines, quadratic and cubic curves.
//
// Points are transformed by `m` when they are added; NULL leaves them unchanged. A segment with a point that
// is not finite is dropped, and so is a line, curve or close without a current point. After a close, the
// current point is the start of the closed subpath, and a following segment begins a new subpath there.
// Functions that add to a path do nothing if the path is NULL. When memory is short, they add only a part or
// nothing, and mark the path as incomplete, so that no image of a picture that it is drawn into can be
// created (see CGBitmapContextCreateImage).
#pragma once

#include <CoreGraphics/CGAffineTransform.h>

typedef const struct CGPath* CGPathRef;
typedef struct CGPath* CGMutablePathRef;

CF_ENUM(int32_t, CGLineJoin){kCGLineJoinMiter, kCGLineJoinRound, kCGLineJoinBevel};

CF_ENUM(int32_t, CGLineCap){kCGLineCapButt, kCGLineCapRound, kCGLineCapSquare};

/// The kinds of path elements, which have 1, 1, 2, 3 and 0 points.
CF_ENUM(int32_t, CGPathElementType){kCGPathElementMoveToPoint, kCGPathElementAddLineToPoint,
                                    kCGPathElementAddQuadCurveToPoint, kCGPathElementAddCurveToPoint,
                                    kCGPathElementCloseSubpath};

typedef struct CGPathElement {
    CGPathElementType type;
    CGPoint* points;
} CGPathElement;

/// Called for each element of a path; the element is valid during the call only.
typedef void (*CGPathApplierFunction)(void* info, const CGPathElement* element);

CF_EXTERN_C_BEGIN

/// Type id of paths.
CFTypeID CGPathGetTypeID(void);
/// An empty path. The caller owns it, as with every path that a Create function returns; NULL when memory is
/// short.
CGMutablePathRef CGPathCreateMutable(void);
/// A copy of `path` that later changes to `path` do not affect; NULL for NULL.
CGPathRef CGPathCreateCopy(CGPathRef path);
/// A copy with every point transformed.
CGPathRef CGPathCreateCopyByTransformingPath(CGPathRef path, const CGAffineTransform* transform);
/// A copy that can be changed.
CGMutablePathRef CGPathCreateMutableCopy(CGPathRef path);
/// A changeable copy with every point transformed.
CGMutablePathRef CGPathCreateMutableCopyByTransformingPath(CGPathRef path,
                                                           const CGAffineTransform* transform);
/// The path of a rectangle.
CGPathRef CGPathCreateWithRect(CGRect rect, const CGAffineTransform* transform);
/// The path of an ellipse: four cubic curves.
CGPathRef CGPathCreateWithEllipseInRect(CGRect rect, const CGAffineTransform* transform);
/// The path of a rectangle whose corners are quarter ellipses with the given radii, each clamped to between 0
/// and half the side.
CGPathRef CGPathCreateWithRoundedRect(CGRect rect, CGFloat cornerWidth, CGFloat cornerHeight,
                                      const CGAffineTransform* transform);
/// The path cut into dashes: open subpaths made of lines, one per dash. `lengths` alternate between painted
/// and unpainted; a pattern whose total length is not positive and finite leaves the path undashed. The
/// dashes are transformed as they are added to the copy. NULL for NULL and for an empty pattern.
CGPathRef CGPathCreateCopyByDashingPath(CGPathRef path, const CGAffineTransform* transform, CGFloat phase,
                                        const CGFloat* lengths, size_t count);
/// The outline of the stroked path: filling it by the non-zero winding rule paints what stroking the path
/// would paint. Empty if the line has no width. Curves become lines. The outline is transformed as it is
/// added to the copy, so the transform also distorts the line width. NULL for NULL.
CGPathRef CGPathCreateCopyByStrokingPath(CGPathRef path, const CGAffineTransform* transform,
                                         CGFloat lineWidth, CGLineCap lineCap, CGLineJoin lineJoin,
                                         CGFloat miterLimit);
/// Adds a reference and returns the argument, which may be NULL.
CGPathRef CGPathRetain(CGPathRef path);
/// Releases a reference. NULL is ignored.
void CGPathRelease(CGPathRef path);
/// Exact equality of elements and points.
bool CGPathEqualToPath(CGPathRef path1, CGPathRef path2);

/// Begins a subpath.
void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y);
/// Adds a line.
void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y);
/// Adds a quadratic Bézier curve with one control point.
void CGPathAddQuadCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cpx, CGFloat cpy,
                               CGFloat x, CGFloat y);
/// Adds a cubic Bézier curve with two control points.
void CGPathAddCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cp1x, CGFloat cp1y,
                           CGFloat cp2x, CGFloat cp2y, CGFloat x, CGFloat y);
/// Closes the subpath; does nothing if it is already closed.
void CGPathCloseSubpath(CGMutablePathRef path);
/// Adds a rectangle as a closed subpath.
void CGPathAddRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect);
/// Adds `count` rectangles.
void CGPathAddRects(CGMutablePathRef path, const CGAffineTransform* m, const CGRect* rects, size_t count);
/// Begins a subpath at the first point and adds lines to the others.
void CGPathAddLines(CGMutablePathRef path, const CGAffineTransform* m, const CGPoint* points, size_t count);
/// Adds an ellipse as a closed subpath.
void CGPathAddEllipseInRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect);
/// Adds a rounded rectangle as a closed subpath; radii as for CGPathCreateWithRoundedRect.
void CGPathAddRoundedRect(CGMutablePathRef path, const CGAffineTransform* transform, CGRect rect,
                          CGFloat cornerWidth, CGFloat cornerHeight);
/// Adds a circular arc between two angles in radians, preceded by a line to its start if there is a current
/// point. A sweep of a full turn or more adds the whole circle.
void CGPathAddArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y, CGFloat radius,
                  CGFloat startAngle, CGFloat endAngle, bool clockwise);
/// Like CGPathAddArc, from `startAngle` over `delta` radians.
void CGPathAddRelativeArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y,
                          CGFloat radius, CGFloat startAngle, CGFloat delta);
/// Adds the circular arc that is tangent to the line from the current point to (x1, y1) and to the line from
/// there to (x2, y2), preceded by a line to its start. If there is no such circle, adds only a line to (x1,
/// y1).
void CGPathAddArcToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x1, CGFloat y1,
                         CGFloat x2, CGFloat y2, CGFloat radius);
/// Adds the elements of another path (which may be the same one).
void CGPathAddPath(CGMutablePathRef path1, const CGAffineTransform* m, CGPathRef path2);

/// True if the path has no elements, and for NULL.
bool CGPathIsEmpty(CGPathRef path);
/// True if the path is a single upright rectangle, which is then stored in `rect` (may be NULL).
bool CGPathIsRect(CGPathRef path, CGRect* rect);
/// The current point; CGPointZero when there is none.
CGPoint CGPathGetCurrentPoint(CGPathRef path);
/// The smallest rectangle that contains all points, including control points; CGRectNull if the path is
/// empty.
CGRect CGPathGetBoundingBox(CGPathRef path);
/// The smallest rectangle that contains the path itself; CGRectNull if the path is empty.
CGRect CGPathGetPathBoundingBox(CGPathRef path);
/// True if filling the path would paint the point, transformed by `m`. `eoFill` selects the even-odd rule,
/// otherwise the non-zero winding rule applies.
bool CGPathContainsPoint(CGPathRef path, const CGAffineTransform* m, CGPoint point, bool eoFill);
/// Calls `function` with each element in order.
void CGPathApply(CGPathRef path, void* info, CGPathApplierFunction function);

CF_EXTERN_C_END
