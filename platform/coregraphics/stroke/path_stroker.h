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
          m_dasher(style.dashLengths(), style.dashPhase, space.scale, buffers.dash), m_line(buffers.line),
          m_visible(visible) {
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

    P toPen(CGPoint p) const {
        const CGAffineTransform& t = m_space.toPen;
        return {t.a * p.x + t.c * p.y + t.tx, t.b * p.x + t.d * p.y + t.ty};
    }
    static Vec2<T> narrow(P p) { return {static_cast<T>(p.x), static_cast<T>(p.y)}; }

    void append(P to, bool smooth) {
        if (m_line.empty()) {
            m_line.push_back({narrow(m_current), false});
            m_tangents.start = {};
        }
        m_line.push_back({narrow(to), smooth});
        m_tangents.end = {};
    }

    void lineTo(P to, bool smooth) {
        m_sink.startPiece();
        if (m_visible) {
            visibleLineTo(to, smooth);
        } else {
            append(to, smooth);
        }
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
        if (!m_visible && m_line.empty()) {
            m_line.push_back({narrowed.p0, false});
            m_tangents.start = startTangent(narrowed);
        }
        const int count = chordCount(narrowed, static_cast<T>(m_space.pen.tolerance));
        emitChords(narrowed, count, [&](Vec2<T> p) {
            if (m_visible)
                lineTo({double(p.x), double(p.y)}, true);
            else
                m_line.push_back({p, true});
        });
        if (!m_visible)
            m_tangents.end = -startTangent(Cubic<T>{narrowed.p3, narrowed.p2, narrowed.p1, narrowed.p0});
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
    void visibleLineTo(P to, bool smooth) {
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
        append(last, smooth && leave >= 1);
        if (leave < 1) cutOff(length * (1 - leave));
    }

    // The subpath is not visible for this length.
    void cutOff(double length) {
        flush(false);
        m_cut = true;
        if (m_dasher.active()) m_dasher.skip(length);
    }

    void finish(bool closed) {
        flush(closed && !m_cut);
        m_cut = false;
        if (m_dasher.active()) m_dasher.restart();
    }

    void flush(bool closed) {
        if (m_line.empty()) return;
        if (m_dasher.active()) {
            m_dasher.cut(m_line, [&](std::vector<StrokeVertex<T>>& dash) { m_stroker.stroke(dash, false); });
        } else {
            m_stroker.stroke(m_line, closed, m_tangents);
        }
        m_line.clear();
    }

    const StrokeSpace& m_space;
    Sink& m_sink;
    Stroker<T, Sink> m_stroker;
    Dasher<T> m_dasher;
    std::vector<StrokeVertex<T>>& m_line;
    EndTangents<T> m_tangents;
    const Bounds* m_visible;
    P m_current{};
    bool m_cut = false; // part of the subpath was clipped away
};

} // namespace ozcg
