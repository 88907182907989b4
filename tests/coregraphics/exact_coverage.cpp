#include "exact_coverage.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kChords = 200; // of a curve

CGPoint operator+(CGPoint a, CGPoint b) { return {a.x + b.x, a.y + b.y}; }
CGPoint operator-(CGPoint a, CGPoint b) { return {a.x - b.x, a.y - b.y}; }
CGPoint operator*(CGPoint a, double s) { return {a.x * s, a.y * s}; }
double cross(CGPoint a, CGPoint b) { return a.x * b.y - a.y * b.x; }
double dot(CGPoint a, CGPoint b) { return a.x * b.x + a.y * b.y; }
double length(CGPoint a) { return std::hypot(a.x, a.y); }
/// A quarter turn.
CGPoint turned(CGPoint a) { return {-a.y, a.x}; }

struct Vertex {
    CGPoint p;
    bool smooth; ///< Inside a curve.
};

struct Subpath {
    std::vector<Vertex> vertices;
    bool closed = false;
};

// The subpaths, with curves cut into very many chords.
std::vector<Subpath> subpathsOf(CGPathRef path) {
    std::vector<Subpath> subpaths;
    CGPathApply(path, &subpaths, [](void* info, const CGPathElement* e) {
        auto& all = *static_cast<std::vector<Subpath>*>(info);
        const CGPoint* const p = e->points;
        if (e->type == kCGPathElementMoveToPoint) {
            all.push_back({{{p[0], false}}});
        } else if (e->type == kCGPathElementAddLineToPoint) {
            all.back().vertices.push_back({p[0], false});
        } else if (e->type == kCGPathElementAddCurveToPoint) {
            const CGPoint p0 = all.back().vertices.back().p;
            // Very short chords at both ends have the directions of the tangents, which joins depend on.
            for (int i = 0; i <= kChords + 1; ++i) {
                const double end = i == 0 ? 1e-5 : i < kChords ? double(i) / kChords : 1 - 1e-5;
                const double t = i <= kChords ? end : 1, u = 1 - t;
                const CGPoint at =
                    p0 * (u * u * u) + p[0] * (3 * u * u * t) + p[1] * (3 * u * t * t) + p[2] * (t * t * t);
                all.back().vertices.push_back({at, i <= kChords});
            }
        } else if (e->type == kCGPathElementCloseSubpath) {
            all.back().closed = true;
        }
    });
    return subpaths;
}

} // namespace

/// Adds the pieces of strokes.
class PieceStroker {
public:
    PieceStroker(ExactCoverage& coverage, const ExactPen& pen, const CGAffineTransform& m)
        : m_coverage(coverage), m_pen(pen), m_half(0.5 * pen.width), m_matrix(m) {}

    void addSubpath(const Subpath& subpath) {
        std::vector<Vertex> line = subpath.vertices;
        if (!m_pen.dashes.empty()) return addDashes(std::move(line), subpath.closed);
        addLine(line, subpath.closed, {1, 0});
    }

private:
    // A convex piece, wound positively whatever the order of its points.
    void addPiece(std::vector<CGPoint> points) {
        double area = 0;
        for (CGPoint& p : points) p = CGPointApplyAffineTransform(p, m_matrix);
        for (size_t i = 0; i < points.size(); ++i) area += cross(points[i], points[(i + 1) % points.size()]);
        if (area < 0) std::reverse(points.begin(), points.end());
        m_coverage.addContour(points);
    }

    void addLine(std::vector<Vertex> line, bool closed, CGPoint dotDirection) {
        std::vector<Vertex> v;
        for (const Vertex& next : line) {
            if (v.empty() || length(next.p - v.back().p) > 1e-7)
                v.push_back(next);
            else
                v.back().smooth = v.back().smooth && next.smooth;
        }
        if (closed && v.size() > 1 && length(v.back().p - v.front().p) <= 1e-7) v.pop_back();
        if (v.size() < 2) {
            addCap(v[0].p, dotDirection);
            addCap(v[0].p, dotDirection * -1);
            return;
        }
        const size_t segments = closed ? v.size() : v.size() - 1;
        std::vector<CGPoint> directions;
        for (size_t i = 0; i < segments; ++i) {
            const CGPoint a = v[i].p, b = v[(i + 1) % v.size()].p, d = (b - a) * (1 / length(b - a));
            const CGPoint n = turned(d) * m_half;
            directions.push_back(d);
            addPiece({a + n, b + n, b - n, a - n});
        }
        for (size_t i = closed ? 0 : 1; i < segments; ++i)
            addJoin(v[i], directions[(i + segments - 1) % segments], directions[i]);
        if (closed) return;
        addCap(v.back().p, directions.back());
        addCap(v.front().p, directions.front() * -1);
    }

    void addJoin(const Vertex& v, CGPoint before, CGPoint after) {
        const double side = cross(before, after) > 0 ? -m_half : m_half;
        const CGPoint a = turned(before) * side, b = turned(after) * side;
        if (v.smooth || m_pen.join == kCGLineJoinRound)
            return addPie(v.p, std::atan2(a.y, a.x), std::atan2(cross(a, b), dot(a, b)));
        const double k = 1 + dot(before, after); // 2 sin^2 of half the angle between the lines
        if (m_pen.join == kCGLineJoinMiter && 2 <= m_pen.miterLimit * m_pen.miterLimit * k)
            addPiece({v.p, v.p + a, v.p + (a + b) * (1 / k), v.p + b});
        else
            addPiece({v.p, v.p + a, v.p + b});
    }

