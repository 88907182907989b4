#include "raster/path_edges.h"

#include "path/near_pieces.h"
#include "path/segments.h"
#include "stroke/path_stroker.h"

#include <utility>

namespace ozcg {

namespace {

/// Where bounds lie: inside the box, near enough to it for floats, or beyond.
enum class Extent { inside, near, far };

Extent extentOf(const CoverageAccumulator& coverage, const Bounds& b) {
    const double w = coverage.width(), h = coverage.height();
    if (b.x0 >= 0 && b.y0 >= 0 && b.x1 <= w && b.y1 <= h) return Extent::inside;
    const bool near =
        b.x0 >= -kFloatRange && b.y0 >= -kFloatRange && b.x1 <= w + kFloatRange && b.y1 <= h + kFloatRange;
    return near ? Extent::near : Extent::far;
}

// Adds an edge that may leave the box.
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

// Where a path's points lie, for a matrix that only scales and moves.
auto pointMapping(const CGAffineTransform& t) {
    return [&t](CGPoint p) { return Vec2<double>{t.a * p.x + t.tx, t.d * p.y + t.ty}; };
}

Vec2<float> narrow(Vec2<double> p) { return {static_cast<float>(p.x), static_cast<float>(p.y)}; }
template <typename T>
Vec2<double> widen(Vec2<T> p) {
    return {double(p.x), double(p.y)};
}

template <typename Add>
void addChords(const Cubic<double>& c, Add&& add) {
    const Cubic<float> f = {narrow(c.p0), narrow(c.p1), narrow(c.p2), narrow(c.p3)};
    Vec2<float> from = f.p0;
    emitChords(f, chordCount(f, static_cast<float>(kFlatness)), [&](Vec2<float> to, float) {
        add(from, to);
        from = to;
    });
}

IntRect pixelsOf(const Bounds& b, const CoverageAccumulator& coverage) {
    const int w = coverage.width(), h = coverage.height();
    return {floorClamped(b.x0, 0, w), floorClamped(b.y0, 0, h), ceilClamped(b.x1, 0, w),
            ceilClamped(b.y1, 0, h)};
}

// Has the pixels resolved that lie no further than x and y from two points or between them.
void doubtAround(CoverageAccumulator& coverage, Vec2<double> a, Vec2<double> b, double x, double y) {
    coverage.doubtSums(pixelsOf(
        {std::min(a.x, b.x) - x, std::min(a.y, b.y) - y, std::max(a.x, b.x) + x, std::max(a.y, b.y) + y},
        coverage));
}

/// Notices contours thinner than a pixel. Where one of several is, pixels that touch each other may all have
/// sums that say nothing: two strips of opposite direction that share a pixel add up to 0.
class ThinContours {
public:
    void begin(Vec2<double> start) { m_bounds = {start.x, start.y, start.x, start.y}; }
    void add(Vec2<double> p) {
        m_bounds.x0 = std::min(m_bounds.x0, p.x);
        m_bounds.x1 = std::max(m_bounds.x1, p.x);
        m_bounds.y0 = std::min(m_bounds.y0, p.y);
        m_bounds.y1 = std::max(m_bounds.y1, p.y);
    }
    void add(const Cubic<double>& c) {
        add(c.p1);
        add(c.p2);
        add(c.p3);
    }
    void end(CoverageAccumulator& coverage) {
        const bool isThin = m_bounds.x1 - m_bounds.x0 < 1 || m_bounds.y1 - m_bounds.y0 < 1;
        if (++m_count == 1) {
            m_first = m_bounds;
            m_isFirstThin = isThin;
            return;
        }
        if (std::exchange(m_isFirstThin, false)) coverage.doubtSums(pixelsOf(m_first, coverage));
        if (isThin) coverage.doubtSums(pixelsOf(m_bounds, coverage));
    }

private:
    Bounds m_bounds{};
    Bounds m_first{}; // of the first contour, which alone would not count
    int64_t m_count = 0;
    bool m_isFirstThin = false;
};

/// A visitor of segments that adds a fill whose points all lie in the box.
class InsideFill {
public:
    explicit InsideFill(CoverageAccumulator& coverage) : m_coverage(coverage) {}

