// Drawing contexts. A context has a current path, a graphics state that can be saved and restored, and
// operations that paint.
//
// If the context is NULL, functions do nothing and return 0, false, NULL, CGPointZero, CGRectNull or the
// identity. Points are transformed by the current transformation matrix (CTM) when they are added to the
// path. Painting and clipping consume the path. Only one thread at a time may use a context.
//
// Nothing throws. When memory is short, an operation does only part of its work or none. Of nested states
// that could not be saved, only the outermost is restored. A clip that could not be computed lets nothing
// through. The context stays usable, but CGBitmapContextCreateImage returns no image of the incomplete
// picture.
#pragma once

#include <CoreGraphics/CGAffineTransform.h>
#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGGradient.h>
#include <CoreGraphics/CGImage.h>
#include <CoreGraphics/CGPath.h>

typedef struct CGContext* CGContextRef;

CF_ENUM(int32_t, CGPathDrawingMode){kCGPathFill, kCGPathEOFill, kCGPathStroke, kCGPathFillStroke,
                                    kCGPathEOFillStroke};

CF_ENUM(int32_t, CGInterpolationQuality){kCGInterpolationDefault = 0, kCGInterpolationNone = 1,
                                         kCGInterpolationLow = 2, kCGInterpolationMedium = 4,
                                         kCGInterpolationHigh = 3};

/// How a source S and a destination D combine into the result R. All are premultiplied; Sa, Da and Ra are
/// their alphas. The first sixteen follow W3C "Compositing and Blending Level 1".
CF_ENUM(int32_t, CGBlendMode){
    kCGBlendModeNormal,
    kCGBlendModeMultiply,
    kCGBlendModeScreen,
    kCGBlendModeOverlay,
    kCGBlendModeDarken,
    kCGBlendModeLighten,
    kCGBlendModeColorDodge,
    kCGBlendModeColorBurn,
    kCGBlendModeSoftLight,
    kCGBlendModeHardLight,
    kCGBlendModeDifference,
    kCGBlendModeExclusion,
    kCGBlendModeHue,
    kCGBlendModeSaturation,
    kCGBlendModeColor,
    kCGBlendModeLuminosity,
    kCGBlendModeClear,           // R = 0
    kCGBlendModeCopy,            // R = S
    kCGBlendModeSourceIn,        // R = S Da
    kCGBlendModeSourceOut,       // R = S (1 - Da)
    kCGBlendModeSourceAtop,      // R = S Da + D (1 - Sa)
    kCGBlendModeDestinationOver, // R = S (1 - Da) + D
    kCGBlendModeDestinationIn,   // R = D Sa
    kCGBlendModeDestinationOut,  // R = D (1 - Sa)
    kCGBlendModeDestinationAtop, // R = S (1 - Da) + D Sa
    kCGBlendModeXOR,             // R = S (1 - Da) + D (1 - Sa)
    kCGBlendModePlusDarker,      // R = max(0, Ra - ((Da - D) + (Sa - S))), Ra = min(1, Sa + Da)
    kCGBlendModePlusLighter      // R = min(1, S + D)
};

CF_EXTERN_C_BEGIN

/// Type id of contexts.
CFTypeID CGContextGetTypeID(void);
/// Adds a reference and returns the argument, which may be NULL.
CGContextRef CGContextRetain(CGContextRef c);
/// Releases a reference. NULL is ignored.
void CGContextRelease(CGContextRef c);

// Graphics state

/// Pushes a copy of the state: matrix, clip, colours and spaces, line attributes, alpha, blend mode,
/// antialiasing, interpolation quality. The path is not part of it.
void CGContextSaveGState(CGContextRef c);
/// Restores the most recently saved state; ignored if there is none.
void CGContextRestoreGState(CGContextRef c);

/// Scales user space.
void CGContextScaleCTM(CGContextRef c, CGFloat sx, CGFloat sy);
/// Moves the origin of user space.
void CGContextTranslateCTM(CGContextRef c, CGFloat tx, CGFloat ty);
/// Rotates user space by `angle` radians.
void CGContextRotateCTM(CGContextRef c, CGFloat angle);
/// Makes `transform` apply before the current matrix.
void CGContextConcatCTM(CGContextRef c, CGAffineTransform transform);
/// The current matrix: from user space to the initial user space of the context.
CGAffineTransform CGContextGetCTM(CGContextRef c);

