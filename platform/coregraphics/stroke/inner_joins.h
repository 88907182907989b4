#pragma once

#include "path/flatten.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ozcg {

/// The segments of a polyline, and how its sides turn at the vertices.
template <typename T>
struct Segments {
    std::vector<Vec2<T>> normals; ///< Half the pen's width long, towards the outer side of a left turn.
    std::vector<T> lengths;
    /// For each vertex and for the end: how far the offsets of its two segments overlap, measured along
    /// these; positive at left turns. 0 where there are no two segments or where they reverse the line.
    std::vector<T> overlaps;
};

/// A vertex that joins two segments.
template <typename T>
struct Turn {
    Vec2<T> p;
    Vec2<T> from, to; ///< The normals of the segments before and after.

    /// The same on the way back.
    Turn reversed() const { return {p, -to, -from}; }
};

/// How the inner side of a stroke passes a vertex.
template <typename T>
struct InnerJoin {
    enum class Way : uint8_t {
        usual,        ///< There is room for any join.
        intersection, ///< Where the offsets of the vertex's two segments meet.
        spine,        ///< Through the vertex: there is no room for anything else.
        tip,          ///< At `tip`, for this vertex and those after it that are skipped.
        skipped,
    };
    Way way = Way::usual;
    Vec2<T> tip{};
};

/// Finds the inner joins of polylines in which segments are too short for the joins at both of their ends,
/// such as the chords of an arc whose radius is less than half the pen's width.
///
/// While a line bends one way, what the pen leaves free inside the bend lies beyond the offsets of all its
/// segments. An offset that lies wholly beyond the point where its neighbours' offsets meet bounds nothing
/// and is left out. This goes on until all joins have room or the bend comes near to half a turn.
template <typename T>
class InnerJoins {
public:
    /// Whether a segment is too short. `slack`: by how much joins may exceed a segment.
    static bool areTight(const Segments<T>& segments, T slack) {
        bool tight = false;
        for (size_t i = 0; i < segments.lengths.size(); ++i) {
            const T a = segments.overlaps[i], b = segments.overlaps[i + 1];
            const T taken = std::max(std::abs(a + b), std::max(std::abs(a), std::abs(b)));
            tight |= taken > segments.lengths[i] + slack;
        }
        return tight;
    }

    /// Finds the joins at all vertices; what is found for those that have no inner side means nothing.
    /// `turnAt(vertex)` returns a Turn. The first vertex of a closed line joins the last segment and the
    /// first.
    template <typename TurnAt>
    void find(const Segments<T>& segments, T halfWidth, T slack, bool closed, TurnAt&& turnAt) {
        m_segments = &segments;
        m_halfWidth = halfWidth;
        m_slack = slack;
        const size_t count = segments.lengths.size();
        m_joins.assign(count, {});
        m_takenOfFirst = std::abs(overlap(1));
        m_takenOfLast = std::abs(overlap(count - 1));
        for (size_t begin = 1, end; begin < count; begin = end) {
            end = endOfBend(begin);
            if (isTight(begin, end)) findInBend(begin, end, turnAt);
        }
        if (closed) findAtStart();
    }

    const InnerJoin<T>& operator[](size_t vertex) const { return m_joins[vertex]; }

private:
    using V = Vec2<T>;
    using Way = typename InnerJoin<T>::Way;

    // Neighbouring vertices that turn to one side and that the inner side passes at one point.
    struct Corner {
        Turn<T> start, end; // at the first and the last of the vertices
        size_t first, last; // vertices
        T side;             // 1 for left turns, else -1
        T back, forward;    // how far the tip lies from these vertices, along the segments before and after
        V tip;              // unless there is one vertex
    };

    static T cross(V a, V b) { return a.x * b.y - a.y * b.x; }

    T overlap(size_t vertex) const { return m_segments->overlaps[vertex]; }

    // The end of the vertices from `begin` on that turn to one side.
    size_t endOfBend(size_t begin) const {
        size_t end = begin + 1;
        while (end < m_joins.size() && overlap(end - 1) * overlap(end) > 0) ++end;
        return end;
    }

