// Drawing: a context has a current path, a graphics state that can be saved and restored, and operations that
// paint.
//
// Every function does nothing (or answers 0, false, NULL, CGPointZero, CGRectNull or the identity) when the
// context is NULL. Points of the path are transformed by the current matrix (CTM) when they are added, and
// painting or clipping consumes the path. A context is used by one thread at a time.
//
// Nothing throws. When memory is short an operation does a part of its work or none; of nested states that
// could not be saved the outermost alone is restored; a clip that could not be worked out lets nothing
// through. The context can still be used, and CGBitmapContextCreateImage tells that its picture is not whole.
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

/// How a source S and what is there, D, become the result R (premultiplied; Sa, Da and Ra are the alphas).
/// The first sixteen follow W3C "Compositing and Blending Level 1".
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
/// Adds a reference. NULL is passed through.
CGContextRef CGContextRetain(CGContextRef c);
/// Drops a reference. NULL does nothing.
void CGContextRelease(CGContextRef c);

// Graphics state

/// Pushes a copy of the state: matrix, clip, colours and spaces, line attributes, alpha, blend mode,
/// antialiasing, interpolation quality. The path is no part of it.
void CGContextSaveGState(CGContextRef c);
/// Goes back to the state saved last; ignored when there is none.
void CGContextRestoreGState(CGContextRef c);

/// Scales user space.
void CGContextScaleCTM(CGContextRef c, CGFloat sx, CGFloat sy);
/// Moves the origin of user space.
void CGContextTranslateCTM(CGContextRef c, CGFloat tx, CGFloat ty);
/// Rotates user space by radians.
void CGContextRotateCTM(CGContextRef c, CGFloat angle);
/// Puts `transform` before the current matrix.
void CGContextConcatCTM(CGContextRef c, CGAffineTransform transform);
/// The current matrix: from user space to the space the context was made with.
CGAffineTransform CGContextGetCTM(CGContextRef c);

/// Width of strokes in user space; 0 draws nothing, negative is ignored. Initially 1.
void CGContextSetLineWidth(CGContextRef c, CGFloat width);
/// Ends of open subpaths and dashes. Initially butt.
void CGContextSetLineCap(CGContextRef c, CGLineCap cap);
/// Corners. Initially miter.
void CGContextSetLineJoin(CGContextRef c, CGLineJoin join);
/// Greatest length of a miter as a multiple of the line width; a longer one becomes a bevel. Initially 10.
void CGContextSetMiterLimit(CGContextRef c, CGFloat limit);
/// Dash pattern in user space: painted and unpainted lengths in turn, begun at `phase`. NULL or `count` 0:
/// solid.
void CGContextSetLineDash(CGContextRef c, CGFloat phase, const CGFloat* lengths, size_t count);
/// Accepted for compatibility: curves are always drawn finely.
void CGContextSetFlatness(CGContextRef c, CGFloat flatness);
/// Opacity of everything drawn, clamped into 0...1. Initially 1.
void CGContextSetAlpha(CGContextRef c, CGFloat alpha);
/// How drawing mixes with what is there. Initially normal.
void CGContextSetBlendMode(CGContextRef c, CGBlendMode mode);

// Path

/// Forgets the current path.
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
/// Adds the arc of a circle between two angles, in radians; `clockwise` 1 goes from larger to smaller ones.
void CGContextAddArc(CGContextRef c, CGFloat x, CGFloat y, CGFloat radius, CGFloat startAngle,
                     CGFloat endAngle, int clockwise);
/// Adds the arc that touches the lines to (x1, y1) and on to (x2, y2).
void CGContextAddArcToPoint(CGContextRef c, CGFloat x1, CGFloat y1, CGFloat x2, CGFloat y2, CGFloat radius);
/// Adds the elements of a path.
void CGContextAddPath(CGContextRef c, CGPathRef path);
/// True without elements.
bool CGContextIsPathEmpty(CGContextRef c);
/// The current point in user space; CGPointZero when there is none.
CGPoint CGContextGetPathCurrentPoint(CGContextRef c);
/// The smallest user-space rectangle around all points, control points included; CGRectNull when empty.
CGRect CGContextGetPathBoundingBox(CGContextRef c);
/// The path in user space, NULL when empty. The caller owns the result.
CGPathRef CGContextCopyPath(CGContextRef c);
/// True when drawing in this mode would paint the user-space point.
bool CGContextPathContainsPoint(CGContextRef c, CGPoint point, CGPathDrawingMode mode);

