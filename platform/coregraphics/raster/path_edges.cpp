#include "raster/path_edges.h"

#include "path/far_curve.h"
#include "stroke/path_stroker.h"

namespace ozcg {

namespace {

enum class Reach { inside, near, far };

Reach reachOf(const CoverageAccumulator& coverage, const Bounds& b) {
    const double w = coverage.width(), h = coverage.height();
    if (b.x0 >= 0 && b.y0 >= 0 && b.x1 <= w && b.y1 <= h) return Reach::inside;
    const bool near =
        b.x0 >= -kNearReach && b.y0 >= -kNearReach && b.x1 <= w + kNearReach && b.y1 <= h + kNearReach;
    return near ? Reach::near : Reach::far;
}

// Edges that may leave the box.
template <typename T>
void addAnywhere(CoverageAccumulator& coverage, Vec2<T> a, Vec2<T> b) {
    const T w = static_cast<T>(coverage.width()), h = static_cast<T>(coverage.height());
    const auto in = [&](Vec2<T> p) { return p.x >= 0 && p.y >= 0 && p.x <= w && p.y <= h; };
    if (in(a) && in(b)) {
        coverage.addInside(static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(b.x),
                           static_cast<float>(b.y));
    } else if (std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(b.x) && std::isfinite(b.y)) {
        coverage.addClipped(double(a.x), double(a.y), double(b.x), double(b.y));
    }
}

// Walks a path as closed contours: line(from, to) and curve(cubic), in pixels.
template <typename Line, typename Curve>
void walkClosed(const PathData& path, const CGAffineTransform& t, Line&& line, Curve&& curve) {
    using P = Vec2<double>;
    const auto at = [&](CGPoint p) { return P{t.a * p.x + t.tx, t.d * p.y + t.ty}; };
    const CGPoint* p = path.points().data();
    P start{}, current{};
    for (const Verb verb : path.verbs()) {
        switch (verb) {
        case Verb::move:
            line(current, start);
            start = current = at(*p++);
            break;
        case Verb::line: {
            const P to = at(*p++);
            line(current, to);
            current = to;
            break;
        }
        case Verb::quad: {
            const Cubic<double> c = cubicFromQuad(current, at(p[0]), at(p[1]));
            curve(c);
            current = c.p3;
            p += 2;
            break;
        }
        case Verb::cubic: {
            const Cubic<double> c = {current, at(p[0]), at(p[1]), at(p[2])};
            curve(c);
            current = c.p3;
            p += 3;
            break;
        }
        case Verb::close:
            line(current, start);
            current = start;
            break;
        }
    }
    line(current, start);
}

Vec2<float> narrow(Vec2<double> p) { return {static_cast<float>(p.x), static_cast<float>(p.y)}; }

template <typename Add>
void addChords(const Cubic<double>& c, Add&& add) {
    const Cubic<float> f = {narrow(c.p0), narrow(c.p1), narrow(c.p2), narrow(c.p3)};
    Vec2<float> from = f.p0;
    emitChords(f, chordCount(f, static_cast<float>(kFlatness)), [&](Vec2<float> to) {
        add(from, to);
        from = to;
    });
}

void fillInside(CoverageAccumulator& coverage, const PathData& path, const CGAffineTransform& toPixel) {
    const auto add = [&](Vec2<float> a, Vec2<float> b) { coverage.addInside(a.x, a.y, b.x, b.y); };
    walkClosed(
        path, toPixel, [&](Vec2<double> a, Vec2<double> b) { add(narrow(a), narrow(b)); },
        [&](const Cubic<double>& c) { addChords(c, add); });
}

void fillAnywhere(CoverageAccumulator& coverage, const PathData& path, const CGAffineTransform& toPixel) {
    const Bounds box = {0, 0, double(coverage.width()), double(coverage.height())};
    const auto add = [&](Vec2<float> a, Vec2<float> b) { addAnywhere(coverage, a, b); };
    walkClosed(
        path, toPixel, [&](Vec2<double> a, Vec2<double> b) { addAnywhere(coverage, a, b); },
        [&](const Cubic<double>& c) {
            forEachNearPiece(c, box, [&](const Cubic<double>& piece, bool meets) {
                coverage.startPiece();
                if (meets)
                    addChords(piece, add);
                else
                    addAnywhere(coverage, piece.p0, piece.p3);
            });
        });
}

// Feeds the contours of an outline to the accumulator. `Mapped`: from pen space to pixels first.
template <typename T, bool Inside, bool Mapped>
class EdgeSink {
public:
    EdgeSink(CoverageAccumulator& coverage, const CGAffineTransform& toPixel)
        : m_coverage(coverage), m_a(static_cast<T>(toPixel.a)), m_b(static_cast<T>(toPixel.b)),
          m_c(static_cast<T>(toPixel.c)), m_d(static_cast<T>(toPixel.d)) {}

