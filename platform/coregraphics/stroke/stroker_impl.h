#pragma once

#include "stroke/stroker.h"

namespace ozcg {

/// The least and the greatest number of chords of half a turn.
constexpr int kMinArcSteps = 3;
constexpr int kMaxArcSteps = 512;

inline double square(double x) { return x * x; }

template <typename T, typename Sink>
Stroker<T, Sink>::Stroker(const Pen& pen, Sink& sink, StrokeBuffers<T>& buffers)
    : m_sink(sink), m_halfWidth(static_cast<T>(pen.halfWidth)), m_halfWidthSquared(m_halfWidth * m_halfWidth),
      m_miterLimitSquared(static_cast<T>(square(std::clamp(pen.miterLimit, 0.0, 1e9)))), m_cap(pen.cap),
      m_join(pen.join), m_xAxis{static_cast<T>(pen.xAxis.x), static_cast<T>(pen.xAxis.y)},
      m_normals(buffers.normals), m_lengths(buffers.lengths) {
    // A chord that spans the angle a lies halfWidth * (1 - cos(a/2)) from its arc.
    constexpr double kPi = 3.14159265358979323846;
    const double half = std::acos(std::max(0.0, 1 - pen.tolerance / pen.halfWidth));
    const double steps = std::clamp(std::ceil(kPi / (2 * half)), double(kMinArcSteps), double(kMaxArcSteps));
    m_maxSteps = static_cast<int>(steps);
    m_stepCosine = static_cast<T>(std::cos(kPi / steps));
    m_stepSine = static_cast<T>(std::sin(kPi / steps));
}

template <typename T, typename Sink>
int Stroker<T, Sink>::capCost() const {
    return m_cap == Cap::round ? m_maxSteps / kMinArcSteps : 1;
}

template <typename T, typename Sink>
void Stroker<T, Sink>::prepare(const std::vector<StrokeVertex<T>>& line, size_t segments) {
    m_normals.resize(segments);
    m_lengths.resize(segments);
    for (size_t i = 0; i < segments; ++i) {
        const V d = line[i + 1 < line.size() ? i + 1 : 0].p - line[i].p;
        const T length = std::sqrt(dot(d, d));
        const T k = m_halfWidth / length;
        m_lengths[i] = length;
        m_normals[i] = {d.y * k, -d.x * k};
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::stroke(std::vector<StrokeVertex<T>>& line, bool closed,
                              const EndTangents<T>& tangents) {
    // Points closer than this are merged: rounding leaves their direction meaningless.
    const T tooShort = T(1) / T(1024);
    size_t n = 0;
    for (const StrokeVertex<T>& v : line) {
        const V d = n ? v.p - line[n - 1].p : V{};
        if (n && !(dot(d, d) > tooShort * tooShort)) {
            line[n - 1].smooth = line[n - 1].smooth && v.smooth;
            continue;
        }
        line[n++] = v;
    }
    if (closed && n > 1) {
        const V d = line[n - 1].p - line[0].p;
        if (!(dot(d, d) > tooShort * tooShort)) --n;
    }
    line.resize(n);
    if (n == 0) return;
    if (n == 1) return dotAt(line[0].p);

    prepare(line, closed ? n : n - 1);
    if (closed)
        closedOutline(line);
    else
        openOutline(line, tangents);
}

// The joins at the vertices between two segments, forwards along one side or back along the other.
template <typename T, typename Sink>
void Stroker<T, Sink>::sides(const std::vector<StrokeVertex<T>>& line, bool back) {
    const size_t segments = m_normals.size();
    const auto shorterLength = [&](size_t i) { return std::min(m_lengths[i - 1], m_lengths[i]); };
    if (back) {
        for (size_t i = segments - 1; i > 0; --i)
            side(line[i].p, -m_normals[i], -m_normals[i - 1], shorterLength(i), line[i].smooth);
    } else {
        for (size_t i = 1; i < segments; ++i)
            side(line[i].p, m_normals[i - 1], m_normals[i], shorterLength(i), line[i].smooth);
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::closedOutline(const std::vector<StrokeVertex<T>>& line) {
    const V o = line[0].p, first = m_normals.front(), last = m_normals.back();
    const T shorterLength = std::min(m_lengths.front(), m_lengths.back());
    m_sink.begin(o + first);
    sides(line, false);
    side(o, last, first, shorterLength, false);
    m_sink.close();
    m_sink.begin(o - last);
    sides(line, true);
    side(o, -first, -last, shorterLength, false);
    m_sink.close();
}

template <typename T, typename Sink>
void Stroker<T, Sink>::openOutline(const std::vector<StrokeVertex<T>>& line, const EndTangents<T>& tangents) {
    const V start = endNormal(tangents.start, m_normals.front()),
            end = endNormal(tangents.end, m_normals.back());
    m_sink.begin(line.front().p + start);
    sides(line, false);
    cap(line.back().p, end);
    sides(line, true);
    cap(line.front().p, -start);
    m_sink.close();
}

// The normal at an end: the tangent's if it is known and close to the segment's direction, else the
// segment's.
template <typename T, typename Sink>
Vec2<T> Stroker<T, Sink>::endNormal(V tangent, V ofSegment) const {
    const T length2 = dot(tangent, tangent);
    if (!(length2 > 0)) return ofSegment;
    const T k = m_halfWidth / std::sqrt(length2);
    const V normal = {tangent.y * k, -tangent.x * k};
    return dot(normal, ofSegment) > T(0.7) * m_halfWidthSquared ? normal : ofSegment;
}

template <typename T, typename Sink>
void Stroker<T, Sink>::side(V o, V from, V to, T shorterLength, bool smooth) {
    const T sine = cross(from, to), cosine = dot(from, to);
    // A line that turns straight back has no inner side.
    const bool back = cosine < 0 && sine > T(-1e-6) * m_halfWidthSquared;
    if (sine > 0 || back) return outerJoin(o, from, to, cosine, smooth);
    m_sink.to(o + from);
    // The offsets of the segments intersect if both are longer than the overlap. Otherwise a detour through
    // the spine keeps each piece positively wound.
    if (-sine > m_halfWidth * shorterLength || cosine < 0) m_sink.to(o);
    m_sink.to(o + to);
}

template <typename T, typename Sink>
void Stroker<T, Sink>::outerJoin(V o, V from, V to, T cosine, bool smooth) {
    m_sink.to(o + from);
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
            m_sink.to(o + tip);
        }
    }
    m_sink.to(o + to);
}

// The points between o + from and o + to on the circle around o, in the direction of turn().
template <typename T, typename Sink>
void Stroker<T, Sink>::arc(V o, V from, V to) {
    const T enough = m_stepCosine * m_halfWidthSquared;
    V v = from;
    for (int i = 0; i < m_maxSteps && dot(v, to) < enough; ++i) {
        v = {v.x * m_stepCosine - v.y * m_stepSine, v.x * m_stepSine + v.y * m_stepCosine};
        m_sink.to(o + v);
    }
}

template <typename T, typename Sink>
void Stroker<T, Sink>::cap(V o, V normal) {
    m_sink.to(o + normal);
    if (m_cap == Cap::round) {
        arc(o, normal, -normal);
    } else if (m_cap == Cap::square) {
        m_sink.to(o + normal + turn(normal));
        m_sink.to(o - normal + turn(normal));
    }
    m_sink.to(o - normal);
}

template <typename T, typename Sink>
void Stroker<T, Sink>::dotAt(V o) {
    if (m_cap == Cap::butt) return;
    const V normal = m_xAxis * m_halfWidth;
    m_sink.begin(o + normal);
    cap(o, normal);
    cap(o, -normal);
    m_sink.close();
}

} // namespace ozcg
