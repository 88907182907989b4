// The current path of a context. Its points are in pixels.
#include "base/out_of_memory.h"
#include "context/context.h"
#include "path/path.h"
#include "path/path_queries.h"
#include "stroke/path_outline.h"

using namespace ozcg;

namespace {

CGPoint toPixel(CGContextRef c, CGFloat x, CGFloat y) {
    const CGAffineTransform& t = c->state.ctm;
    return {t.a * x + t.c * y + t.tx, t.b * x + t.d * y + t.ty};
}

CGAffineTransform toUser(CGContextRef c) { return CGAffineTransformInvert(c->state.ctm); }

PathData userPath(CGContextRef c) {
    PathData path;
    path.append(c->path, toUser(c));
    return path;
}

} // namespace

void CGContextBeginPath(CGContextRef c) {
    if (c) c->path.clear();
}

void CGContextMoveToPoint(CGContextRef c, CGFloat x, CGFloat y) {
    if (c) c->path.change([&](PathData& path) { path.moveTo(toPixel(c, x, y)); });
}

void CGContextAddLineToPoint(CGContextRef c, CGFloat x, CGFloat y) {
    if (c) c->path.change([&](PathData& path) { path.lineTo(toPixel(c, x, y)); });
}

void CGContextAddCurveToPoint(CGContextRef c, CGFloat cp1x, CGFloat cp1y, CGFloat cp2x, CGFloat cp2y,
                              CGFloat x, CGFloat y) {
    if (c)
        c->path.change([&](PathData& path) {
            path.cubicTo(toPixel(c, cp1x, cp1y), toPixel(c, cp2x, cp2y), toPixel(c, x, y));
        });
}

void CGContextAddQuadCurveToPoint(CGContextRef c, CGFloat cpx, CGFloat cpy, CGFloat x, CGFloat y) {
    if (c) c->path.change([&](PathData& path) { path.quadTo(toPixel(c, cpx, cpy), toPixel(c, x, y)); });
}

void CGContextClosePath(CGContextRef c) {
    if (c) c->path.change([&](PathData& path) { path.close(); });
}

void CGContextAddRect(CGContextRef c, CGRect rect) { CGContextAddRects(c, &rect, 1); }

void CGContextAddRects(CGContextRef c, const CGRect* rects, size_t count) {
    if (!c || !rects) return;
    c->path.change([&](PathData& path) {
        for (size_t i = 0; i < count; ++i) path.addRect(rects[i], c->state.ctm);
    });
}

void CGContextAddLines(CGContextRef c, const CGPoint* points, size_t count) {
    if (!c || !points || count == 0) return;
    CGContextMoveToPoint(c, points[0].x, points[0].y);
    for (size_t i = 1; i < count; ++i) CGContextAddLineToPoint(c, points[i].x, points[i].y);
}

void CGContextAddEllipseInRect(CGContextRef c, CGRect rect) {
    if (c) c->path.change([&](PathData& path) { path.addEllipse(rect, c->state.ctm); });
}

void CGContextAddArc(CGContextRef c, CGFloat x, CGFloat y, CGFloat radius, CGFloat startAngle,
                     CGFloat endAngle, int clockwise) {
    if (!c) return;
    const double sweep = arcSweep(startAngle, endAngle, clockwise != 0);
    c->path.change([&](PathData& path) { path.addArc({x, y}, radius, startAngle, sweep, c->state.ctm); });
}

void CGContextAddArcToPoint(CGContextRef c, CGFloat x1, CGFloat y1, CGFloat x2, CGFloat y2, CGFloat radius) {
    if (c)
        c->path.change([&](PathData& path) { path.addArcToPoint({x1, y1}, {x2, y2}, radius, c->state.ctm); });
}

void CGContextAddPath(CGContextRef c, CGPathRef path) {
    if (c && !c->isMissing(path))
        c->path.change([&](PathData& current) { current.append(path->data, c->state.ctm); });
}

bool CGContextIsPathEmpty(CGContextRef c) { return !c || c->path.empty(); }

CGPoint CGContextGetPathCurrentPoint(CGContextRef c) {
    if (!c || !c->path.hasCurrentPoint()) return CGPointZero;
    return CGPointApplyAffineTransform(c->path.currentPoint(), toUser(c));
}

CGRect CGContextGetPathBoundingBox(CGContextRef c) {
    if (!c) return CGRectNull;
    const CGAffineTransform& t = c->state.ctm;
    // Unless the matrix rotates, the bounds can be transformed in place of the path.
    const bool upright = (t.b == 0 && t.c == 0) || (t.a == 0 && t.d == 0);
    if (upright) return CGRectApplyAffineTransform(controlBounds(c->path), toUser(c));
    CGRect box = CGRectNull;
    c->complete([&] { box = controlBounds(userPath(c)); });
    return box;
}

CGPathRef CGContextCopyPath(CGContextRef c) {
    if (!c || c->path.empty()) return noObject<const CGPath>();
    return noteFailure(orWhenOutOfMemory(CGPathRef{}, [&] { return new CGPath(userPath(c)); }));
}

bool CGContextPathContainsPoint(CGContextRef c, CGPoint point, CGPathDrawingMode mode) {
    if (!c) return false;
    const CGPoint pixel = toPixel(c, point.x, point.y);
    const bool evenOdd = mode == kCGPathEOFill || mode == kCGPathEOFillStroke;
    if (mode != kCGPathStroke && contains(c->path, pixel, evenOdd)) return true;
    if (mode == kCGPathFill || mode == kCGPathEOFill) return false;
    return orWhenOutOfMemory(false, [&] { return strokeContains(userPath(c), c->state.line, point); });
}