    void addPie(CGPoint o, double start, double sweep) {
        std::vector<CGPoint> points = {o};
        const int steps = std::max(1, static_cast<int>(std::abs(sweep) / 0.02));
        for (int i = 0; i <= steps; ++i) {
            const double angle = start + sweep * i / steps;
            points.push_back(o + CGPoint{std::cos(angle), std::sin(angle)} * m_half);
        }
        addPiece(points);
    }

    void addCap(CGPoint o, CGPoint direction) {
        const CGPoint n = turned(direction) * m_half, out = direction * m_half;
        if (m_pen.cap == kCGLineCapRound) addPie(o, std::atan2(-n.y, -n.x), kPi);
        if (m_pen.cap == kCGLineCapSquare) addPiece({o + n, o + n + out, o - n + out, o - n});
    }

    void addDashes(std::vector<Vertex> line, bool closed) {
        if (closed) line.push_back({line[0].p, false});
        size_t index = 0;
        double left = m_pen.dashes[0] - m_pen.phase;
        const auto next = [&] {
            index = (index + 1) % m_pen.dashes.size();
            left += m_pen.dashes[index];
        };
        while (left <= 0 && m_pen.phase > 0) next();
        std::vector<Vertex> dash, first;
        bool isFirst = true;
        CGPoint direction = {1, 0};
        if (index % 2 == 0) dash.push_back(line[0]);
        for (size_t i = 1; i < line.size(); ++i) {
            const CGPoint way = line[i].p - line[i - 1].p;
            const double whole = length(way);
            if (whole == 0) continue;
            direction = way * (1 / whole);
            double done = 0;
            while (left < whole - done) {
                done += left;
                left = 0;
                const CGPoint at = line[i - 1].p + direction * done;
                if (index % 2 == 0) {
                    dash.push_back({at, false});
                    if (isFirst && closed)
                        first = dash;
                    else
                        addLine(dash, false, direction);
                }
                isFirst = false;
                dash.clear();
                next();
                if (index % 2 == 0) dash.push_back({at, false});
            }
            left -= whole - done;
            if (index % 2 == 0) dash.push_back(line[i]);
        }
        if (isFirst) return addLine(dash, closed, direction);
        if (dash.size() > 1 && !first.empty()) {
            dash.insert(dash.end(), first.begin() + 1, first.end());
            first.clear();
        }
        if (dash.size() > 1) addLine(dash, false, direction);
        if (!first.empty()) addLine(first, false, direction);
    }

    ExactCoverage& m_coverage;
    const ExactPen& m_pen;
    double m_half;
    const CGAffineTransform& m_matrix;
};

void ExactCoverage::addContour(const std::vector<CGPoint>& points) {
    for (size_t i = 0; i < points.size(); ++i)
        m_edges.push_back({points[i], points[(i + 1) % points.size()]});
}

void ExactCoverage::addFill(CGPathRef path, const CGAffineTransform& m) {
    for (const Subpath& subpath : subpathsOf(path)) {
        std::vector<CGPoint> points;
        for (const Vertex& v : subpath.vertices) points.push_back(CGPointApplyAffineTransform(v.p, m));
        addContour(points);
    }
}

void ExactCoverage::addStroke(CGPathRef path, const ExactPen& pen, const CGAffineTransform& m) {
    PieceStroker stroker(*this, pen, m);
    for (const Subpath& subpath : subpathsOf(path)) stroker.addSubpath(subpath);
}

std::vector<double> ExactCoverage::pixels(bool evenOdd, size_t lines) const {
    std::vector<double> covered(m_size * m_size);
    std::vector<std::pair<double, int>> crossings;
    for (size_t line = 0; line < m_size * lines; ++line) {
        const double y = (double(line) + 0.5) / double(lines);
        crossings.clear();
        for (const Edge& e : m_edges) {
            if ((e.from.y <= y) == (e.to.y <= y)) continue;
            const double x = e.from.x + (e.to.x - e.from.x) * ((y - e.from.y) / (e.to.y - e.from.y));
            crossings.emplace_back(std::clamp(x, 0.0, double(m_size)), e.from.y < e.to.y ? 1 : -1);
        }
        std::sort(crossings.begin(), crossings.end());
        int winding = 0;
        for (size_t i = 0; i + 1 < crossings.size(); ++i) {
            winding += crossings[i].second;
            if (evenOdd ? winding % 2 == 0 : winding == 0) continue;
            const double x0 = crossings[i].first, x1 = crossings[i + 1].first;
            for (auto x = static_cast<size_t>(x0); x < m_size && double(x) < x1; ++x)
                covered[line / lines * m_size + x] +=
                    (std::min(x1, double(x) + 1) - std::max(x0, double(x))) / double(lines);
        }
    }
    return covered;
}
