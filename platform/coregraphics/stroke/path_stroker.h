#pragma once

#include "path/path_data.h"
#include "stroke/dasher.h"
#include "stroke/stroke_space.h"
#include "stroke/stroker_impl.h"

namespace ozcg {

/// Walks a path: takes it to pen space, flattens it, cuts it into dashes and hands the polylines to a
/// Stroker.
///
/// With `visible` (in pen space, wide enough for everything that the pen can reach) lines and curves are cut
/// back to it first, so that coordinates of any size can be drawn.
template <typename T, typename Sink>
class PathStroker {
public:
    PathStroker(const StrokeSpace& space, const LineStyle& style, Sink& sink, StrokeBuffers<T>& buffers,
                const Bounds* visible)
        : m_space(space), m_sink(sink), m_stroker(space.pen, sink, buffers),
          m_dasher(style.dashLengths(), style.dashPhase, space.scale, buffers.dash), m_line(buffers.line),
          m_visible(visible) {
        m_line.clear();
        m_dasher.weigh(m_stroker.capCost());
    }

    void stroke(const PathData& path) {
        const CGPoint* p = path.points().data();
        for (const Verb verb : path.verbs()) {
            switch (verb) {
            case Verb::move:
                finish(false);
                m_start = m_current = toPen(*p++);
                if (m_dasher.active()) m_dasher.restart();
                break;
            case Verb::line: lineTo(toPen(*p++), false); break;
            case Verb::quad:
                curveTo(cubicFromQuad(m_current, toPen(p[0]), toPen(p[1])));
                p += 2;
                break;
            case Verb::cubic:
                curveTo({m_current, toPen(p[0]), toPen(p[1]), toPen(p[2])});
                p += 3;
                break;
            case Verb::close:
                lineTo(m_start, false);
                finish(true);
                m_current = m_start;
                break;
            }
        }
        finish(false);
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
            lineTo(c.p3, false); // a matrix out of all proportion
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

    // Towards the first point that differs from the start.
    static Vec2<T> startTangent(const Cubic<T>& c) {
        if (c.p1 != c.p0) return c.p1 - c.p0;
        return c.p2 != c.p0 ? c.p2 - c.p0 : c.p3 - c.p0;
    }

    // Liang-Barsky against the visible box. What is cut off lies out of the pen's reach, and so do the ends
    // that the cut makes.
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
            // The side itself, because at great distances the way times t does not hit it.
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

    // The subpath goes out of sight for this length.
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
    P m_start{}, m_current{};
    bool m_cut = false; // the subpath is not whole any more
};

} // namespace ozcg
