#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <float.h>

typedef double CGFloat;
#define CGFLOAT_DEFINED 1
#define CGFLOAT_IS_DOUBLE 1
#define CGFLOAT_MIN DBL_MIN
#define CGFLOAT_MAX DBL_MAX
#define CG_EXTERN CF_EXPORT
#define CG_INLINE static inline

#pragma clang assume_nonnull begin

typedef struct CGPoint {
    CGFloat x, y;
} CGPoint;
typedef struct CGSize {
    CGFloat width, height;
} CGSize;
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;
typedef struct CGAffineTransform {
    CGFloat a, b, c, d, tx, ty;
} CGAffineTransform;

typedef struct CGContext* CGContextRef;
typedef struct CGColor* CGColorRef;
typedef struct CGColorSpace* CGColorSpaceRef;
typedef struct CGDataProvider* CGDataProviderRef;
typedef struct CGGradient* CGGradientRef;
typedef struct CGImage* CGImageRef;
typedef const struct CGPath* CGPathRef;
typedef struct CGPath* CGMutablePathRef;

typedef CF_ENUM(int32_t, CGLineCap) { kCGLineCapButt, kCGLineCapRound, kCGLineCapSquare };
typedef CF_ENUM(int32_t, CGLineJoin) { kCGLineJoinMiter, kCGLineJoinRound, kCGLineJoinBevel };
typedef CF_ENUM(int32_t, CGPathDrawingMode) {
    kCGPathFill,
    kCGPathEOFill,
    kCGPathStroke,
    kCGPathFillStroke,
    kCGPathEOFillStroke
};
typedef CF_ENUM(uint32_t, CGImageAlphaInfo) {
    kCGImageAlphaNone,
    kCGImageAlphaPremultipliedLast,
    kCGImageAlphaPremultipliedFirst,
    kCGImageAlphaLast,
    kCGImageAlphaFirst,
    kCGImageAlphaNoneSkipLast,
    kCGImageAlphaNoneSkipFirst,
    kCGImageAlphaOnly
};
typedef CF_OPTIONS(uint32_t, CGGradientDrawingOptions) {
    kCGGradientDrawsBeforeStartLocation = 1 << 0,
    kCGGradientDrawsAfterEndLocation = 1 << 1
};

CF_EXTERN_C_BEGIN

extern const CGSize CGSizeZero;
extern const CGRect CGRectZero;
extern const CGAffineTransform CGAffineTransformIdentity;

CG_INLINE CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint point = {x, y};
    return point;
}
CG_INLINE CGSize CGSizeMake(CGFloat width, CGFloat height) {
    CGSize size = {width, height};
    return size;
}
CG_INLINE CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    CGRect rect = {{x, y}, {width, height}};
    return rect;
}
CG_INLINE CGAffineTransform CGAffineTransformMake(CGFloat a, CGFloat b, CGFloat c, CGFloat d, CGFloat tx,
                                                  CGFloat ty) {
    CGAffineTransform transform = {a, b, c, d, tx, ty};
    return transform;
}
CGAffineTransform CGAffineTransformInvert(CGAffineTransform t);
CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy);
bool CGRectIsEmpty(CGRect rect);
CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy);

CGColorSpaceRef _Null_unspecified CGColorSpaceCreateDeviceRGB(void) CF_RETURNS_RETAINED;
void CGColorSpaceRelease(CGColorSpaceRef _Nullable space);
CGColorSpaceRef _Nullable CGColorGetColorSpace(CGColorRef _Nullable color) CF_RETURNS_NOT_RETAINED;
const CGFloat* _Nullable CGColorGetComponents(CGColorRef _Nullable color);

CFDataRef _Nullable CGDataProviderCopyData(CGDataProviderRef _Nullable provider) CF_RETURNS_RETAINED;
size_t CGImageGetBytesPerRow(CGImageRef _Nullable image);
CGDataProviderRef _Nullable CGImageGetDataProvider(CGImageRef _Nullable image) CF_RETURNS_NOT_RETAINED;
size_t CGImageGetHeight(CGImageRef _Nullable image);
size_t CGImageGetWidth(CGImageRef _Nullable image);
void CGImageRelease(CGImageRef _Nullable image);

CGGradientRef _Nullable CGGradientCreateWithColorComponents(CGColorSpaceRef _Nullable space,
                                                            const CGFloat* _Nullable components,
                                                            const CGFloat* _Nullable locations,
                                                            size_t count) CF_RETURNS_RETAINED;
void CGGradientRelease(CGGradientRef _Nullable gradient);

CGMutablePathRef CGPathCreateMutable(void) CF_RETURNS_RETAINED;
CGPathRef CGPathCreateWithRoundedRect(CGRect rect, CGFloat cornerWidth, CGFloat cornerHeight,
                                      const CGAffineTransform* _Nullable transform) CF_RETURNS_RETAINED;