// Painting paths

/// Paints the path: fill, then stroke, as the mode says. Open subpaths are filled as if closed.
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

/// Intersects the clip with the path, non-zero winding rule. An empty path leaves nothing.
void CGContextClip(CGContextRef c);
/// The same with the even-odd rule.
void CGContextEOClip(CGContextRef c);
/// Intersects the clip with a rectangle.
void CGContextClipToRect(CGContextRef c, CGRect rect);
/// Intersects the clip with the union of rectangles.
void CGContextClipToRects(CGContextRef c, const CGRect* rects, size_t count);
/// A user-space rectangle around the clip; CGRectNull when nothing is left.
CGRect CGContextGetClipBoundingBox(CGContextRef c);

// Colours. Components outside 0...1 are clamped when painting.

/// Fill colour and its space.
void CGContextSetFillColorWithColor(CGContextRef c, CGColorRef color);
/// Stroke colour and its space.
void CGContextSetStrokeColorWithColor(CGContextRef c, CGColorRef color);
/// Space of CGContextSetFillColor; the fill colour becomes opaque black.
void CGContextSetFillColorSpace(CGContextRef c, CGColorSpaceRef space);
/// Space of CGContextSetStrokeColor; the stroke colour becomes opaque black.
void CGContextSetStrokeColorSpace(CGContextRef c, CGColorSpaceRef space);
/// Fill colour: components of the fill colour space, then alpha.
void CGContextSetFillColor(CGContextRef c, const CGFloat* components);
/// Stroke colour: components of the stroke colour space, then alpha.
void CGContextSetStrokeColor(CGContextRef c, const CGFloat* components);
/// Fill colour and space: device gray.
void CGContextSetGrayFillColor(CGContextRef c, CGFloat gray, CGFloat alpha);
/// Stroke colour and space: device gray.
void CGContextSetGrayStrokeColor(CGContextRef c, CGFloat gray, CGFloat alpha);
/// Fill colour and space: device RGB.
void CGContextSetRGBFillColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// Stroke colour and space: device RGB.
void CGContextSetRGBStrokeColor(CGContextRef c, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// Accepted for compatibility: no colour matching takes place.
void CGContextSetRenderingIntent(CGContextRef c, CGColorRenderingIntent intent);

// Images and gradients

/// Draws an image over a rectangle, upright in a space whose y goes up.
void CGContextDrawImage(CGContextRef c, CGRect rect, CGImageRef image);
/// How images are scaled; kCGInterpolationNone takes the nearest pixel.
CGInterpolationQuality CGContextGetInterpolationQuality(CGContextRef c);
void CGContextSetInterpolationQuality(CGContextRef c, CGInterpolationQuality quality);
/// Fills the clip with a gradient along the line between two points; nothing when they coincide.
void CGContextDrawLinearGradient(CGContextRef c, CGGradientRef gradient, CGPoint startPoint, CGPoint endPoint,
                                 CGGradientDrawingOptions options);
/// Fills the clip with a gradient between two circles; nothing when they coincide or a radius is negative.
void CGContextDrawRadialGradient(CGContextRef c, CGGradientRef gradient, CGPoint startCenter,
                                 CGFloat startRadius, CGPoint endCenter, CGFloat endRadius,
                                 CGGradientDrawingOptions options);

// The rest

/// Off: pixels are painted whole or not at all. Initially on.
void CGContextSetShouldAntialias(CGContextRef c, bool shouldAntialias);
/// Off overrides CGContextSetShouldAntialias; no part of the saved state. Initially on.
void CGContextSetAllowsAntialiasing(CGContextRef c, bool allowsAntialiasing);
/// Nothing to do for a bitmap: drawing is done when a function returns.
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
/// The box of a user-space rectangle in device space.
CGRect CGContextConvertRectToDeviceSpace(CGContextRef c, CGRect rect);
/// The box of a device-space rectangle in user space.
CGRect CGContextConvertRectToUserSpace(CGContextRef c, CGRect rect);

CF_EXTERN_C_END
