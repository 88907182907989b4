#include "path/path.h"

#include "base/out_of_memory.h"
#include "base/ref.h"
#include "path/path_queries.h"
#include "support/kept_memory.h"
#include "support/thread_owned.h"

#include <array>
#include <memory>

using ozcg::PathData;
using ozcg::Verb;

namespace {

const CGAffineTransform& orIdentity(const CGAffineTransform* m) { return m ? *m : CGAffineTransformIdentity; }

CGPoint mapped(const CGAffineTransform* m, CGFloat x, CGFloat y) {
    return m ? CGPointApplyAffineTransform({x, y}, *m) : CGPoint{x, y};
}

/// Lets `function` add to the path's data; does nothing for NULL.
template <class Function>
void change(CGMutablePathRef path, Function&& function) noexcept {
    if (path) path->data.change(function);
}

/// Larger paths are not kept: more points than drawings need, and little memory beside a bitmap.
constexpr size_t kMostKeptPoints = 8192;

/// The path that the thread destroyed last, kept for the next one that it makes: rectangles are made and
/// destroyed by the thousand.
struct KeptPath {
    std::unique_ptr<CGPath> path;
};

/// An empty path with one reference. Throws std::bad_alloc.
ozcg::Ref<CGPath> makePath() {
    KeptPath* const kept = ozm::support::ThreadOwned<KeptPath>::get();
    if (!kept || !kept->path) return ozcg::Ref<CGPath>::adopting(new CGPath);
    return ozcg::Ref<CGPath>::retaining(kept->path.release());
}

/// Keeps a path that has no references any more. False when the caller has to delete it.
bool keepPath(CGPath* path) noexcept {
    if (!ozm::support::kKeepsMemory || path->data.capacity() > kMostKeptPoints) return false;
    KeptPath* const kept = ozm::support::ThreadOwned<KeptPath>::get();
    if (!kept || kept->path) return false;
    path->data.clear();
    kept->path.reset(path);
    return true;
}

/// A new path that `function` has added to; NULL when memory is short.
template <class Function>
CGMutablePathRef createWith(Function&& function) noexcept {
    return ozcg::noteFailure(ozcg::orWhenOutOfMemory(CGMutablePathRef{}, [&] {
        auto path = makePath();
        function(path->data);
        return path.leak();
    }));
}

CGPathElementType elementType(Verb verb) {
    switch (verb) {
    case Verb::move: return kCGPathElementMoveToPoint;
    case Verb::line: return kCGPathElementAddLineToPoint;
    case Verb::quad: return kCGPathElementAddQuadCurveToPoint;
    case Verb::cubic: return kCGPathElementAddCurveToPoint;
    case Verb::close: break;
    }
    return kCGPathElementCloseSubpath;
}

} // namespace

void CGPath::releaseKept() noexcept { ozm::support::ThreadOwned<KeptPath>::release(); }

void CGPath::dispose() noexcept {
    if (!keepPath(this)) Object::dispose();
}

CFTypeID CGPathGetTypeID(void) { return static_cast<CFTypeID>(ozcg::TypeId::path); }

CGMutablePathRef CGPathCreateMutable(void) {
    return createWith([](const PathData&) {});
}

CGPathRef CGPathCreateCopy(CGPathRef path) { return CGPathCreateMutableCopy(path); }

CGPathRef CGPathCreateCopyByTransformingPath(CGPathRef path, const CGAffineTransform* transform) {
    return CGPathCreateMutableCopyByTransformingPath(path, transform);
}

CGMutablePathRef CGPathCreateMutableCopy(CGPathRef path) {
    return path ? createWith([&](PathData& data) { data = path->data; }) : nullptr;
}

CGMutablePathRef CGPathCreateMutableCopyByTransformingPath(CGPathRef path,
                                                           const CGAffineTransform* transform) {
    if (!path) return nullptr;
    return createWith([&](PathData& data) { data.append(path->data, orIdentity(transform)); });
}

CGPathRef CGPathCreateWithRect(CGRect rect, const CGAffineTransform* transform) {
    return createWith([&](PathData& data) { data.addRect(rect, orIdentity(transform)); });
}

CGPathRef CGPathCreateWithEllipseInRect(CGRect rect, const CGAffineTransform* transform) {
    return createWith([&](PathData& data) { data.addEllipse(rect, orIdentity(transform)); });
}

CGPathRef CGPathCreateWithRoundedRect(CGRect rect, CGFloat cornerWidth, CGFloat cornerHeight,
                                      const CGAffineTransform* transform) {
    return createWith(
        [&](PathData& data) { data.addRoundedRect(rect, cornerWidth, cornerHeight, orIdentity(transform)); });
}

CGPathRef CGPathRetain(CGPathRef path) { return ozcg::retained(path); }

void CGPathRelease(CGPathRef path) { ozcg::released(path); }

bool CGPathEqualToPath(CGPathRef path1, CGPathRef path2) { return CFEqual(path1, path2); }

void CGPathMoveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y) {
    change(path, [&](PathData& data) { data.moveTo(mapped(m, x, y)); });
}

void CGPathAddLineToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y) {
    change(path, [&](PathData& data) { data.lineTo(mapped(m, x, y)); });
}

void CGPathAddQuadCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cpx, CGFloat cpy,
                               CGFloat x, CGFloat y) {
    change(path, [&](PathData& data) { data.quadTo(mapped(m, cpx, cpy), mapped(m, x, y)); });
}

void CGPathAddCurveToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat cp1x, CGFloat cp1y,
                           CGFloat cp2x, CGFloat cp2y, CGFloat x, CGFloat y) {
    change(path, [&](PathData& data) {
        data.cubicTo(mapped(m, cp1x, cp1y), mapped(m, cp2x, cp2y), mapped(m, x, y));
    });
}

void CGPathCloseSubpath(CGMutablePathRef path) {
    change(path, [](PathData& data) { data.close(); });
}

void CGPathAddRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect) {
    change(path, [&](PathData& data) { data.addRect(rect, orIdentity(m)); });
}

void CGPathAddRects(CGMutablePathRef path, const CGAffineTransform* m, const CGRect* rects, size_t count) {
    for (size_t i = 0; rects && i < count; ++i) CGPathAddRect(path, m, rects[i]);
}

void CGPathAddLines(CGMutablePathRef path, const CGAffineTransform* m, const CGPoint* points, size_t count) {
    if (!points || count == 0) return;
    change(path, [&](PathData& data) {
        data.moveTo(mapped(m, points[0].x, points[0].y));
        for (size_t i = 1; i < count; ++i) data.lineTo(mapped(m, points[i].x, points[i].y));
    });
}

void CGPathAddEllipseInRect(CGMutablePathRef path, const CGAffineTransform* m, CGRect rect) {
    change(path, [&](PathData& data) { data.addEllipse(rect, orIdentity(m)); });
}

void CGPathAddRoundedRect(CGMutablePathRef path, const CGAffineTransform* transform, CGRect rect,
                          CGFloat cornerWidth, CGFloat cornerHeight) {
    change(path, [&](PathData& data) {
        data.addRoundedRect(rect, cornerWidth, cornerHeight, orIdentity(transform));
    });
}

void CGPathAddArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y, CGFloat radius,
                  CGFloat startAngle, CGFloat endAngle, bool clockwise) {
    CGPathAddRelativeArc(path, m, x, y, radius, startAngle, ozcg::arcSweep(startAngle, endAngle, clockwise));
}

void CGPathAddRelativeArc(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x, CGFloat y,
                          CGFloat radius, CGFloat startAngle, CGFloat delta) {
    change(path, [&](PathData& data) { data.addArc({x, y}, radius, startAngle, delta, orIdentity(m)); });
}

void CGPathAddArcToPoint(CGMutablePathRef path, const CGAffineTransform* m, CGFloat x1, CGFloat y1,
                         CGFloat x2, CGFloat y2, CGFloat radius) {
    change(path, [&](PathData& data) { data.addArcToPoint({x1, y1}, {x2, y2}, radius, orIdentity(m)); });
}

void CGPathAddPath(CGMutablePathRef path1, const CGAffineTransform* m, CGPathRef path2) {
    if (path2)
        change(path1, [&](PathData& data) { data.append(path2->data, orIdentity(m)); });
    else if (path1 && ozcg::isFailure(path2))
        path1->data.markIncomplete();
}

bool CGPathIsEmpty(CGPathRef path) { return !path || path->data.empty(); }

bool CGPathIsRect(CGPathRef path, CGRect* rect) { return path && ozcg::isRect(path->data, rect); }

CGPoint CGPathGetCurrentPoint(CGPathRef path) { return path ? path->data.currentPoint() : CGPointZero; }

CGRect CGPathGetBoundingBox(CGPathRef path) { return path ? ozcg::controlBounds(path->data) : CGRectNull; }

CGRect CGPathGetPathBoundingBox(CGPathRef path) { return path ? ozcg::curveBounds(path->data) : CGRectNull; }

bool CGPathContainsPoint(CGPathRef path, const CGAffineTransform* m, CGPoint point, bool eoFill) {
    return path && ozcg::contains(path->data, mapped(m, point.x, point.y), eoFill);
}

void CGPathApply(CGPathRef path, void* info, CGPathApplierFunction function) {
    if (!path || !function) return;
    // The function may add to the path, which moves the points. Only the elements there now are visited.
    const size_t count = path->data.verbs().size();
    size_t next = 0;
    for (size_t i = 0; i < count; ++i) {
        const Verb verb = path->data.verbs()[i];
        std::array<CGPoint, 3> points{};
        for (size_t j = 0; j < ozcg::pointCount(verb); ++j) points[j] = path->data.points()[next++];
        const CGPathElement element = {elementType(verb), points.data()};
        function(info, &element);
    }
}
