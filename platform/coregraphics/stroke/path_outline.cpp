// Strokes and dashes as paths of their own.
//
// The stroker and the dasher work in pixels: they flatten to a fraction of one. A path has no pixels, so it
// is outlined as large as kWorkingSize of them, and as exactly. The factor is a power of two and changes no
// digit.
#include "base/out_of_memory.h"
#include "path/path.h"
#include "stroke/path_stroker.h"

#include <cmath>

using ozcg::PathData;
using ozcg::StrokeVertex;
using ozcg::Vec2;

namespace {

constexpr double kWorkingSize = 4096;

/// A path enlarged or reduced to working size, and the way back.
struct WorkingPath {
    /// For a pen that may be larger than the path.
    WorkingPath(const PathData& path, double penSize) {
        const CGRect box = path.controlBounds();
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

ozcg::Cap capOf(CGLineCap cap) {
    switch (cap) {
    case kCGLineCapRound: return ozcg::Cap::round;
    case kCGLineCapSquare: return ozcg::Cap::square;
    case kCGLineCapButt: break;
    }
    return ozcg::Cap::butt;
}

ozcg::Join joinOf(CGLineJoin join) {
    switch (join) {
    case kCGLineJoinRound: return ozcg::Join::round;
    case kCGLineJoinBevel: return ozcg::Join::bevel;
    case kCGLineJoinMiter: break;
    }
    return ozcg::Join::miter;
}

void addStroke(PathData& outline, const PathData& path, ozcg::LineStyle style, const CGAffineTransform& m) {
    const WorkingPath working(path, style.width);
    style.width *= working.scale;
    const auto space = ozcg::StrokeSpace::make(style, CGAffineTransformIdentity, CGAffineTransformIdentity);
    if (!space) return;
    PathSink sink(outline, working, m);
    ozcg::StrokeBuffers<double> buffers;
    ozcg::PathStroker<double, PathSink>(*space, style, sink, buffers, nullptr).stroke(working.data);
}

// Calls emit(vertices) for each subpath, flattened.
template <class Emit>
void forEachPolyline(const PathData& path, Emit&& emit) {
    std::vector<StrokeVertex<double>> line;
    const auto at = [](CGPoint p) { return Vec2<double>{p.x, p.y}; };
    const auto lineTo = [&](Vec2<double> p) { line.push_back({p, false}); };
    const auto curve = [&](const ozcg::Cubic<double>& c) {
        emitChords(c, chordCount(c, ozcg::kFlatness), lineTo);
    };
    const CGPoint* p = path.points().data();
    for (const ozcg::Verb verb : path.verbs()) {
        switch (verb) {
        case ozcg::Verb::move:
            emit(line);
            line.clear();
            lineTo(at(p[0]));
            break;
        case ozcg::Verb::line: lineTo(at(p[0])); break;
        case ozcg::Verb::quad: curve(ozcg::cubicFromQuad(line.back().p, at(p[0]), at(p[1]))); break;
        case ozcg::Verb::cubic: curve({line.back().p, at(p[0]), at(p[1]), at(p[2])}); break;
        case ozcg::Verb::close: lineTo(line.front().p); break;
        }
        p += ozcg::pointCount(verb);
    }
    emit(line);
}

void addDashes(PathData& dashed, const PathData& path, std::span<const double> lengths, double phase,
               const CGAffineTransform& m) {
    const WorkingPath working(path, 0);
    ozcg::DashBuffers<double> buffers;
    ozcg::Dasher<double> dasher(lengths, phase, working.scale, buffers);
    if (!dasher.active()) return dashed.append(path, m);
    const auto mapped = [&](const StrokeVertex<double>& vertex) {
        return CGPointApplyAffineTransform(working.back(vertex.p), m);
    };
    forEachPolyline(working.data, [&](const std::vector<StrokeVertex<double>>& line) {
        dasher.restart();
        dasher.cut(line, [&](const std::vector<StrokeVertex<double>>& dash) {
            dashed.moveTo(mapped(dash[0]));
            for (size_t i = 1; i < dash.size(); ++i) dashed.lineTo(mapped(dash[i]));
        });
    });
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
    style.cap = capOf(lineCap);
    style.join = joinOf(lineJoin);
    style.miterLimit = miterLimit;
    return createFrom(path, [&](PathData& data) {
        addStroke(data, path->data, style, transform ? *transform : CGAffineTransformIdentity);
    });
}
