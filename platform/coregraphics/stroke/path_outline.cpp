// Strokes and dashes as paths of their own.
//
// The stroker and the dasher flatten to a fraction of a pixel. A path has no pixels, so it is scaled to about
// kWorkingSize pixels first. The factor is a power of two, which makes the scaling exact.
#include "stroke/path_outline.h"

#include "base/out_of_memory.h"
#include "path/path.h"
#include "path/path_queries.h"
#include "path/winding.h"
#include "stroke/path_stroker.h"

#include <cmath>

using ozcg::PathData;
using ozcg::StrokeVertex;
using ozcg::Vec2;

namespace {

constexpr double kWorkingSize = 4096;

// The factor that takes a path to working size. `penSize` counts where the pen is larger than the path.
double workingScale(const PathData& path, double penSize) {
    const CGRect box = controlBounds(path);
    const double size = std::min(std::max({box.size.width, box.size.height, penSize}), CGFLOAT_MAX);
    return size > 0 ? std::ldexp(1.0, std::clamp(std::ilogb(kWorkingSize / size), -1020, 1020)) : 1;
}

/// A path at working size, and the way back.
struct WorkingPath {
    WorkingPath(const PathData& path, double penSize) : scale(workingScale(path, penSize)) {
        data.append(path, CGAffineTransformMakeScale(scale, scale));
    }

    CGPoint back(Vec2<double> p) const { return {p.x / scale, p.y / scale}; }

    double scale;
    PathData data;
};

/// Receives the contours of an outline and adds them to a path.
class PathSink {
public:
    PathSink(PathData& path, const WorkingPath& working, const CGAffineTransform& m)
        : m_path(path), m_working(working), m_transform(m) {}

    void startPiece() {}
    void overlap(Vec2<double>, Vec2<double>, double) {}
    void begin(Vec2<double> p) { m_path.moveTo(mapped(p)); }
    void to(Vec2<double> p) {
        const CGPoint point = mapped(p);
        if (!CGPointEqualToPoint(point, m_path.currentPoint())) m_path.lineTo(point);
    }
    void close() { m_path.close(); }

private:
    CGPoint mapped(Vec2<double> p) const {
        return CGPointApplyAffineTransform(m_working.back(p), m_transform);
    }

    PathData& m_path;
    const WorkingPath& m_working;
    const CGAffineTransform& m_transform;
};

void addStroke(PathData& outline, const PathData& path, ozcg::LineStyle style, const CGAffineTransform& m) {
    const WorkingPath working(path, style.width);
    style.width *= working.scale;
    const auto space = ozcg::StrokeSpace::make(style, CGAffineTransformIdentity, CGAffineTransformIdentity);
    if (!space) return;
    PathSink sink(outline, working, m);
    ozcg::StrokeBuffers<double> buffers;
    ozcg::PathStroker<double, PathSink>(*space, style, sink, buffers, nullptr).stroke(working.data);
}

/// Receives the contours of an outline and computes their winding number around a point.
class WindingSink {
public:
    explicit WindingSink(Vec2<double> point) : m_winding(point) {}

    int winding() const { return m_winding.number(); }

    void startPiece() {}
    void overlap(Vec2<double>, Vec2<double>, double) {}
    void begin(Vec2<double> p) { m_start = m_current = p; }
    void to(Vec2<double> p) {
        m_winding.line(m_current, p);
        m_current = p;
    }
    void close() { to(m_start); }

private:
    ozcg::Winding m_winding;
    Vec2<double> m_start{}, m_current{};
};

/// A visitor of segments that flattens each subpath and calls emit(vertices, closed).
template <class Emit>
class PolylineFlattener {
public:
    explicit PolylineFlattener(Emit emit) : m_emit(std::move(emit)) {}

