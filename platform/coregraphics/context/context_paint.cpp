// Painting and clipping operations of a context.
#include "context/context.h"
#include "paint/gradient_source.h"
#include "paint/image_source.h"

#include <algorithm>

using namespace ozcg;

namespace {

// Paints the current path and consumes it.
void paint(CGContextRef c, bool fills, FillRule rule, bool strokes) {
    if (c->path.isIncomplete()) c->isIncomplete = true;
    c->complete([&] {
        const Surface& surface = c->surfaceForDrawing();
        const Compositing compositing = c->compositing();
        if (fills) fillPath(surface, compositing, c->path, rule, c->state.fillColor);
        if (strokes)
            strokePath(surface, compositing, c->path, c->state.line, c->state.ctm, c->state.strokeColor);
    });
    c->path.clear();
}

void clip(CGContextRef c, FillRule rule) {
    if (!c) return;
    // A clip that cannot be computed excludes everything.
    if (c->path.isIncomplete()) c->isIncomplete = true;
    const bool done =
        c->complete([&] { clipToPath(c->state.clip, c->path, rule, c->compositing().antialias); });
    if (!done) c->state.clip.makeEmpty();
    c->path.clear();
}

template <class Source>
void drawGradient(CGContextRef c, std::optional<Source> source) {
    if (!source || c->state.clip.empty()) return;
    c->complete([&] { paintClip(c->surfaceForDrawing(), c->compositing(), *source); });
}

} // namespace

void CGContextDrawPath(CGContextRef c, CGPathDrawingMode mode) {
    if (!c) return;
    const bool evenOdd = mode == kCGPathEOFill || mode == kCGPathEOFillStroke;
    const bool fills = mode != kCGPathStroke;
    const bool strokes = mode != kCGPathFill && mode != kCGPathEOFill;
    paint(c, fills, evenOdd ? FillRule::evenOdd : FillRule::nonZero, strokes);
}

void CGContextFillPath(CGContextRef c) { CGContextDrawPath(c, kCGPathFill); }

void CGContextEOFillPath(CGContextRef c) { CGContextDrawPath(c, kCGPathEOFill); }

void CGContextStrokePath(CGContextRef c) { CGContextDrawPath(c, kCGPathStroke); }

void CGContextFillRect(CGContextRef c, CGRect rect) { CGContextFillRects(c, &rect, 1); }

void CGContextFillRects(CGContextRef c, const CGRect* rects, size_t count) {
    CGContextBeginPath(c);
    CGContextAddRects(c, rects, count);
    CGContextFillPath(c);
}

void CGContextStrokeRect(CGContextRef c, CGRect rect) {
    CGContextBeginPath(c);
    CGContextAddRect(c, rect);
    CGContextStrokePath(c);
}

void CGContextStrokeRectWithWidth(CGContextRef c, CGRect rect, CGFloat width) {
    if (!c) return;
    if (!(width >= 0)) return CGContextBeginPath(c); // or else SetLineWidth would keep the width before
    const double before = c->state.line.width;
    CGContextSetLineWidth(c, width);
    CGContextStrokeRect(c, rect);
    c->state.line.width = before;
}

void CGContextClearRect(CGContextRef c, CGRect rect) {
    if (!c) return;
    const CGBlendMode before = c->state.blendMode;
    c->state.blendMode = kCGBlendModeClear;
    CGContextFillRect(c, rect);
    c->state.blendMode = before;
}

void CGContextFillEllipseInRect(CGContextRef c, CGRect rect) {
    CGContextBeginPath(c);
    CGContextAddEllipseInRect(c, rect);
    CGContextFillPath(c);
}

void CGContextStrokeEllipseInRect(CGContextRef c, CGRect rect) {
    CGContextBeginPath(c);
    CGContextAddEllipseInRect(c, rect);
    CGContextStrokePath(c);
}

void CGContextStrokeLineSegments(CGContextRef c, const CGPoint* points, size_t count) {
    CGContextBeginPath(c);
    for (size_t i = 0; points && i + 1 < count; i += 2) {
        CGContextMoveToPoint(c, points[i].x, points[i].y);
        CGContextAddLineToPoint(c, points[i + 1].x, points[i + 1].y);
    }
    CGContextStrokePath(c);
}

void CGContextClip(CGContextRef c) { clip(c, FillRule::nonZero); }

void CGContextEOClip(CGContextRef c) { clip(c, FillRule::evenOdd); }

void CGContextClipToRect(CGContextRef c, CGRect rect) { CGContextClipToRects(c, &rect, 1); }

void CGContextClipToRects(CGContextRef c, const CGRect* rects, size_t count) {
    CGContextBeginPath(c);
    CGContextAddRects(c, rects, count);
    CGContextClip(c);
}

CGRect CGContextGetClipBoundingBox(CGContextRef c) {
    if (!c || c->state.clip.empty()) return CGRectNull;
    const IntRect& box = c->state.clip.outer();
    const CGRect pixels = CGRectMake(box.x0, box.y0, box.width(), box.height());
    return CGRectApplyAffineTransform(pixels, CGAffineTransformInvert(c->state.ctm));
}

void CGContextDrawImage(CGContextRef c, CGRect rect, CGImageRef image) {
    if (!c || c->isMissing(image) || c->state.clip.empty()) return;
    const CGRect r = CGRectStandardize(rect);
    const CGAffineTransform fromUnitSquare = {r.size.width, 0, 0, r.size.height, r.origin.x, r.origin.y};
    const CGAffineTransform toPixel = CGAffineTransformConcat(fromUnitSquare, c->state.ctm);
    const CGInterpolationQuality quality = c->state.interpolation;
    const bool smooth = quality == kCGInterpolationDefault ? image->format.shouldInterpolate
                                                           : quality != kCGInterpolationNone;
    c->complete([&] {
        PathData outline;
        outline.addRect(CGRectMake(0, 0, 1, 1), toPixel);
        const IntRect visible = pixelsInside(c->state.clip, outline);
        if (visible.empty()) return;
        std::optional<ImageSource> source = ImageSource::make(*image, toPixel, smooth, visible);
        if (source) fillPath(c->surfaceForDrawing(), c->compositing(), outline, FillRule::nonZero, *source);
    });
}

void CGContextDrawLinearGradient(CGContextRef c, CGGradientRef gradient, CGPoint startPoint, CGPoint endPoint,
                                 CGGradientDrawingOptions options) {
    if (!c || c->isMissing(gradient)) return;
    drawGradient(c, LinearGradientSource::make(*gradient, startPoint, endPoint, options, c->state.ctm));
}

void CGContextDrawRadialGradient(CGContextRef c, CGGradientRef gradient, CGPoint startCenter,
                                 CGFloat startRadius, CGPoint endCenter, CGFloat endRadius,
                                 CGGradientDrawingOptions options) {
    if (!c || c->isMissing(gradient)) return;
    drawGradient(c, RadialGradientSource::make(*gradient, {startCenter, startRadius}, {endCenter, endRadius},
                                               options, c->state.ctm));
}