/// Stroke width in user space, initially 1. A width of 0 draws nothing; a negative one is ignored.
void CGContextSetLineWidth(CGContextRef c, CGFloat width);
/// How open subpaths and dashes end; initially butt.
void CGContextSetLineCap(CGContextRef c, CGLineCap cap);
/// How corners are joined; initially miter.
void CGContextSetLineJoin(CGContextRef c, CGLineJoin join);
/// Maximum miter length as a multiple of the line width, initially 10. Longer miters become bevels.
void CGContextSetMiterLimit(CGContextRef c, CGFloat limit);
/// Dash pattern in user space: alternating painted and unpainted lengths, starting at offset `phase`. NULL or
/// a `count` of 0 makes lines solid.
void CGContextSetLineDash(CGContextRef c, CGFloat phase, const CGFloat* lengths, size_t count);
/// Accepted for compatibility: curves are always drawn finely.
void CGContextSetFlatness(CGContextRef c, CGFloat flatness);
/// Opacity of everything drawn, clamped to 0...1; initially 1.
void CGContextSetAlpha(CGContextRef c, CGFloat alpha);
/// How drawing combines with the existing pixels; initially normal.
void CGContextSetBlendMode(CGContextRef c, CGBlendMode mode);

// Path

/// Discards the current path.
void CGContextBeginPath(CGContextRef c);
/// Begins a subpath.
void CGContextMoveToPoint(CGContextRef c, CGFloat x, CGFloat y);
/// Adds a line.
void CGContextAddLineToPoint(CGContextRef c, CGFloat x, CGFloat y);
/// Adds a cubic Bézier curve.
void CGContextAddCurveToPoint(CGContextRef c, CGFloat cp1x, CGFloat cp1y, CGFloat cp2x, CGFloat cp2y,
                              CGFloat x, CGFloat y);
/// Adds a quadratic Bézier curve.
void CGContextAddQuadCurveToPoint(CGContextRef c, CGFloat cpx, CGFloat cpy, CGFloat x, CGFloat y);
/// Closes the subpath.
void CGContextClosePath(CGContextRef c);
/// Adds a rectangle as a closed subpath.
void CGContextAddRect(CGContextRef c, CGRect rect);
/// Adds `count` rectangles.
void CGContextAddRects(CGContextRef c, const CGRect* rects, size_t count);
/// Begins a subpath at the first point and adds lines to the others.
void CGContextAddLines(CGContextRef c, const CGPoint* points, size_t count);
/// Adds an ellipse as a closed subpath.
void CGContextAddEllipseInRect(CGContextRef c, CGRect rect);
/// Adds a circular arc between two angles in radians. If `clockwise` is 1, the angle decreases along the arc.
void CGContextAddArc(CGContextRef c, CGFloat x, CGFloat y, CGFloat radius, CGFloat startAngle,
                     CGFloat endAngle, int clockwise);
/// Adds the circular arc that is tangent to the line from the current point to (x1, y1) and to the line from
/// there to (x2, y2).
void CGContextAddArcToPoint(CGContextRef c, CGFloat x1, CGFloat y1, CGFloat x2, CGFloat y2, CGFloat radius);
/// Adds the elements of a path.
void CGContextAddPath(CGContextRef c, CGPathRef path);
/// True if the path has no elements.
bool CGContextIsPathEmpty(CGContextRef c);
/// The current point in user space; CGPointZero when there is none.
CGPoint CGContextGetPathCurrentPoint(CGContextRef c);
/// The smallest user-space rectangle that contains all points, including control points; CGRectNull if the
/// path is empty.
CGRect CGContextGetPathBoundingBox(CGContextRef c);
/// The path in user space; NULL if it is empty. The caller owns the result.
CGPathRef CGContextCopyPath(CGContextRef c);
/// True if drawing the path in this mode would paint the user-space point.
bool CGContextPathContainsPoint(CGContextRef c, CGPoint point, CGPathDrawingMode mode);

// Painting paths

/// Paints the path in the given mode: the fill first, then the stroke. Open subpaths are filled as if closed.
void CGContextDrawPath(CGContextRef c, CGPathDrawingMode mode);
/// CGContextDrawPath with kCGPathFill.
void CGContextFillPath(CGContextRef c);
/// CGContextDrawPath with kCGPathEOFill.
void CGContextEOFillPath(CGContextRef c);
/// CGContextDrawPath with kCGPathStroke.
void CGContextStrokePath(CGContextRef c);
/// Fills a rectangle; the current path is consumed, as in all functions below.
void CGContextFillRect(CGContextRef c, CGRect rect);
/// Fills the union of `count` rectangles.
void CGContextFillRects(CGContextRef c, const CGRect* rects, size_t count);
/// Strokes a rectangle.
void CGContextStrokeRect(CGContextRef c, CGRect rect);
/// Strokes a rectangle with this line width.
void CGContextStrokeRectWithWidth(CGContextRef c, CGRect rect, CGFloat width);
/// Makes a rectangle transparent, within the clip.
void CGContextClearRect(CGContextRef c, CGRect rect);
/// Fills an ellipse.
void CGContextFillEllipseInRect(CGContextRef c, CGRect rect);
/// Strokes an ellipse.
void CGContextStrokeEllipseInRect(CGContextRef c, CGRect rect);
/// Strokes lines between points 0 and 1, 2 and 3, and so on.
void CGContextStrokeLineSegments(CGContextRef c, const CGPoint* points, size_t count);

// Clipping