    // Whether a segment at one of the vertices is too short.
    bool isTight(size_t begin, size_t end) const {
        bool tight = false;
        for (size_t i = begin - 1; i < end; ++i) {
            const T before = i < begin ? T(0) : overlap(i), after = i + 1 < end ? overlap(i + 1) : T(0);
            tight |= std::abs(before + after) > m_segments->lengths[i] + m_slack;
        }
        return tight;
    }

    template <typename TurnAt>
    void findInBend(size_t begin, size_t end, TurnAt&& turnAt) {
        if (begin == 1) m_takenOfFirst = 0;
        if (end == m_joins.size()) m_takenOfLast = 0;
        m_corners.clear();
        for (size_t i = begin; i < end; ++i) {
            const T reach = std::abs(overlap(i));
            const Turn<T> turn = turnAt(i);
            m_joins[i].way = Way::spine;
            add({turn, turn, i, i, std::copysign(T(1), overlap(i)), reach, reach, {}});
        }
        for (const Corner& corner : m_corners) place(corner);
    }

    // Adds a corner, merged with those before that leave it no room.
    void add(Corner corner) {
        while (!m_corners.empty() && !haveRoom(m_corners.back(), corner)) {
            const bool merged = merge(m_corners.back(), corner);
            m_corners.pop_back();
            if (!merged) return; // both go through the spine
        }
        m_corners.push_back(corner);
    }

    bool haveRoom(const Corner& before, const Corner& after) const {
        if (before.last + 1 != after.first) return true;
        return before.forward + after.back <= m_segments->lengths[before.last] + m_slack;
    }

    // Extends a corner to the first vertex of the one before. Returns false if the offsets do not meet.
    bool merge(const Corner& before, Corner& corner) const {
        corner.start = before.start;
        corner.first = before.first;
        const V along = direction(corner.start.from), onwards = direction(corner.end.to); // halfWidth long
        const V a = corner.start.p - corner.start.from * corner.side;
        const V b = corner.end.p - corner.end.to * corner.side;
        const T sine = cross(along, onwards); // times halfWidth squared
        if (!(sine * corner.side > kLeastSine * m_halfWidth * m_halfWidth)) return false;
        const T back = cross(a - b, onwards) / sine, forward = cross(b - a, along) / sine;
        corner.back = back * m_halfWidth;
        corner.forward = forward * m_halfWidth;
        corner.tip = a - along * back;
        return back >= 0 && forward >= 0;
    }
    static V direction(V normal) { return {-normal.y, normal.x}; }

    void place(const Corner& c) {
        const std::vector<T>& lengths = m_segments->lengths;
        if (c.back > lengths[c.first - 1] + m_slack || c.forward > lengths[c.last] + m_slack) return;
        if (c.first == 1) m_takenOfFirst = c.back;
        if (c.last + 1 == m_joins.size()) m_takenOfLast = c.forward;
        if (c.first == c.last) {
            m_joins[c.first].way = Way::intersection;
            return;
        }
        for (size_t i = c.first; i <= c.last; ++i) m_joins[i].way = Way::skipped;
        m_joins[c.first] = {Way::tip, c.tip};
    }

    // The join at a closed line's start, which has the room that its neighbours leave.
    void findAtStart() {
        const auto fits = [&](size_t neighbour, T taken, T length) {
            const T beside = overlap(0) * overlap(neighbour) > 0 ? taken : T(0);
            return std::abs(overlap(0)) + beside <= length + m_slack;
        };
        const std::vector<T>& lengths = m_segments->lengths;
        if (!fits(lengths.size() - 1, m_takenOfLast, lengths.back()) ||
            !fits(1, m_takenOfFirst, lengths.front()))
            m_joins[0].way = Way::spine;
    }

    // Of a bend's angle: beyond it, offsets meet too far away.
    static constexpr T kLeastSine = T(0.1);

    const Segments<T>* m_segments = nullptr;
    T m_halfWidth = 0, m_slack = 0;
    T m_takenOfFirst = 0, m_takenOfLast = 0; // how much of a segment the join at its inner end takes
    std::vector<InnerJoin<T>> m_joins;
    std::vector<Corner> m_corners;
};

} // namespace ozcg
