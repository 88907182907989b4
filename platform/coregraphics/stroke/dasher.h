#pragma once

#include "stroke/stroker.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace ozcg {

/// A stroke with more dashes than this continues as a solid line, which bounds the time that a pattern far
/// finer than a pixel can take.
constexpr int kMaxDashes = 1'000'000;

/// Which ends of the line that it was cut from a piece holds.
struct PieceEnds {
    bool start, end;
};

/// Cuts polylines into the dashes of a pattern, which alternates between lengths of dash and gap, in pen
/// space. Dashes without a gap between them are one dash.
template <typename T>
class Dasher {
public:
    using Line = std::vector<StrokeVertex<T>>;

    /// A pattern that is empty, has no gap, is not positive or not finite is ignored: active() is then false.
    /// A pattern with an odd number of lengths is repeated once, so that dashes and gaps alternate.
    Dasher(std::span<const double> lengths, double phase, double scale, DashBuffers<T>& buffers)
        : m_lengths(buffers.lengths), m_ends(buffers.ends), m_dash(buffers.dash) {
        m_lengths.clear();
        m_ends.clear();
        double total = 0;
        for (const double length : lengths) {
            if (!(length >= 0)) return;
            total += length * scale;
        }
        if (lengths.size() % 2) total *= 2;
        if (!(total > 0) || !std::isfinite(total) || !std::isfinite(phase * scale)) return;
        const double moved = setPattern(lengths, scale);
        if (m_lengths.size() < 2) return;
        m_total = m_ends.back();
        m_startIndex = find(std::fmod(phase * scale, m_total) + moved, m_startLeft);
        restart();
    }

    bool active() const { return m_total > 0; }
    /// Lowers the limit on the number of dashes for dashes that each cost `cost` times as much as the
    /// cheapest.
    void setCostPerDash(int cost) { m_budget = kMaxDashes / cost; }
    /// Returns to the start of the pattern, for a new subpath.
    void restart() {
        m_index = m_startIndex;
        m_left = m_startLeft;
    }
    /// Passes over a stretch that is not visible.
    void skip(double length) {
        if (!std::isfinite(length)) return;
        if (length < m_left)
            m_left -= length;
        else
            m_index = find(m_ends[m_index] - m_left + std::fmod(length, m_total), m_left);
    }

    /// Calls emit(vertices, ends) for every dash of an open polyline. The pattern continues from the last
    /// call.
    template <typename Emit>
    void cut(const Line& line, Emit&& emit) {
        if (line.empty()) return;
        m_dash.clear();
        bool start = true; // of the line; the dash holds it
        if (on()) m_dash.push_back(line[0]);
        for (size_t i = 1; i < line.size(); ++i) {
            const Vec2<T> from = line[i - 1].p, way = line[i].p - from;
            const double length = std::hypot(double(way.x), double(way.y));
            if (!(length > 0)) continue;
            double done = 0;
            while (m_left < length - done && m_budget > 0) {
                done += m_left;
                const StrokeVertex<T> end = cutAt(line[i - 1], line[i], static_cast<T>(done / length));
                if (on()) {
                    m_dash.push_back(end);
                    emit(m_dash, PieceEnds{start, false});
                }
                start = false;
                next();
                m_dash.clear();
                --m_budget;
                if (on()) m_dash.push_back(end);
            }
            if (m_budget > 0) m_left -= length - done;
            if (on()) m_dash.push_back(line[i]);
        }
        if (on() && m_dash.size() > 1) emit(m_dash, PieceEnds{start, true});
    }

private:
    bool on() const { return m_budget <= 0 || m_index % 2 == 0; }
    void next() {
        m_index = m_index + 1 < m_lengths.size() ? m_index + 1 : 0;
        m_left = m_lengths[m_index];
    }

    // Fills m_lengths and m_ends. Returns by how much the pattern now begins later.
    double setPattern(std::span<const double> lengths, double scale) {
        const size_t count = lengths.size() % 2 ? 2 * lengths.size() : lengths.size();
        for (size_t i = 0; i < count; ++i) {
            const double length = lengths[i % lengths.size()] * scale;
            const bool goesOn = i % 2 == 0 && m_lengths.size() > 1 && m_lengths.back() == 0;
            if (goesOn) m_lengths.pop_back(); // no gap between this dash and the last
            if (goesOn)
                m_lengths.back() += length;
            else
                m_lengths.push_back(length);
        }
        double moved = 0;
        if (m_lengths.back() == 0) { // nor between the last and the first
            m_lengths.pop_back();
            if (m_lengths.size() > 1) {
                moved = m_lengths.back();
                m_lengths.pop_back();
                m_lengths.front() += moved;
            }
        }
        double end = 0;
        for (const double length : m_lengths) m_ends.push_back(end += length);
        return moved;
    }

    // The index of the length that holds a position, and what is left of it. A length of 0 holds its own.
    size_t find(double position, double& left) const {
        position = std::fmod(position, m_total);
        if (position < 0) position += m_total;
        auto i =
            static_cast<size_t>(std::lower_bound(m_ends.begin(), m_ends.end(), position) - m_ends.begin());
        if (i < m_ends.size() && m_ends[i] == position && m_lengths[i] > 0) ++i;
        if (i >= m_ends.size()) {
            left = m_lengths[0];
            return 0;
        }
        left = std::min(m_ends[i] - position, m_lengths[i]);
        return i;
    }

    // The point at the fraction t of a segment, with the direction there.
    static StrokeVertex<T> cutAt(const StrokeVertex<T>& from, const StrokeVertex<T>& to, T t) {
        const Vec2<T> way = to.p - from.p, zero{};
        // A curve's derivative changes almost linearly over a chord.
        Vec2<T> direction = from.out == zero || to.in == zero ? way : from.out * (1 - t) + to.in * t;
        if (direction == zero) direction = way;
        return {from.p + way * t, false, direction, direction};
    }

    std::vector<double>&m_lengths, &m_ends; // the pattern: each length, and where it ends
    double m_total = 0;
    size_t m_startIndex = 0;
    double m_startLeft = 0;
    size_t m_index = 0;
    double m_left = 0; // what remains of the current length
    int m_budget = kMaxDashes;
    Line& m_dash;
};

/// Puts the pieces of a subpath, cut by dashes or by a clip, back together where a closed subpath's start
/// lies inside a piece: the piece that begins there waits until it is known whether the last one continues
/// into it.
template <typename T>
class PieceJoiner {
public:
    using Line = std::vector<StrokeVertex<T>>;

    /// `buffer` holds the waiting piece.
    explicit PieceJoiner(Line& buffer) : m_first(buffer) { m_first.clear(); }

    /// Takes a piece, which may be changed, and calls emit(vertices, closed) for what is complete. `closed`:
    /// the subpath is closed or, for all but the last piece, may be.
    template <typename Emit>
    void add(Line& piece, PieceEnds ends, bool closed, Emit&& emit) {
        if (ends.start && ends.end) return emit(piece, closed);
        if (ends.start && closed) {
            m_first.assign(piece.begin(), piece.end());
            return;
        }
        if (ends.end && closed && !m_first.empty()) {
            piece.back().out = m_first.front().out;
            piece.back().smooth = false;
            piece.insert(piece.end(), m_first.begin() + 1, m_first.end());
            m_first.clear();
        }
        emit(piece, false);
    }
    /// Calls emit(vertices, false) for a first piece that nothing continues into. Ends the subpath.
    template <typename Emit>
    void finish(Emit&& emit) {
        if (!m_first.empty()) emit(m_first, false);
        m_first.clear();
    }

private:
    Line& m_first;
};

} // namespace ozcg