    void begin(Vec2<double> start) { m_line.assign(1, {start, false}); }
    void line(Vec2<double>, Vec2<double> to) { m_line.push_back({to, false}); }
    void curve(const ozcg::Cubic<double>& c) {
        emitChords(c, chordCount(c, ozcg::kFlatness),
                   [this, &c](Vec2<double> to, double) { line(c.p0, to); });
    }
    void end(Vec2<double> from, Vec2<double> start, bool closed) {
        if (closed) line(from, start);
        m_emit(m_line, closed);
    }

private:
    Emit m_emit;
    std::vector<StrokeVertex<double>> m_line;
};

void addDashes(PathData& dashed, const PathData& path, std::span<const double> lengths, double phase,
               const CGAffineTransform& m) {
    const WorkingPath working(path, 0);
    ozcg::DashBuffers<double> buffers;
    ozcg::Dasher<double> dasher(lengths, phase, working.scale, buffers);
    if (!dasher.active()) return dashed.append(path, m);
    const auto mapped = [&](const StrokeVertex<double>& vertex) {
        return CGPointApplyAffineTransform(working.back(vertex.p), m);
    };
    using Line = std::vector<StrokeVertex<double>>;
    const auto addDash = [&](const Line& dash, bool closed) {
        dashed.moveTo(mapped(dash[0]));
        const size_t end = closed ? dash.size() - 1 : dash.size();
        for (size_t i = 1; i < end; ++i) dashed.lineTo(mapped(dash[i]));
        if (closed) dashed.close();
    };
    Line first;
    ozcg::PieceJoiner<double> pieces(first);
    const auto addSubpath = [&](const Line& line, bool closed) {
        dasher.restart();
        dasher.cut(line, [&](Line& dash, ozcg::PieceEnds ends) { pieces.add(dash, ends, closed, addDash); });
        pieces.finish(addDash);
    };
    const auto toPoint = [](CGPoint p) { return Vec2<double>{p.x, p.y}; };
    walkSegments(working.data, toPoint, PolylineFlattener(addSubpath));
}

template <class Function>
CGPathRef createFrom(CGPathRef path, Function&& function) noexcept {
    return ozcg::noteFailure(ozcg::orWhenOutOfMemory(CGPathRef{}, [&]() -> CGPathRef {
        PathData data;
        function(data);
        if (path->data.isIncomplete()) data.markIncomplete();
        return new CGPath(std::move(data));
    }));
}

} // namespace

bool ozcg::strokeContains(const PathData& path, const LineStyle& style, CGPoint point) {
    const double scale = workingScale(path, style.width);
    const auto space =
        StrokeSpace::make(style, CGAffineTransformIdentity, CGAffineTransformMakeScale(scale, scale));
    if (!space || !std::isfinite(point.x * scale) || !std::isfinite(point.y * scale)) return false;
    WindingSink sink({point.x * scale, point.y * scale});
    StrokeBuffers<double> buffers;
    PathStroker<double, WindingSink>(*space, style, sink, buffers, nullptr).stroke(path);
    return sink.winding() != 0;
}

CGPathRef CGPathCreateCopyByDashingPath(CGPathRef path, const CGAffineTransform* transform, CGFloat phase,
                                        const CGFloat* lengths, size_t count) {
    if (!path) return nullptr;
    if (!lengths || count == 0) return ozcg::noObject<const CGPath>();
    return createFrom(path, [&](PathData& data) {
        addDashes(data, path->data, std::span(lengths, count), phase,
                  transform ? *transform : CGAffineTransformIdentity);
    });
}

CGPathRef CGPathCreateCopyByStrokingPath(CGPathRef path, const CGAffineTransform* transform,
                                         CGFloat lineWidth, CGLineCap lineCap, CGLineJoin lineJoin,
                                         CGFloat miterLimit) {
    if (!path) return nullptr;
    ozcg::LineStyle style;
    style.width = lineWidth;
    style.cap = ozcg::capOf(lineCap);
    style.join = ozcg::joinOf(lineJoin);
    style.miterLimit = miterLimit;
    return createFrom(path, [&](PathData& data) {
        addStroke(data, path->data, style, transform ? *transform : CGAffineTransformIdentity);
    });
}