/// Intersects the clip with the interior of the path by the non-zero winding rule. An empty path makes the
/// clip empty.
void CGContextClip(CGContextRef c);
/// The same with the even-odd rule.
void CGContextEOClip(CGContextRef c);
/// Intersects the clip with a rectangle.
void CGContextClipToRect(CGContextRef c, CGRect rect);
/// Intersects the clip with the union of rectangles.
void CGContextClipToRects(CGContextRef c, const CGRect* rects, size_t count);
/// A user-space rectangle that contains the clip; CGRectNull if the clip is empty.
CGRect CGContextGetClipBoundingBox(CGContextRef c);

// Colours. Components outside 0...1 are clamped when painting.

/// Sets the fill colour and its space.
void CGContextSetFillColorWithColor(CGContextRef c, CGColorRef color);
/// Sets the stroke colour and its space.
void CGContextSetStrokeColorWithColor(CGContextRef c, CGColorRef color);
/// Sets the space of CGContextSetFillColor; the fill colour becomes opaque black.
void CGContextSetFillColorSpace(CGContextRef c, CGColorSpaceRef space);
/// Sets the space of CGContextSetStrokeColor; the stroke colour becomes opaque black.
void CGContextSetStrokeColorSpace(CGContextRef c, CGColorSpaceRef space);
/// Sets the fill colour: components in the fill colour space, followed by alpha.
void CGContextSetFillColor(CGContextRef c, const CGFloat* components);
/// Sets the stroke colour: components in the stroke colour space, followed by alpha.
void CGContextSetStrokeColor(CGContextRef c, const CGFloat* components);
/// Sets the fill colour and its space, device gray.
void CGContextSetGrayFillColor(CGContextRef c, CGFloat gray, CGFloat alpha);
/// Sets the stroke colour and its space, device gray.
void CGContextSetGrayStrokeColor(CGContextRef c, CGFloat gray, CGFloat alpha);
/// Sets the fill colour and its space, device RGB.
void CGContextSetRGBFillColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// Sets the stroke colour and its space, device RGB.
void CGContextSetRGBStrokeColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// Accepted for compatibility: there is no colour matching.
void CGContextSetRenderingIntent(CGContextRef c, CGColorRenderingIntent intent);

// Images and gradients

/// Draws an image into a rectangle; it is upright if the y axis of user space points up. The current path
/// remains.
void CGContextDrawImage(CGContextRef c, CGRect rect, CGImageRef image);
/// How images are scaled.
CGInterpolationQuality CGContextGetInterpolationQuality(CGContextRef c);
/// Sets how images are scaled: kCGInterpolationNone takes the nearest pixel, as does kCGInterpolationDefault,
/// the initial setting, for images that should not be interpolated. All others interpolate where an image is
/// enlarged and average where it is reduced.
void CGContextSetInterpolationQuality(CGContextRef c, CGInterpolationQuality quality);
/// Fills the clip with a gradient along the line between two points; draws nothing if they coincide.
void CGContextDrawLinearGradient(CGContextRef c, CGGradientRef gradient, CGPoint startPoint, CGPoint endPoint,
                                 CGGradientDrawingOptions options);
/// Fills the clip with a gradient between two circles; draws nothing if they coincide or a radius is
/// negative.
void CGContextDrawRadialGradient(CGContextRef c, CGGradientRef gradient, CGPoint startCenter,
                                 CGFloat startRadius, CGPoint endCenter, CGFloat endRadius,
                                 CGGradientDrawingOptions options);

// Antialiasing and device space

/// Whether edges are antialiased; initially on. When off, each pixel is painted fully or not at all.
void CGContextSetShouldAntialias(CGContextRef c, bool shouldAntialias);
/// Whether CGContextSetShouldAntialias has an effect; initially on. When off, nothing is antialiased. Not
/// part of the saved state.
void CGContextSetAllowsAntialiasing(CGContextRef c, bool allowsAntialiasing);
/// Does nothing for a bitmap: drawing is complete when a function returns.
void CGContextFlush(CGContextRef c);

/// From user space to device space, which has one unit per pixel.
CGAffineTransform CGContextGetUserSpaceToDeviceSpaceTransform(CGContextRef c);
/// A user-space point in device space.
CGPoint CGContextConvertPointToDeviceSpace(CGContextRef c, CGPoint point);
/// A device-space point in user space.
CGPoint CGContextConvertPointToUserSpace(CGContextRef c, CGPoint point);
/// A user-space size in device space.
CGSize CGContextConvertSizeToDeviceSpace(CGContextRef c, CGSize size);
/// A device-space size in user space.
CGSize CGContextConvertSizeToUserSpace(CGContextRef c, CGSize size);
/// The bounding box of a user-space rectangle in device space.
CGRect CGContextConvertRectToDeviceSpace(CGContextRef c, CGRect rect);
/// The bounding box of a device-space rectangle in user space.
CGRect CGContextConvertRectToUserSpace(CGContextRef c, CGRect rect);

CF_EXTERN_C_END
