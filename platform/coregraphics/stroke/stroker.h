#pragma once

#include "path/flatten.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ozcg {

enum class Cap : uint8_t { butt, round, square };
enum class Join : uint8_t { miter, round, bevel };

/// The pen, in the space of the polyline that it draws along ("pen space", where it is a circle).
struct Pen {
    double halfWidth = 0.5;
    double miterLimit = 10;
    Cap cap = Cap::butt;
    Join join = Join::miter;
    /// How far, in pen space, an arc's chord may lie from the arc.
    double tolerance = kFlatness;
    /// The direction of the user's x axis in pen space, of length 1: a square dot is aligned with it.
    Vec2<double> xAxis = {1, 0};
};

/// A point of a polyline. A smooth one lies inside a flattened curve, where no join style applies.
template <typename T>
struct StrokeVertex {
    Vec2<T> p;
    bool smooth;
};

/// What a dasher works with.
template <typename T>
struct DashBuffers {
    std::vector<double> pattern;
    std::vector<StrokeVertex<T>> dash;
};

/// What a stroker works with, kept by its user so that it is not allocated again.
template <typename T>
struct StrokeBuffers {
    std::vector<StrokeVertex<T>> line;
    DashBuffers<T> dash;
    std::vector<Vec2<T>> normals; // of each segment, halfWidth long, on the side that is outer in a left turn
    std::vector<T> lengths;
};

/// The directions in which an open polyline starts and ends where they are known better than its first and
/// last segment tell, because it comes from a curve. Of any length; zero: not known.
template <typename T>
struct EndTangents {
    Vec2<T> start{}, end{};
};

/// Turns polylines into the closed contours of their outline. Filled with the non-zero rule the contours give
/// the stroke: along either side of the spine every segment, join and cap adds a positively wound piece.
///
/// Sink: begin(Vec2<T>), to(Vec2<T>), close().
template <typename T, typename Sink>
class Stroker {
public:
    Stroker(const Pen& pen, Sink& sink, StrokeBuffers<T>& buffers);

    /// Outlines one polyline, which may have repeated points. A polyline whose points are all the same draws
    /// a dot where the cap has one.
    void stroke(std::vector<StrokeVertex<T>>& line, bool closed, const EndTangents<T>& tangents = {});
    /// How much more the caps of this pen cost than those of the thinnest one, which is 1.
    int capCost() const;

private:
    using V = Vec2<T>;
    static T cross(V a, V b) { return a.x * b.y - a.y * b.x; }
    static T dot(V a, V b) { return a.x * b.x + a.y * b.y; }
    /// A quarter turn in the direction of the outer side: from a segment's normal to the way it runs.
    static V turn(V a) { return {-a.y, a.x}; }

    void dotAt(V o);
    void side(V o, V from, V to, T reach, bool smooth);
    void outerJoin(V o, V from, V to, T cosine, bool smooth);
    void arc(V o, V from, V to);
    void cap(V o, V normal);
    void prepare(const std::vector<StrokeVertex<T>>& line, size_t segments);
    V endNormal(V tangent, V ofSegment) const;
    void closedOutline(const std::vector<StrokeVertex<T>>& line);
    void openOutline(const std::vector<StrokeVertex<T>>& line, const EndTangents<T>& tangents);
    void sides(const std::vector<StrokeVertex<T>>& line, bool back);

    Sink& m_sink;
    T m_halfWidth, m_halfWidthSquared, m_miterLimitSquared;
    Cap m_cap;
    Join m_join;
    V m_xAxis;
    T m_stepCosine, m_stepSine; // of the angle between two points of an arc
    int m_maxSteps;             // in half a turn
    std::vector<V>& m_normals;
    std::vector<T>& m_lengths;
};

} // namespace ozcg
