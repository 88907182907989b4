// Paths: sequences of subpaths made of lines, quadratic and cubic curves.
//
// Points go through the transform `m` when they are added (NULL: as they are). A point that is not finite
// drops its segment; a line, curve or close without a current point is dropped. After a close the current
// point is the start of the closed subpath, and a following segment begins a new subpath there. Functions
// that add to a path do nothing when the path is NULL. When memory is short they add a part or nothing; the
// path is known to be incomplete from then on, which shows when it is drawn (see CGBitmapContextCreateImage).
#pragma once

#include <CoreGraphics/CGAffineTransform.h>

typedef const struct CGPath* CGPathRef;
typedef struct CGPath* CGMutablePathRef;

CF_ENUM(int32_t, CGLineJoin){kCGLineJoinMiter, kCGLineJoinRound, kCGLineJoinBevel};

CF_ENUM(int32_t, CGLineCap){kCGLineCapButt, kCGLineCapRound, kCGLineCapSquare};

/// Kind of a path element; it has 1, 1, 2, 3 and 0 points.
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
/// A path equal to `path` that later changes of `path` leave alone; NULL for NULL.
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
/// The path of a rectangle whose corners are quarter ellipses with the given half axes, each clamped into
/// 0...half the side.
CGPathRef CGPathCreateWithRoundedRect(CGRect rect, CGFloat cornerWidth, CGFloat cornerHeight,
                                      const CGAffineTransform* transform);
/// The path cut into dashes: open subpaths made of lines, one per dash. `lengths` alternate between painted
/// and unpainted; a pattern without positive and finite length leaves the path whole. The dashes are
/// transformed as they are added to the copy. NULL for NULL and for an empty pattern.
CGPathRef CGPathCreateCopyByDashingPath(CGPathRef path, const CGAffineTransform* transform, CGFloat phase,
                                        const CGFloat* lengths, size_t count);
/// The outline that filling (non-zero rule) turns into the stroked path; empty when the line has no width.
/// Curves become lines. The outline is transformed as it is added to the copy, the pen with it. NULL for
/// NULL.
CGPathRef CGPathCreateCopyByStrokingPath(CGPathRef path, const CGAffineTransform* transform,
                                         CGFloat lineWidth, CGLineCap lineCap, CGLineJoin lineJoin,
                                         CGFloat miterLimit);
/// Adds a reference. NULL is passed through.
CGPathRef CGPathRetain(CGPathRef path);
/// Drops a reference. NULL does nothing.
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
/// Closes the subpath; nothing when it is closed already.
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
/// Adds the arc of a circle between two angles (radians), with a line to its start if there is a current
/// point. A sweep of a whole turn or more gives the circle.
void CGPathAddArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y, CGFloat radius,
                  CGFloat startAngle, CGFloat endAngle, bool clockwise);
/// As CGPathAddArc, from `startAngle` over `delta` radians.
void CGPathAddRelativeArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y,
                          CGFloat radius, CGFloat startAngle, CGFloat delta);
/// Adds the arc of a circle that touches the lines from the current point to (x1, y1) and from there to (x2,
/// y2), with a line to its start; only a line to (x1, y1) when there is no such circle.
void CGPathAddArcToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x1, CGFloat y1,
                         CGFloat x2, CGFloat y2, CGFloat radius);
/// Adds the elements of another path (which may be the same one).
void CGPathAddPath(CGMutablePathRef path1, const CGAffineTransform* m, CGPathRef path2);

/// True without elements, and for NULL.
bool CGPathIsEmpty(CGPathRef path);
/// True when the path is one rectangle with upright sides; it is stored in `rect` (may be NULL).
bool CGPathIsRect(CGPathRef path, CGRect* rect);
/// The current point; CGPointZero when there is none.
CGPoint CGPathGetCurrentPoint(CGPathRef path);
/// The smallest rectangle around all points, control points included; CGRectNull when empty.
CGRect CGPathGetBoundingBox(CGPathRef path);
/// The smallest rectangle around the path itself; CGRectNull when empty.
CGRect CGPathGetPathBoundingBox(CGPathRef path);
/// True when filling would paint the point (transformed by `m`): even-odd rule or non-zero winding.
bool CGPathContainsPoint(CGPathRef path, const CGAffineTransform* m, CGPoint point, bool eoFill);
/// Calls `function` with each element in order.
void CGPathApply(CGPathRef path, void* info, CGPathApplierFunction function);

CF_EXTERN_C_END
