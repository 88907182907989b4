// The elements of a path: what CGPath holds and what a context draws.
#pragma once

#include "base/growing_array.h"
#include "base/object.h"
#include "base/out_of_memory.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <algorithm>
#include <cstdint>
#include <span>

namespace ozcg {

/// The kind of an element.
enum class Verb : uint8_t { move, line, quad, cubic, close };

/// The number of points that an element has.
constexpr size_t pointCount(Verb verb) noexcept {
    switch (verb) {
    case Verb::move:
    case Verb::line: return 1;
    case Verb::quad: return 2;
    case Verb::cubic: return 3;
    case Verb::close: break;
    }
    return 0;
}

/// Whether all coordinates are numbers. A difference of a number with itself is 0, of anything else NaN.
template <class... Points>
bool isFinite(Points... p) noexcept {
    return (((p.x - p.x) + (p.y - p.y)) + ...) == 0;
}

/// A list of subpaths, each of which begins with a move. A segment with a point that is not finite is
/// dropped; so are a line, a curve and a close without a current point. After a close the current point is
/// the subpath's start, and a segment that follows begins a new subpath there. Throws std::bad_alloc.
class PathData {
public:
    std::span<const Verb> verbs() const noexcept { return m_verbs.values(); }
    std::span<const CGPoint> points() const noexcept { return m_points.values(); }
    bool empty() const noexcept { return m_verbs.empty(); }
    /// The number of points or of verbs, whichever is greater, that fit into the memory held.
    size_t capacity() const noexcept { return std::max(m_points.capacity(), m_verbs.capacity()); }
    bool hasCurrentPoint() const noexcept { return !m_verbs.empty(); }
    /// Where the next segment starts; CGPointZero when there is none.
    CGPoint currentPoint() const noexcept {
        if (empty()) return {};
        return m_verbs.back() == Verb::close ? m_start : m_points.back();
    }

    /// Whether elements are missing because memory was short when they were added.
    bool isIncomplete() const noexcept { return m_isIncomplete; }
    void markIncomplete() noexcept { m_isIncomplete = true; }
    /// Lets `function` add to the path. Does not throw: when memory is short, the path becomes incomplete.
    template <class Function>
    void change(Function&& function) noexcept {
        const bool done = orWhenOutOfMemory(false, [&] {
            function(*this);
            return true;
        });
        if (!done) markIncomplete();
    }

    /// Drops the elements and keeps the memory.
    void clear() noexcept {
        m_isIncomplete = false;
        m_verbs.truncate(0);
        m_points.truncate(0);
    }
    void moveTo(CGPoint p) {
        if (!isFinite(p)) return;
        *add(Verb::move, 1) = p;
        m_start = p;
    }
    void lineTo(CGPoint p) {
        if (!isFinite(p) || !continues()) return;
        *add(Verb::line, 1) = p;
    }
    void quadTo(CGPoint control, CGPoint p) {
        if (!isFinite(control, p) || !continues()) return;
        CGPoint* const to = add(Verb::quad, 2);
        to[0] = control;
        to[1] = p;
    }
    void cubicTo(CGPoint control1, CGPoint control2, CGPoint p) {
        if (!isFinite(control1, control2, p) || !continues()) return;
        CGPoint* const to = add(Verb::cubic, 3);
        to[0] = control1;
        to[1] = control2;
        to[2] = p;
    }
    void close() {
        if (!empty() && m_verbs.back() != Verb::close) add(Verb::close, 0);
    }

    /// Closed shapes, whose points are transformed by `m`. A shape with a point that is not finite is left
    /// out as a whole.
    void addRect(const CGRect& rect, const CGAffineTransform& m);
    void addEllipse(const CGRect& rect, const CGAffineTransform& m);
    void addRoundedRect(const CGRect& rect, double cornerWidth, double cornerHeight,
                        const CGAffineTransform& m);
    /// The arc of a circle, with a line to its start when there is a current point. `sweep` is in radians.
    void addArc(CGPoint center, double radius, double startAngle, double sweep, const CGAffineTransform& m);
    /// The arc that touches two lines, see CGPathAddArcToPoint. Unlike the parameters, the current point is
    /// already transformed by `m`.
    void addArcToPoint(CGPoint corner, CGPoint towards, double radius, const CGAffineTransform& m);
    /// The elements of another path, which may be this one.
    void append(const PathData& other, const CGAffineTransform& m);

    bool operator==(const PathData& other) const noexcept;

private:
    /// Whether there is a current point to go on from; begins a subpath there after a close.
    bool continues() {
        if (empty()) return false;
        if (m_verbs.back() == Verb::close) *add(Verb::move, 1) = m_start;
        return true;
    }
    CGPoint* add(Verb verb, size_t points) {
        m_verbs.reserveMore(1); // so that nothing throws between the two additions
        CGPoint* const added = m_points.extend(points);
        *m_verbs.extend(1) = verb;
        return added;
    }
    bool addClosed(std::span<const Verb> verbs, std::span<const CGPoint> points, const CGAffineTransform& m);
    bool appendPoints(std::span<const CGPoint> points, const CGAffineTransform& m);
    void appendOneByOne(const PathData& other, const CGAffineTransform& m);

    GrowingArray<Verb> m_verbs;
    GrowingArray<CGPoint> m_points;
    CGPoint m_start{}; // of the current subpath
    bool m_isIncomplete = false;
};

/// Sweep from one angle to another in a direction, as CGPathAddArc takes it: a whole turn at most.
double arcSweep(double startAngle, double endAngle, bool clockwise) noexcept;

} // namespace ozcg
