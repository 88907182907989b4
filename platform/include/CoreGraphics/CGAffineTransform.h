// Affine transforms of the plane: x' = a x + c y + tx, y' = b x + d y + ty.
#pragma once

#include <CoreGraphics/CGGeometry.h>

typedef struct CGAffineTransform {
    CGFloat a, b, c, d;
    CGFloat tx, ty;
} CGAffineTransform;

CF_EXTERN_C_BEGIN

extern const CGAffineTransform CGAffineTransformIdentity;

CG_INLINE CGAffineTransform CGAffineTransformMake(CGFloat a, CGFloat b, CGFloat c, CGFloat d, CGFloat tx,
                                                  CGFloat ty) {
    CGAffineTransform t = {a, b, c, d, tx, ty};
    return t;
}
/// Translates by (tx, ty).
CGAffineTransform CGAffineTransformMakeTranslation(CGFloat tx, CGFloat ty);
/// Scales about the origin.
CGAffineTransform CGAffineTransformMakeScale(CGFloat sx, CGFloat sy);
/// Rotates about the origin by `angle` radians, from the x axis towards the y axis.
CGAffineTransform CGAffineTransformMakeRotation(CGFloat angle);
/// True if `t` is exactly the identity.
bool CGAffineTransformIsIdentity(CGAffineTransform t);
/// Translates first, then applies `t`. The two below scale and rotate first.
CGAffineTransform CGAffineTransformTranslate(CGAffineTransform t, CGFloat tx, CGFloat ty);
CGAffineTransform CGAffineTransformScale(CGAffineTransform t, CGFloat sx, CGFloat sy);
CGAffineTransform CGAffineTransformRotate(CGAffineTransform t, CGFloat angle);
/// The inverse; a singular transform is returned unchanged.
CGAffineTransform CGAffineTransformInvert(CGAffineTransform t);
/// Applies `t1` first, then `t2`.
CGAffineTransform CGAffineTransformConcat(CGAffineTransform t1, CGAffineTransform t2);
/// Exact equality of the six numbers.
bool CGAffineTransformEqualToTransform(CGAffineTransform t1, CGAffineTransform t2);

/// The image of a point.
CG_INLINE CGPoint CGPointApplyAffineTransform(CGPoint point, CGAffineTransform t) {
    CGPoint p = {t.a * point.x + t.c * point.y + t.tx, t.b * point.x + t.d * point.y + t.ty};
    return p;
}
/// The image of a size, taken as a vector: the translation does not affect it.
CG_INLINE CGSize CGSizeApplyAffineTransform(CGSize size, CGAffineTransform t) {
    CGSize s = {t.a * size.width + t.c * size.height, t.b * size.width + t.d * size.height};
    return s;
}
/// The smallest upright rectangle that contains the image. Null and infinite rectangles are returned
/// unchanged.
CGRect CGRectApplyAffineTransform(CGRect rect, CGAffineTransform t);

CF_EXTERN_C_END