    void startPiece() { m_coverage.startPiece(); }
    void begin(Vec2<T> p) { m_start = m_current = map(p); }
    void to(Vec2<T> p) {
        const Vec2<T> next = map(p);
        add(m_current, next);
        m_current = next;
    }
    void close() { add(m_current, m_start); }

private:
    Vec2<T> map(Vec2<T> p) const {
        if constexpr (Mapped)
            return {m_a * p.x + m_c * p.y, m_b * p.x + m_d * p.y};
        else
            return p;
    }
    void add(Vec2<T> a, Vec2<T> b) {
        if constexpr (Inside)
            m_coverage.addInside(a.x, a.y, b.x, b.y);
        else
            addAnywhere(m_coverage, a, b);
    }

    CoverageAccumulator& m_coverage;
    T m_a, m_b, m_c, m_d;
    Vec2<T> m_start{}, m_current{};
};

template <typename T, bool Inside, bool Mapped>
void strokeWith(CoverageAccumulator& coverage, const PathData& path, const StrokeSpace& space,
                const LineStyle& style, StrokeBuffers<T>& buffers, const Bounds* visible) {
    EdgeSink<T, Inside, Mapped> sink(coverage, space.toPixel);
    PathStroker<T, EdgeSink<T, Inside, Mapped>> stroker(space, style, sink, buffers, visible);
    stroker.stroke(path);
}

// The box and all that the pen can reach from outside of it, in pen space.
Bounds visibleInPenSpace(const CoverageAccumulator& coverage, const StrokeSpace& space) {
    const double margin = 2 * space.reach + 16;
    const CGRect pixels = {{-margin, -margin},
                           {coverage.width() + 2 * margin, coverage.height() + 2 * margin}};
    const CGRect r = CGRectApplyAffineTransform(pixels, CGAffineTransformInvert(space.toPixel));
    return {r.origin.x, r.origin.y, r.origin.x + r.size.width, r.origin.y + r.size.height};
}

} // namespace

void addFillEdges(CoverageAccumulator& coverage, const PathData& path, const CGAffineTransform& toPixel,
                  const Bounds& bounds) {
    if (reachOf(coverage, bounds) == Reach::inside)
        fillInside(coverage, path, toPixel);
    else
        fillAnywhere(coverage, path, toPixel);
}

void addStrokeEdges(CoverageAccumulator& coverage, const PathData& path, const StrokeSpace& space,
                    const LineStyle& style, const Bounds& bounds, EdgeBuffers& buffers) {
    const Bounds reached = {bounds.x0 - space.reach, bounds.y0 - space.reach, bounds.x1 + space.reach,
                            bounds.y1 + space.reach};
    const Reach reach = reachOf(coverage, reached);
    if (reach == Reach::far) {
        const Bounds visible = visibleInPenSpace(coverage, space);
        strokeWith<double, false, true>(coverage, path, space, style, buffers.far, &visible);
    } else if (!space.direct) {
        strokeWith<float, false, true>(coverage, path, space, style, buffers.near, nullptr);
    } else if (reach == Reach::near) {
        strokeWith<float, false, false>(coverage, path, space, style, buffers.near, nullptr);
    } else {
        strokeWith<float, true, false>(coverage, path, space, style, buffers.near, nullptr);
    }
}

} // namespace ozcg
