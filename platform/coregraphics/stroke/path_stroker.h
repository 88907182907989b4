#pragma once

#include "path/path_data.h"
#include "path/segments.h"
#include "stroke/dasher.h"
#include "stroke/stroke_space.h"
#include "stroke/stroker_impl.h"

namespace ozcg {

/// Strokes a path: takes it to pen space, flattens it, cuts it into dashes and passes the polylines to a
/// Stroker.
///
/// `visible`, unless it is NULL, is a box in pen space that holds every point from which the pen can paint
/// something visible. Lines and curves are clipped to it first, so that coordinates may have any size.
template <typename T, typename Sink>
class PathStroker {
public:
    PathStroker(const StrokeSpace& space, const LineStyle& style, Sink& sink, StrokeBuffers<T>& buffers,
                const Bounds* visible)
        : m_space(space), m_sink(sink), m_stroker(space.pen, sink, buffers),
          m_dasher(style.dashLengths(), style.dashPhase, space.scale, buffers.dash), m_pieces(buffers.first),
          m_line(buffers.line), m_visible(visible),
          m_tolerance(static_cast<T>(m_dasher.active() ? kDashTolerance * space.pen.tolerance
                                                       : space.pen.tolerance)) {
        m_line.clear();
        m_dasher.setCostPerDash(m_stroker.capCost());
    }

    void stroke(const PathData& path) {
        walkSegments(
            path, [this](CGPoint p) { return toPen(p); }, *this);
    }

    // The visitor of the path's segments.
    void begin(Vec2<double> start) {
        m_current = start;
        if (m_dasher.active()) m_dasher.restart();
    }
    void line(Vec2<double>, Vec2<double> to) { lineTo(to, false); }
    void curve(const Cubic<double>& c) { curveTo(c); }
    void end(Vec2<double>, Vec2<double> start, bool closed) {
        if (closed) lineTo(start, false);
        finish(closed);
    }

private:
    using P = Vec2<double>;
    using Line = std::vector<StrokeVertex<T>>;

    // Of the pen's tolerance, for curves that are cut into dashes: lengths are measured along the chords.
    static constexpr double kDashTolerance = 0.1;

    P toPen(CGPoint p) const {
        const CGAffineTransform& t = m_space.toPen;
        return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
    }
    static Vec2<T> narrow(P p) { return {static_cast<T>(p.x), static_cast<T>(p.y)}; }

    void append(Vec2<T> p, bool smooth, Vec2<T> arriving, Vec2<T> leaving) {
        if (m_line.empty()) m_line.push_back({narrow(m_current), false});
        m_line.back().out = leaving;
        // Members are written where they belong: a copy would be made in larger pieces than they were written
        // in, which stalls.
        StrokeVertex<T>& vertex = m_line.emplace_back();
        vertex.p = p;
        vertex.smooth = smooth;
        vertex.in = arriving;
    }

    // A line from the current point, with the directions at both ends.
    void lineTo(P to, bool smooth, Vec2<T> arriving = {}, Vec2<T> leaving = {}) {
        m_sink.startPiece();
        if (m_visible)
            visibleLineTo(to, smooth, arriving, leaving);
        else
            append(narrow(to), smooth, arriving, leaving);
        m_current = to;
    }

    void curveTo(const Cubic<double>& c) {
        if (m_visible && !isFinite(c)) {
            lineTo(c.p3, false); // the matrix took a point beyond the range of numbers
        } else if (m_visible) {
            forEachNearPiece(c, *m_visible, [&](const Cubic<double>& piece, bool meets) {
                if (meets)
                    chordsTo(piece);
                else
                    lineTo(piece.p3, false);
            });
        } else {
            chordsTo(c);
        }
        if (!m_line.empty()) m_line.back().smooth = false;
        m_current = c.p3;
    }