    void begin(Vec2<double> start) { m_thin.begin(start); }
    void line(Vec2<double> from, Vec2<double> to) {
        m_thin.add(to);
        add(narrow(from), narrow(to));
    }
    void curve(const Cubic<double>& c) {
        m_thin.add(c);
        addChords(c, [this](Vec2<float> a, Vec2<float> b) { add(a, b); });
    }
    void end(Vec2<double> from, Vec2<double> start, bool) {
        line(from, start);
        m_thin.end(m_coverage);
    }

private:
    void add(Vec2<float> a, Vec2<float> b) { m_coverage.addInside(a.x, a.y, b.x, b.y); }

    CoverageAccumulator& m_coverage;
    ThinContours m_thin;
};

/// A visitor of segments that adds a fill which may lie anywhere.
class ClippedFill {
public:
    explicit ClippedFill(CoverageAccumulator& coverage)
        : m_coverage(coverage), m_box{0, 0, double(coverage.width()), double(coverage.height())} {}

    void begin(Vec2<double> start) { m_thin.begin(start); }
    void line(Vec2<double> from, Vec2<double> to) {
        m_thin.add(to);
        addAnywhere(m_coverage, from, to);
    }
    void curve(const Cubic<double>& c) {
        m_thin.add(c);
        forEachNearPiece(c, m_box, [this](const Cubic<double>& piece, bool meets) {
            m_coverage.startPiece();
            if (meets)
                addChords(piece, [this](Vec2<float> a, Vec2<float> b) { addAnywhere(m_coverage, a, b); });
            else
                line(piece.p0, piece.p3);
        });
    }
    void end(Vec2<double> from, Vec2<double> start, bool) {
        line(from, start);
        m_thin.end(m_coverage);
    }

private:
    CoverageAccumulator& m_coverage;
    ThinContours m_thin;
    Bounds m_box;
};

// Adds the contours of an outline to the accumulator. `Inside`: all points lie in the box. `Mapped`: points
// are mapped from pen space to pixels first.
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
    void overlap(Vec2<T> from, Vec2<T> to, T distance) {
        T x = distance, y = distance;
        if constexpr (Mapped) {
            x *= std::abs(m_a) + std::abs(m_c);
            y *= std::abs(m_b) + std::abs(m_d);
        }
        doubtAround(m_coverage, widen(map(from)), widen(map(to)), double(x), double(y));
    }

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

// In pen space, the box and all points outside it from which the pen can paint inside it.
Bounds visibleInPenSpace(const CoverageAccumulator& coverage, const StrokeSpace& space) {
    const double margin = 2 * space.outset + 16;
    const CGRect pixels = {{-margin, -margin},
                           {coverage.width() + 2 * margin, coverage.height() + 2 * margin}};
    const CGRect r = CGRectApplyAffineTransform(pixels, CGAffineTransformInvert(space.toPixel));
    return {r.origin.x, r.origin.y, r.origin.x + r.size.width, r.origin.y + r.size.height};
}

} // namespace

void addFillEdges(CoverageAccumulator& coverage, const PathData& path, const CGAffineTransform& toPixel,
                  const Bounds& bounds) {
    if (extentOf(coverage, bounds) == Extent::inside)
        walkSegments(path, pointMapping(toPixel), InsideFill(coverage));
    else
        walkSegments(path, pointMapping(toPixel), ClippedFill(coverage));
}

void addStrokeEdges(CoverageAccumulator& coverage, const PathData& path, const StrokeSpace& space,
                    const LineStyle& style, const Bounds& bounds, EdgeBuffers& buffers) {
    const Bounds stroked = {bounds.x0 - space.outset, bounds.y0 - space.outset, bounds.x1 + space.outset,
                            bounds.y1 + space.outset};
    const Extent extent = extentOf(coverage, stroked);
    if (extent == Extent::far) {
        const Bounds visible = visibleInPenSpace(coverage, space);
        strokeWith<double, false, true>(coverage, path, space, style, buffers.far, &visible);
    } else if (!space.isPixelSpace) {
        strokeWith<float, false, true>(coverage, path, space, style, buffers.near, nullptr);
    } else if (extent == Extent::near) {
        strokeWith<float, false, false>(coverage, path, space, style, buffers.near, nullptr);
    } else {
        strokeWith<float, true, false>(coverage, path, space, style, buffers.near, nullptr);
    }
}

} // namespace ozcg