void CGPathAddCurveToPoint(CGMutablePathRef _Nullable path, const CGAffineTransform* _Nullable m,
                           CGFloat cp1x, CGFloat cp1y, CGFloat cp2x, CGFloat cp2y, CGFloat x, CGFloat y);
void CGPathAddEllipseInRect(CGMutablePathRef _Nullable path, const CGAffineTransform* _Nullable m,
                            CGRect rect);
void CGPathAddLineToPoint(CGMutablePathRef _Nullable path, const CGAffineTransform* _Nullable m, CGFloat x,
                          CGFloat y);
void CGPathCloseSubpath(CGMutablePathRef _Nullable path);
void CGPathMoveToPoint(CGMutablePathRef _Nullable path, const CGAffineTransform* _Nullable m, CGFloat x,
                       CGFloat y);
void CGPathRelease(CGPathRef _Nullable path);

CGContextRef _Nullable CGBitmapContextCreate(void* _Nullable data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef _Nullable space,
                                             uint32_t bitmapInfo) CF_RETURNS_RETAINED;
CGImageRef _Nullable CGBitmapContextCreateImage(CGContextRef _Nullable context) CF_RETURNS_RETAINED;
void CGContextAddCurveToPoint(CGContextRef _Nullable c, CGFloat cp1x, CGFloat cp1y, CGFloat cp2x,
                              CGFloat cp2y, CGFloat x, CGFloat y);
void CGContextAddEllipseInRect(CGContextRef _Nullable c, CGRect rect);
void CGContextAddLineToPoint(CGContextRef _Nullable c, CGFloat x, CGFloat y);
void CGContextAddPath(CGContextRef _Nullable c, CGPathRef _Nullable path);
void CGContextClip(CGContextRef _Nullable c);
void CGContextClipToRect(CGContextRef _Nullable c, CGRect rect);
void CGContextClosePath(CGContextRef _Nullable c);
void CGContextConcatCTM(CGContextRef _Nullable c, CGAffineTransform transform);
void CGContextDrawImage(CGContextRef _Nullable c, CGRect rect, CGImageRef _Nullable image);
void CGContextDrawLinearGradient(CGContextRef _Nullable c, CGGradientRef _Nullable gradient,
                                 CGPoint startPoint, CGPoint endPoint, CGGradientDrawingOptions options);
void CGContextDrawPath(CGContextRef _Nullable c, CGPathDrawingMode mode);
void CGContextDrawRadialGradient(CGContextRef _Nullable c, CGGradientRef _Nullable gradient,
                                 CGPoint startCenter, CGFloat startRadius, CGPoint endCenter,
                                 CGFloat endRadius, CGGradientDrawingOptions options);
void CGContextEOClip(CGContextRef _Nullable c);
CGRect CGContextGetPathBoundingBox(CGContextRef _Nullable c);
void CGContextMoveToPoint(CGContextRef _Nullable c, CGFloat x, CGFloat y);
void CGContextRelease(CGContextRef _Nullable c);
void CGContextRestoreGState(CGContextRef _Nullable c);
void CGContextSaveGState(CGContextRef _Nullable c);
void CGContextScaleCTM(CGContextRef _Nullable c, CGFloat sx, CGFloat sy);
void CGContextSetAlpha(CGContextRef _Nullable c, CGFloat alpha);
void CGContextSetFillColor(CGContextRef _Nullable c, const CGFloat* _Nullable components);
void CGContextSetFillColorSpace(CGContextRef _Nullable c, CGColorSpaceRef _Nullable space);
void CGContextSetLineCap(CGContextRef _Nullable c, CGLineCap cap);
void CGContextSetLineDash(CGContextRef _Nullable c, CGFloat phase, const CGFloat* _Nullable lengths,
                          size_t count);
void CGContextSetLineJoin(CGContextRef _Nullable c, CGLineJoin join);
void CGContextSetLineWidth(CGContextRef _Nullable c, CGFloat width);
void CGContextSetMiterLimit(CGContextRef _Nullable c, CGFloat limit);
void CGContextSetRGBStrokeColor(CGContextRef _Nullable c, CGFloat red, CGFloat green, CGFloat blue,
                                CGFloat alpha);
void CGContextSetStrokeColor(CGContextRef _Nullable c, const CGFloat* _Nullable components);
void CGContextSetStrokeColorSpace(CGContextRef _Nullable c, CGColorSpaceRef _Nullable space);
void CGContextStrokeRect(CGContextRef _Nullable c, CGRect rect);
void CGContextTranslateCTM(CGContextRef _Nullable c, CGFloat tx, CGFloat ty);

CF_EXTERN_C_END

#pragma clang assume_nonnull end
