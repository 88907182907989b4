#pragma once

#include "path/flatten.h"
#include "stroke/inner_joins.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ozcg {

/// The greatest distance, in pixels, of a chord from an arc of the pen or from a curve that is stroked. It
/// may be more than kFlatness: errors on either side of a line make up for each other.
constexpr double kPenFlatness = 0.05;
/// By how much two inner joins may together exceed the segment between them, in multiples of the tolerance.
/// Never more than a tenth of the half width, which keeps the join within kOutlineSlack of where the pen
/// reaches.
constexpr double kInnerJoinSlack = 1.25;
/// How far an outline's points may lie outside everything that the pen reaches, in pixels: those of an arc do
/// by less than its chords' tolerance.
constexpr double kOutlineSlack = 0.0625;

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
    double tolerance = kPenFlatness;
    /// The direction of the user's x axis in pen space, of length 1, with which a square dot is aligned.
    Vec2<double> xAxis = {1, 0};
};

/// A point of a polyline. A smooth one lies inside a flattened curve, where the join style does not apply.
template <typename T>
struct StrokeVertex {
    Vec2<T> p;
    bool smooth;
    /// The directions in which a curve arrives and leaves, where its chords only approximate them. Of any
    /// length; zero: that of the segment.
    Vec2<T> in{}, out{};
};

/// A dasher's buffers.
template <typename T>
struct DashBuffers {
    std::vector<double> lengths, ends;
    std::vector<StrokeVertex<T>> dash;
};

/// The chords of a pen's arcs.
template <typename T>
struct ArcSteps {
    double halfWidth = 0, tolerance = 0; // of the pen
    T cosine = 0, sine = 0;              // of the angle between neighbouring points
    T scale = 0;                         // from halfWidth to the distance of the inner points
    int count = 0;                       // of half a turn

    ArcSteps() = default;
    explicit ArcSteps(const Pen& pen);
};

/// A stroker's buffers, kept by its user so that they are not allocated again.
template <typename T>
struct StrokeBuffers {
    ArcSteps<T> arc; // of the last pen: computing them is 1 % of the instructions of stroked icons at 24 px
    std::vector<StrokeVertex<T>> line, first;
    DashBuffers<T> dash;
    Segments<T> segments;
    InnerJoins<T> innerJoins;
};

/// Turns polylines into the closed contours of their outline, to be filled with the nonzero rule: along
/// either side of the spine every segment, join and cap adds a positively wound piece, and neighbouring
/// pieces overlap only where a segment is too short for its joins.
///
/// Sink: begin(Vec2<T>), to(Vec2<T>), close(); overlap(Vec2<T> from, Vec2<T> to, T distance), which tells
/// that pieces may overlap within a distance of a segment, where they cover no pixel wholly.
template <typename T, typename Sink>
class Stroker {
public:
    Stroker(const Pen& pen, Sink& sink, StrokeBuffers<T>& buffers);

    /// Outlines one polyline, which may have repeated points. If all points are equal, the caps make a dot,
    /// aligned with the first point's direction or else with the user's x axis.
    void stroke(std::vector<StrokeVertex<T>>& line, bool closed);
    /// How many chords a curve needs for its outer side to be as fine as the pen's arcs; at least `count`,
    /// which the curve itself needs.
    int chordsFor(const Cubic<T>& curve, int count) const;
    /// The cost of this pen's caps as a multiple of the cheapest caps' cost.
    int capCost() const;

private:
    using V = Vec2<T>;
    // Of halfWidth squared times 1 + the cosine of a turn: below it, the turn reverses the line and the sum
    // is mostly rounding.
    static constexpr T kLeastOfReversal = T(1e-4);
    // The cosine of turns that leave two segments on top of each other.
    static constexpr T kReversal = T(-0.9);
    // The width, in pixels, of lines whose overlaps do not show in sums of coverage.
    static constexpr double kThinLine = 1;

    static T cross(V a, V b) { return a.x * b.y - a.y * b.x; }
    static T dot(V a, V b) { return a.x * b.x + a.y * b.y; }
    /// A quarter turn, from a segment's normal to its direction.
    static V turn(V a) { return {-a.y, a.x}; }

    void emit(V p);
    void dotAt(const StrokeVertex<T>& vertex);
    void join(const StrokeVertex<T>& v, size_t before, size_t vertex, bool back);
    void side(V o, V from, V to, bool smooth);
    void tightJoin(const Turn<T>& turn, const InnerJoin<T>& join);
    void throughSpine(const Turn<T>& turn);
    void outerJoin(V o, V from, V to, T cosine, bool smooth);
    void arc(V o, V from, V to);
    void cap(V o, V normal);
    void prepare(const std::vector<StrokeVertex<T>>& line, size_t segments);
    Turn<T> innerTurnAt(const StrokeVertex<T>& v, size_t before, size_t after) const;
    T overlap(V from, V to) const;
    void reportReversals(const std::vector<StrokeVertex<T>>& line);
    void findInnerJoins(const std::vector<StrokeVertex<T>>& line, bool closed);
    V normalAt(V tangent, V ofSegment) const;
    V normalIn(const StrokeVertex<T>& v, size_t segment) const {
        const V ofSegment = m_segments.normals[segment];
        return v.smooth ? ofSegment : normalAt(v.in, ofSegment);
    }
    V normalOut(const StrokeVertex<T>& v, size_t segment) const {
        const V ofSegment = m_segments.normals[segment];
        return v.smooth ? ofSegment : normalAt(v.out, ofSegment);
    }
    void closedOutline(const std::vector<StrokeVertex<T>>& line);
    void openOutline(const std::vector<StrokeVertex<T>>& line);
    void sides(const std::vector<StrokeVertex<T>>& line, bool back);

    Sink& m_sink;
    bool m_hasBegun = false; // the contour has its first point
    T m_halfWidth, m_halfWidthSquared, m_miterLimitSquared;
    T m_slack; // by how much inner joins may exceed a segment
    Cap m_cap;
    Join m_join;
    V m_xAxis;
    ArcSteps<T>& m_arc;
    Segments<T>& m_segments;
    InnerJoins<T>& m_innerJoins;
    bool m_isThin;
    bool m_isTight = false; // the line has segments that are too short for the joins at their ends
};

} // namespace ozcg
