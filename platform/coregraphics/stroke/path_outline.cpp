// Strokes and dashes as paths of their own.
//
// The stroker and the dasher flatten to a fraction of a pixel. A path has no pixels, so it is scaled to about
// kWorkingSize pixels first. The factor is a power of two, which makes the scaling exact.
#include "base/out_of_memory.h"
#include "path/path.h"
#include "path/path_queries.h"
#include "stroke/path_stroker.h"

#include <cmath>

using ozcg::PathData;
using ozcg::StrokeVertex;
using ozcg::Vec2;

namespace {

constexpr double kWorkingSize = 4096;

/// A path enlarged or reduced to working size, and the way back.
struct WorkingPath {
    /// `penSize` counts where the pen is larger than the path.
    WorkingPath(const PathData& path, double penSize) {
        const CGRect box = controlBounds(path);
        const double size = std::min(std::max({box.size.width, box.size.height, penSize}), CGFLOAT_MAX);
        if (size > 0) scale = std::ldexp(1.0, std::clamp(std::ilogb(kWorkingSize / size), -1020, 1020));
        data.append(path, CGAffineTransformMakeScale(scale, scale));
    }

    CGPoint back(Vec2<double> p) const { return {p.x / scale, p.y / scale}; }

    double scale = 1;
    PathData data;
};

/// Receives the contours of an outline and adds them to a path.
class PathSink {
public:
    PathSink(PathData& path, const WorkingPath& working, const CGAffineTransform& m)
        : m_path(path), m_working(working), m_transform(m) {}

    void startPiece() {}
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

/// A visitor of segments that flattens each subpath and calls emit(vertices).
template <class Emit>
class PolylineFlattener {
public:
    explicit PolylineFlattener(Emit emit) : m_emit(std::move(emit)) {}

    void begin(Vec2<double> start) { m_line.assign(1, {start, false}); }
    void line(Vec2<double>, Vec2<double> to) { m_line.push_back({to, false}); }
    void curve(const ozcg::Cubic<double>& c) {
        emitChords(c, chordCount(c, ozcg::kFlatness), [this, &c](Vec2<double> to) { line(c.p0, to); });
    }
    void end(Vec2<double> from, Vec2<double> start, bool closed) {
        if (closed) line(from, start);
        m_emit(m_line);
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
    const auto addDash = [&](const std::vector<StrokeVertex<double>>& dash) {
        dashed.moveTo(mapped(dash[0]));
        for (size_t i = 1; i < dash.size(); ++i) dashed.lineTo(mapped(dash[i]));
    };
    const auto addSubpath = [&](const std::vector<StrokeVertex<double>>& line) {
        dasher.restart();
        dasher.cut(line, addDash);
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

CGPathRef CGPathCreateCopyByDashingPath(CGPathRef path, const CGAffineTransform* transform, CGFloat phase,
                                        const CGFloat* lengths, size_t count) {
    if (!path || !lengths || count == 0) return nullptr;
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
