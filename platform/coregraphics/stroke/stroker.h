#pragma once

#include "path/flatten.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ozcg {

/// The shape of a line's ends.
enum class Cap : uint8_t { butt, round, square };
/// The shape of a line's corners.
enum class Join : uint8_t { miter, round, bevel };

/// The pen, in the space of the polyline that it draws along ("pen space", where it is a circle).
struct Pen {
    double halfWidth = 0.5;
    double miterLimit = 10;
    Cap cap = Cap::butt;
    Join join = Join::miter;
    /// The greatest distance, in pen space, of a chord from its arc.
    double tolerance = kFlatness;
    /// The direction of the user's x axis in pen space, of length 1, with which a square dot is aligned.
    Vec2<double> xAxis = {1, 0};
};

/// A point of a polyline. A smooth one lies inside a flattened curve, where the join style does not apply.
template <typename T>
struct StrokeVertex {
    Vec2<T> p;
    bool smooth;
};

/// A dasher's buffers.
template <typename T>
struct DashBuffers {
    std::vector<double> pattern;
    std::vector<StrokeVertex<T>> dash;
};

/// A stroker's buffers, kept by its user so that they are not allocated again.
template <typename T>
struct StrokeBuffers {
    std::vector<StrokeVertex<T>> line;
    DashBuffers<T> dash;
    std::vector<Vec2<T>> normals; // of the segments, halfWidth long, towards the outer side of a left turn
    std::vector<T> lengths;
};

/// The directions in which an open polyline starts and ends, where it comes from a curve and its first and
/// last segments only approximate them. Of any length; zero: not known.
template <typename T>
struct EndTangents {
    Vec2<T> start{}, end{};
};

/// Turns polylines into the closed contours of their outline, to be filled with the nonzero rule: along
/// either side of the spine every segment, join and cap adds a positively wound piece.
///
/// Sink: begin(Vec2<T>), to(Vec2<T>), close().
template <typename T, typename Sink>
class Stroker {
public:
    Stroker(const Pen& pen, Sink& sink, StrokeBuffers<T>& buffers);

    /// Outlines one polyline, which may have repeated points. If all points are equal, the caps make a dot.
    void stroke(std::vector<StrokeVertex<T>>& line, bool closed, const EndTangents<T>& tangents = {});
    /// The cost of this pen's caps as a multiple of the cheapest caps' cost.
    int capCost() const;

private:
    using V = Vec2<T>;
    static T cross(V a, V b) { return a.x * b.y - a.y * b.x; }
    static T dot(V a, V b) { return a.x * b.x + a.y * b.y; }
    /// A quarter turn, from a segment's normal to its direction.
    static V turn(V a) { return {-a.y, a.x}; }

    void dotAt(V o);
    void side(V o, V from, V to, T shorterLength, bool smooth);
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
    T m_stepCosine, m_stepSine; // of the angle between neighbouring points of an arc
    int m_maxSteps;             // of an arc of half a turn
    std::vector<V>& m_normals;
    std::vector<T>& m_lengths;
};

} // namespace ozcg
