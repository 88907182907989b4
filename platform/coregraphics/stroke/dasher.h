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

/// Cuts polylines into the dashes of a pattern, which alternates between lengths of dash and gap, in pen
/// space.
template <typename T>
class Dasher {
public:
    /// A pattern that is empty, not positive or not finite is ignored: active() is then false. A pattern with
    /// an odd number of lengths is repeated once, so that dashes and gaps alternate.
    Dasher(std::span<const double> lengths, double phase, double scale, DashBuffers<T>& buffers)
        : m_pattern(buffers.pattern), m_dash(buffers.dash) {
        m_pattern.clear();
        double total = 0;
        for (const double length : lengths) {
            if (!(length >= 0)) return;
            total += length * scale;
        }
        if (!(total > 0) || !std::isfinite(total) || !std::isfinite(phase * scale)) return;
        for (const double length : lengths) m_pattern.push_back(length * scale);
        if (lengths.size() % 2) {
            for (const double length : lengths) m_pattern.push_back(length * scale);
            total *= 2;
        }
        m_total = total;
        m_phase = std::fmod(phase * scale, total);
        if (m_phase < 0) m_phase += total;
        restart();
    }

    bool active() const { return m_total > 0; }
    /// Lowers the limit on the number of dashes for dashes that each cost `cost` times as much as the
    /// cheapest.
    void setCostPerDash(int cost) { m_budget = kMaxDashes / cost; }
    /// Returns to the start of the pattern, for a new subpath.
    void restart() {
        m_index = 0;
        m_left = m_pattern.empty() ? 0 : m_pattern[0];
        advance(m_phase);
    }
    /// Passes over a stretch that is not visible.
    void skip(double length) { advance(std::isfinite(length) ? std::fmod(length, m_total) : 0); }

    /// Calls emit(vertices) for every dash of an open polyline. The pattern continues from the last call.
    template <typename Emit>
    void cut(const std::vector<StrokeVertex<T>>& line, Emit&& emit) {
        if (line.empty()) return;
        m_dash.clear();
        if (on()) m_dash.push_back(line[0]);
        for (size_t i = 1; i < line.size(); ++i) {
            const Vec2<T> from = line[i - 1].p, way = line[i].p - from;
            const double length = std::hypot(double(way.x), double(way.y));
            if (!(length > 0)) continue;
            double done = 0;
            while (m_left < length - done && m_budget > 0) {
                done += m_left;
                const StrokeVertex<T> cutPoint{from + way * static_cast<T>(done / length), false};
                m_dash.push_back(cutPoint);
                if (on()) emit(m_dash);
                next();
                m_dash.clear();
                --m_budget;
                if (on()) m_dash.push_back(cutPoint);
            }
            if (m_budget > 0) m_left -= length - done;
            if (on()) m_dash.push_back(line[i]);
        }
        if (on() && m_dash.size() > 1) emit(m_dash);
    }

private:
    bool on() const { return m_budget <= 0 || m_index % 2 == 0; }
    void next() {
        m_index = m_index + 1 < m_pattern.size() ? m_index + 1 : 0;
        m_left = m_pattern[m_index];
    }
    void advance(double length) {
        while (length > 0 && length >= m_left) {
            length -= m_left;
            next();
        }
        m_left -= length;
    }

    std::vector<double>& m_pattern;
    double m_total = 0, m_phase = 0;
    size_t m_index = 0;
    double m_left = 0; // what remains of the current length
    int m_budget = kMaxDashes;
    std::vector<StrokeVertex<T>>& m_dash;
};

} // namespace ozcg
