#pragma once

#include "stroke/stroker.h"

namespace ozcg {

/// The least and the greatest number of chords of half a turn.
constexpr int kMinArcSteps = 3;
constexpr int kMaxArcSteps = 512;

inline double square(double x) { return x * x; }

template <typename T>
ArcSteps<T>::ArcSteps(const Pen& pen) : halfWidth(pen.halfWidth), tolerance(pen.tolerance) {
    // A chord that spans the angle a lies halfWidth * (1 - cos(a/2)) from its arc.
    constexpr double kPi = 3.14159265358979323846;
    const double half = std::acos(std::max(0.0, 1 - pen.tolerance / pen.halfWidth));
    const double steps = std::clamp(std::ceil(kPi / (2 * half)), double(kMinArcSteps), double(kMaxArcSteps));
    count = static_cast<int>(steps);
    cosine = static_cast<T>(std::cos(kPi / steps));
    sine = static_cast<T>(std::sin(kPi / steps));
    // The chords of half a turn with its inner points this far out cover the area of the arc, as in
    // emitChords().
    scale = static_cast<T>(1 + square(kPi / steps) / 12 * steps / (steps - 1));
}

template <typename T, typename Sink>
Stroker<T, Sink>::Stroker(const Pen& pen, Sink& sink, StrokeBuffers<T>& buffers)
    : m_sink(sink), m_halfWidth(static_cast<T>(pen.halfWidth)), m_halfWidthSquared(m_halfWidth * m_halfWidth),
      m_miterLimitSquared(static_cast<T>(square(std::clamp(pen.miterLimit, 0.0, 1e9)))),
      m_slack(static_cast<T>(std::min(kInnerJoinSlack * pen.tolerance, 0.1 * pen.halfWidth))), m_cap(pen.cap),
      m_join(pen.join), m_xAxis{static_cast<T>(pen.xAxis.x), static_cast<T>(pen.xAxis.y)}, m_arc(buffers.arc),
      m_segments(buffers.segments), m_innerJoins(buffers.innerJoins),
      m_isThin(2 * pen.halfWidth * kPenFlatness < kThinLine * pen.tolerance) {
    if (m_arc.halfWidth != pen.halfWidth || m_arc.tolerance != pen.tolerance) m_arc = ArcSteps<T>(pen);
}

template <typename T, typename Sink>
int Stroker<T, Sink>::capCost() const {
    return m_cap == Cap::round ? m_arc.count / kMinArcSteps : 1;
}

// Between chords that turn, the pen draws arcs. Those that remain are at the ends, where a side turns from
// the curve's tangent to the first chord's normal: by half of what each chord turns, or by all of it if there
// is one.
template <typename T, typename Sink>
int Stroker<T, Sink>::chordsFor(const Cubic<T>& c, int count) const {
    const V a = c.p1 - c.p0, b = c.p2 - c.p1, d = c.p3 - c.p2;
    const bool isQuarter = dot(a, b) >= 0 && dot(b, d) >= 0 && dot(a, d) >= 0; // turns no more than that
    if (count > 1 && 4 * count >= (isQuarter ? 1 : 4) * m_arc.count) return count;
    const auto angle = [](V from, V to) { return std::abs(std::atan2(cross(from, to), dot(from, to))); };
    constexpr T kPi = T(3.14159265358979323846);
    const T steps = (angle(a, b) + angle(b, d)) / kPi * static_cast<T>(m_arc.count); // of the pen's arcs
    if (!(steps > 1)) return count; // nor of huge curves, whose angles are no numbers
    return std::max({count, 2, static_cast<int>(std::ceil(steps / 2))});
}

template <typename T, typename Sink>
void Stroker<T, Sink>::prepare(const std::vector<StrokeVertex<T>>& line, size_t segments) {
    auto& [normals, lengths, overlaps] = m_segments;
    normals.resize(segments);
    lengths.resize(segments);
    for (size_t i = 0; i < segments; ++i) {
        const V d = line[i + 1 < line.size() ? i + 1 : 0].p - line[i].p;
        const T length = std::sqrt(dot(d, d));
        const T k = m_halfWidth / length;
        lengths[i] = length;
        normals[i] = {d.y * k, -d.x * k};
    }
    const bool closed = segments == line.size();
    overlaps.assign(segments + 1, T(0));
    for (size_t i = 1; i < segments; ++i)
        overlaps[i] = overlap(normalIn(line[i], i - 1), normalOut(line[i], i));
    if (closed) overlaps.front() = overlap(normalIn(line[0], segments - 1), normalOut(line[0], 0));
    overlaps.back() = overlaps.front();
    m_isTight = InnerJoins<T>::areTight(m_segments, m_slack);
    if (m_isTight) findInnerJoins(line, closed);
    if (m_isThin) reportReversals(line);
}

// A line thinner than a pixel that turns back covers pixels twice, and still no pixel wholly.
template <typename T, typename Sink>
void Stroker<T, Sink>::reportReversals(const std::vector<StrokeVertex<T>>& line) {
    const auto& [normals, lengths, overlaps] = m_segments;
    for (size_t i = 0; i < normals.size(); ++i) {
        const size_t before = i > 0 ? i - 1 : normals.size() - 1;
        if ((i == 0 && normals.size() < line.size()) ||
            dot(normals[before], normals[i]) > kReversal * m_halfWidthSquared)
            continue;
        const size_t shorter = lengths[before] < lengths[i] ? before : i;
        if (lengths[shorter] < 2 * m_halfWidth) continue;
        m_sink.overlap(line[shorter].p, line[shorter + 1 < line.size() ? shorter + 1 : 0].p, m_halfWidth);
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::findInnerJoins(const std::vector<StrokeVertex<T>>& line, bool closed) {
    std::vector<T>& overlaps = m_segments.overlaps;
    const size_t segments = m_segments.lengths.size();
    for (size_t i = closed ? 0 : 1; i < segments; ++i) {
        if (line[i].smooth) continue;
        const Turn<T> turn = innerTurnAt(line[i], i > 0 ? i - 1 : segments - 1, i);
        overlaps[i] = overlap(turn.from, turn.to);
    }
    overlaps.back() = overlaps.front();
    m_innerJoins.find(m_segments, m_halfWidth, m_slack, closed,
                      [&](size_t i) { return innerTurnAt(line[i], i - 1, i); });
}

// How far the offsets of the segments overlap: halfWidth * tan(angle / 2).
template <typename T, typename Sink>
inline T Stroker<T, Sink>::overlap(V from, V to) const {
    const T k = m_halfWidthSquared + dot(from, to);
    return k > 0 ? m_halfWidth * cross(from, to) / k : T(0);
}

// The turn at a vertex on the inner side of a line with short segments. These have their own normals where a
// curve goes on smoothly, as its tangent may differ from them.
template <typename T, typename Sink>
Turn<T> Stroker<T, Sink>::innerTurnAt(const StrokeVertex<T>& v, size_t before, size_t after) const {
    if (!v.smooth) {
        const V from = normalIn(v, before), to = normalOut(v, after);
        if (dot(from, to) < m_arc.cosine * m_halfWidthSquared) return {v.p, from, to};
    }
    return {v.p, m_segments.normals[before], m_segments.normals[after]};
}

template <typename T, typename Sink>
void Stroker<T, Sink>::stroke(std::vector<StrokeVertex<T>>& line, bool closed) {
    // Points closer than this are merged: rounding leaves their direction meaningless.
    const T tooShort = T(1) / T(1024);
    size_t n = 0;
    for (const StrokeVertex<T>& v : line) {
        const V d = n ? v.p - line[n - 1].p : V{};
        if (n && !(dot(d, d) > tooShort * tooShort)) {
            StrokeVertex<T>& merged = line[n - 1];
            if (!v.smooth) merged.out = v.out;
            merged.smooth = merged.smooth && v.smooth;
            continue;
        }
        if (&line[n] != &v) line[n] = v;
        ++n;
    }
    if (closed && n > 1) {
        const V d = line[n - 1].p - line[0].p;
        if (!(dot(d, d) > tooShort * tooShort)) line[0].in = line[--n].in;
    }
    line.resize(n);
    if (n == 0) return;
    if (n == 1) return dotAt(line[0]);

    prepare(line, closed ? n : n - 1);
    if (closed)
        closedOutline(line);
    else
        openOutline(line);
}

// The next point of the contour.
template <typename T, typename Sink>
[[gnu::always_inline]] inline void Stroker<T, Sink>::emit(V p) {
    if (m_hasBegun) return m_sink.to(p);
    m_sink.begin(p);
    m_hasBegun = true;
}

// The joins at the vertices between two segments, forwards along one side or back along the other.
template <typename T, typename Sink>
void Stroker<T, Sink>::sides(const std::vector<StrokeVertex<T>>& line, bool back) {
    const size_t segments = m_segments.lengths.size();
    for (size_t k = 1; k < segments; ++k) {
        const size_t i = back ? segments - k : k;
        join(line[i], i - 1, i, back);
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::closedOutline(const std::vector<StrokeVertex<T>>& line) {
    for (const bool back : {false, true}) {
        m_hasBegun = false;
        join(line[0], m_segments.lengths.size() - 1, 0, back);
        sides(line, back);
        m_sink.close();
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::openOutline(const std::vector<StrokeVertex<T>>& line) {
    const V start = normalAt(line.front().out, m_segments.normals.front()),
            end = normalAt(line.back().in, m_segments.normals.back());
    m_hasBegun = false;
    emit(line.front().p + start);
    sides(line, false);
    cap(line.back().p, end);
    sides(line, true);
    cap(line.front().p, -start);
    m_sink.close();
}

// The normal at the end of a segment: the tangent's if it is known and close to the segment's direction,
// else the segment's.
template <typename T, typename Sink>
Vec2<T> Stroker<T, Sink>::normalAt(V tangent, V ofSegment) const {
    const T length2 = dot(tangent, tangent);
    if (!(length2 > 0)) return ofSegment;
    const T k = m_halfWidth / std::sqrt(length2);
    const V normal = {tangent.y * k, -tangent.x * k};
    return dot(normal, ofSegment) > T(0.7) * m_halfWidthSquared ? normal : ofSegment;
}

// The join at a vertex on one side of the line. `back`: on the way back along the left.
template <typename T, typename Sink>
[[gnu::always_inline]] inline void Stroker<T, Sink>::join(const StrokeVertex<T>& v, size_t before,
                                                          size_t vertex, bool back) {
    if (m_isTight && m_innerJoins[vertex].way != InnerJoin<T>::Way::usual) {
        const T overlap = m_segments.overlaps[vertex];
        if (back ? overlap > 0 : overlap < 0) {
            const Turn<T> turn = innerTurnAt(v, before, vertex);
            return tightJoin(back ? turn.reversed() : turn, m_innerJoins[vertex]);
        }
    }
    const V from = normalIn(v, before), to = normalOut(v, vertex);
    if (back)
        side(v.p, -to, -from, v.smooth);
    else
        side(v.p, from, to, v.smooth);
}

template <typename T, typename Sink>
void Stroker<T, Sink>::side(V o, V from, V to, bool smooth) {
    const T sine = cross(from, to), cosine = dot(from, to);
    // A line that turns straight back has no inner side.
    const bool isOuter = sine > 0 || (cosine < 0 && sine > T(-1e-6) * m_halfWidthSquared);
    // Where a line almost reverses, k is mostly rounding and may be negative.
    const T k = m_halfWidthSquared + cosine;
    const bool intersect = !isOuter && k > kLeastOfReversal * m_halfWidthSquared;
    const bool isRound = smooth || m_join == Join::round;
    if (isRound && (isOuter || intersect) && cosine > m_arc.cosine * m_halfWidthSquared) {
        // A turn of less than an arc's step needs one point, on both sides at the distance that keeps the
        // area: halfWidth * (1 + angle^2 / 12).
        const T turned = 1 - cosine / m_halfWidthSquared; // angle^2 / 2
        return emit(o + (from + to) * (T(0.5) + T(5) / T(24) * turned));
    }
    if (isOuter) return outerJoin(o, from, to, cosine, smooth);
    if (intersect) return emit(o + (from + to) * (m_halfWidthSquared / k));
    throughSpine({o, from, to});
}

// The join at a vertex on the inner side of a line with short segments.
template <typename T, typename Sink>
void Stroker<T, Sink>::tightJoin(const Turn<T>& turn, const InnerJoin<T>& join) {
    using Way = typename InnerJoin<T>::Way;
    if (join.way == Way::skipped) return;
    if (join.way == Way::tip) return emit(join.tip);
    const T k = m_halfWidthSquared + dot(turn.from, turn.to);
    if (join.way == Way::intersection && k > kLeastOfReversal * m_halfWidthSquared)
        emit(turn.p + (turn.from + turn.to) * (m_halfWidthSquared / k));
    else
        throughSpine(turn);
}

// Where there is no room for an inner join, the way through the spine keeps each piece positively wound.
template <typename T, typename Sink>
void Stroker<T, Sink>::throughSpine(const Turn<T>& turn) {
    emit(turn.p + turn.from);
    emit(turn.p);
    emit(turn.p + turn.to);
}

template <typename T, typename Sink>
void Stroker<T, Sink>::outerJoin(V o, V from, V to, T cosine, bool smooth) {
    emit(o + from);
    if (smooth || m_join == Join::round) {
        arc(o, from, to);
    } else if (m_join == Join::miter) {
        // The miter's length over the width is 1 / sin(angle / 2).
        const T k = m_halfWidthSquared + cosine;
        if (2 * m_halfWidthSquared <= m_miterLimitSquared * k) {
            V tip = (from + to) * (m_halfWidthSquared / k);
            // Where a line almost reverses, the sums nearly cancel and rounding may enlarge the tip.
            const T excess = dot(tip, tip) / (m_miterLimitSquared * m_halfWidthSquared);
            if (excess > 1) tip = tip * (1 / std::sqrt(excess));
            emit(o + tip);
        }
    }
    emit(o + to);
}

// The points between o + from and o + to on the circle around o, in the direction of turn().
template <typename T, typename Sink>
void Stroker<T, Sink>::arc(V o, V from, V to) {
    const T enough = m_arc.cosine * m_halfWidthSquared;
    V v = from;
    for (int i = 0; i < m_arc.count && dot(v, to) < enough; ++i) {
        v = {v.x * m_arc.cosine - v.y * m_arc.sine, v.x * m_arc.sine + v.y * m_arc.cosine};
        emit(o + v * m_arc.scale);
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::cap(V o, V normal) {
    emit(o + normal);
    if (m_cap == Cap::round) {
        arc(o, normal, -normal);
    } else if (m_cap == Cap::square) {
        emit(o + normal + turn(normal));
        emit(o - normal + turn(normal));
    }
    emit(o - normal);
}

template <typename T, typename Sink>
void Stroker<T, Sink>::dotAt(const StrokeVertex<T>& vertex) {
    if (m_cap == Cap::butt) return;
    const T length = std::sqrt(dot(vertex.out, vertex.out));
    const V normal = (length > 0 ? vertex.out * (1 / length) : m_xAxis) * m_halfWidth;
    m_hasBegun = false;
    emit(vertex.p + normal);
    cap(vertex.p, normal);
    cap(vertex.p, -normal);
    m_sink.close();
}

} // namespace ozcg