    void chordsTo(const Cubic<double>& c) {
        m_sink.startPiece();
        const Cubic<T> narrowed = {narrow(c.p0), narrow(c.p1), narrow(c.p2), narrow(c.p3)};
        const int count = m_stroker.chordsFor(narrowed, chordCount(narrowed, m_tolerance));
        const Vec2<T> atEnd = -startTangent(Cubic<T>{narrowed.p3, narrowed.p2, narrowed.p1, narrowed.p0});
        Vec2<T> leaving = startTangent(narrowed);
        emitChords(narrowed, count, [&](Vec2<T> p, T t) {
            Vec2<T> arriving{};
            if (t == 1)
                arriving = atEnd;
            else if (m_dasher.active())
                arriving = derivativeAt(narrowed, t); // of the caps of dashes cut there
            if (m_visible)
                lineTo({double(p.x), double(p.y)}, true, arriving, leaving);
            else
                append(p, true, arriving, leaving);
            leaving = arriving;
        });
    }

    static bool isFinite(const Cubic<double>& c) {
        const auto finite = [](P p) { return std::isfinite(p.x) && std::isfinite(p.y); };
        return finite(c.p0) && finite(c.p1) && finite(c.p2) && finite(c.p3);
    }

    // The direction from the start to the first point that differs from it.
    static Vec2<T> startTangent(const Cubic<T>& c) {
        if (c.p1 != c.p0) return c.p1 - c.p0;
        return c.p2 != c.p0 ? c.p2 - c.p0 : c.p3 - c.p0;
    }

    // Clips a line to the visible box by Liang and Barsky's method. Neither the parts cut off nor the ends
    // that the cuts make can be seen.
    void visibleLineTo(P to, bool smooth, Vec2<T> arriving, Vec2<T> leaving) {
        const P from = m_current, way = {to.x - from.x, to.y - from.y};
        double enter = 0, leave = 1;
        P first = from, last = to;
        const auto clip = [&](double P::*axis, double lo, double hi) {
            const double start = from.*axis, delta = way.*axis;
            if (delta == 0) {
                if (start < lo || start > hi) leave = -1;
                return;
            }
            const double near = delta > 0 ? lo : hi, far = delta > 0 ? hi : lo;
            const double t0 = (near - start) / delta, t1 = (far - start) / delta;
            // The side itself, which from + way * t misses at great distances.
            if (t0 > enter) {
                enter = t0;
                first = {from.x + way.x * t0, from.y + way.y * t0};
                first.*axis = near;
            }
            if (t1 < leave) {
                leave = t1;
                last = {from.x + way.x * t1, from.y + way.y * t1};
                last.*axis = far;
            }
        };
        clip(&P::x, m_visible->x0, m_visible->x1);
        clip(&P::y, m_visible->y0, m_visible->y1);
        const double length = m_dasher.active() ? std::hypot(way.x, way.y) : 0;
        if (!(enter <= leave)) {
            cutOff(length);
            return;
        }
        if (enter > 0) {
            cutOff(length * enter);
            m_current = first;
        }
        if (enter > 0) leaving = {};
        if (leave < 1) {
            append(narrow(last), false, {}, leaving);
            cutOff(length * (1 - leave));
        } else {
            append(narrow(to), smooth, arriving, leaving);
        }
    }

    // The subpath is not visible for this length.
    void cutOff(double length) {
        flush(false, false);
        m_cut = true;
        if (m_dasher.active()) m_dasher.skip(length);
    }

    void finish(bool closed) {
        flush(true, closed);
        m_pieces.finish([this](Line& piece, bool) { m_stroker.stroke(piece, false); });
        m_cut = false;
    }

    // Strokes what is visible since the last cut. `last`: it reaches the end of the subpath.
    void flush(bool last, bool closed) {
        if (m_line.empty()) return;
        const PieceEnds ofLine = {!m_cut, last};
        const auto stroke = [this](Line& piece, bool isRing) { m_stroker.stroke(piece, isRing); };
        if (m_dasher.active()) {
            m_dasher.cut(m_line, [&](Line& dash, PieceEnds ends) {
                m_pieces.add(dash, {ends.start && ofLine.start, ends.end && ofLine.end}, closed || !last,
                             stroke);
            });
        } else {
            m_pieces.add(m_line, ofLine, closed || !last, stroke);
        }
        m_line.clear();
    }

    const StrokeSpace& m_space;
    Sink& m_sink;
    Stroker<T, Sink> m_stroker;
    Dasher<T> m_dasher;
    PieceJoiner<T> m_pieces;
    Line& m_line;
    const Bounds* m_visible;
    T m_tolerance;
    P m_current{};
    bool m_cut = false; // part of the subpath was clipped away
};

} // namespace ozcg
