#include "geometry/dash.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {

namespace {

/// Lengths along a curve, measured over chords.
class CurveLengths {
public:
    explicit CurveLengths(const Point (&curve)[4]) {
        Point last = curve[0];
        for (int i = 1; i <= kSteps; ++i) {
            const Point p = CubicAt(curve, static_cast<double>(i) / kSteps);
            m_lengths[i] = m_lengths[i - 1] + Distance(last, p);
            last = p;
        }
    }

    double Total() const { return m_lengths[kSteps]; }

    /// Where on the curve a length is reached.
    double ParameterAt(double length) const {
        const double* const upper = std::lower_bound(m_lengths + 1, m_lengths + kSteps, length);
        const double step = upper[0] - upper[-1];
        const double part = step > 0 ? (length - upper[-1]) / step : 0;
        return std::clamp((static_cast<double>(upper - m_lengths - 1) + part) / kSteps, 0.0, 1.0);
    }

private:
    static constexpr int kSteps = 64;
    double m_lengths[kSteps + 1] = {};
};

double LengthOf(const Segment& segment) {
    switch (segment.verb) {
    case Verb::Move: return 0;
    case Verb::Cubic: return CurveLengths(segment.points).Total();
    default: return Distance(segment.points[0], segment.points[1]);
    }
}

/// Where a subpath stands in the pattern.
struct Position {
    size_t index = 0;
    double left = 0; ///< Of the length at `index`.

    bool IsPainted() const { return index % 2 == 0; }
};

/// Cuts one subpath after another.
class Dasher {
public:
    Dasher(std::vector<double> pattern, double phase, size_t maxDashes)
        : m_pattern(std::move(pattern)), m_maxDashes(maxDashes) {
        double sum = 0;
        for (const double length : m_pattern) sum += length;
        phase = std::fmod(phase, sum);
        if (phase < 0) phase += sum;
        while (phase > 0 && phase >= m_pattern[m_first.index] && m_first.index + 1 < m_pattern.size()) {
            phase -= m_pattern[m_first.index++];
        }
        m_first.left = m_pattern[m_first.index] - phase;
    }

    std::optional<Path> Dash(const Path& path) {
        Segment segment;
        for (Segments segments(path); segments.Next(segment) && !m_isTooMany;) {
            if (segment.verb == Verb::Move) {
                EndSubpath(false);
                BeginSubpath(segment.points[0]);
            } else {
                Add(segment);
                if (segment.verb == Verb::Close) EndSubpath(true);
            }
        }
        EndSubpath(false);
        if (m_isTooMany) return {};
        return std::move(m_out);
    }

private:
    void BeginSubpath(Point start) {
        m_position = m_first;
        m_dashes.clear();
        m_startsPainted = m_position.IsPainted();
        if (m_startsPainted) BeginDash(start, true);
    }

    /// A dash without a gap before it goes on with the last one.
    void BeginDash(Point p, bool isAfterGap) {
        m_isTooMany = m_isTooMany || ++m_count > m_maxDashes;
        if (!isAfterGap && !m_dashes.empty()) return;
        m_dashes.emplace_back();
        m_dashes.back().MoveTo(p);
    }

    /// Cuts a segment where the pattern changes.
    void Add(Segment segment) {
        double length = LengthOf(segment);
        if (!std::isfinite(length)) return;
        while (length > m_position.left && !m_isTooMany) {
            length -= m_position.left;
            segment = PaintFront(segment, m_position.left);
            const bool isGap = !m_position.IsPainted() && m_pattern[m_position.index] > 0;
            m_position.index = (m_position.index + 1) % m_pattern.size();
            m_position.left = m_pattern[m_position.index];
            if (m_position.IsPainted()) BeginDash(segment.Start(), isGap);
        }
        m_position.left -= length;
        if (m_position.IsPainted()) Paint(segment);
    }

    /// Adds the front of a segment to the dash, if one is drawn, and returns the rest.
    Segment PaintFront(const Segment& segment, double length) {
        Segment front = segment, rest = segment;
        if (segment.verb == Verb::Cubic) {
            Point halves[7];
            SplitCubic(segment.points, CurveLengths(segment.points).ParameterAt(length), halves);
            std::copy_n(halves, 4, front.points);
            std::copy_n(halves + 3, 4, rest.points);
        } else {
            const double whole = Distance(segment.points[0], segment.points[1]);
            front.verb = Verb::Line;
            front.points[1] = rest.points[0] = Mix(segment.points[0], segment.points[1], length / whole);
        }
        if (m_position.IsPainted()) Paint(front);
        return rest;
    }

    void Paint(const Segment& segment) {
        Path& dash = m_dashes.back();
        const bool isDot = segment.verb == Verb::Line && segment.points[0] == segment.points[1];
        if (isDot && dash.Verbs().size() > 1) return;
        if (segment.verb == Verb::Cubic) {
            dash.CubicTo(segment.points[1], segment.points[2], segment.points[3]);
        } else if (segment.verb == Verb::Line || segment.points[0] != segment.points[1]) {
            dash.LineTo(segment.points[1]);
        }
    }

    void EndSubpath(bool isClosed) {
        const bool isRunningOn = isClosed && m_startsPainted && m_position.IsPainted();
        if (isRunningOn && m_dashes.size() > 1) {
            // The last dash runs on into the first.
            Path joined = std::move(m_dashes.back());
            m_dashes.pop_back();
            Segment segment;
            for (Segments segments(m_dashes.front()); segments.Next(segment);) {
                if (segment.verb == Verb::Cubic)
                    joined.CubicTo(segment.points[1], segment.points[2], segment.points[3]);
                if (segment.verb == Verb::Line) joined.LineTo(segment.points[1]);
            }
            m_dashes.front() = std::move(joined);
        } else if (isRunningOn && m_dashes.size() == 1) {
            m_dashes.front().Close();
        }
        for (const Path& dash : m_dashes) {
            if (dash.Verbs().size() > 1) m_out.Append(dash);
        }
        m_dashes.clear();
        m_startsPainted = false;
    }

    const std::vector<double> m_pattern;
    const size_t m_maxDashes;
    Position m_first; ///< Of every subpath.
    Position m_position;
    std::vector<Path> m_dashes; ///< Of the subpath.
    bool m_startsPainted = false;
    size_t m_count = 0;
    bool m_isTooMany = false;
    Path m_out;
};

} // namespace

std::optional<Path> DashesOf(const Path& path, std::span<const double> lengths, double phase,
                             size_t maxDashes) {
    double sum = 0;
    for (const double length : lengths) {
        if (!(length >= 0)) return path;
        sum += length;
    }
    if (!(sum > 0) || !std::isfinite(sum)) return path;
    std::vector<double> pattern(lengths.begin(), lengths.end());
    if (pattern.size() % 2 != 0) pattern.insert(pattern.end(), lengths.begin(), lengths.end());
    double gaps = 0;
    for (size_t i = 1; i < pattern.size(); i += 2) gaps += pattern[i];
    if (gaps == 0) return path;
    return Dasher(std::move(pattern), std::isfinite(phase) ? phase : 0, maxDashes).Dash(path);
}

double LengthOf(const Path& path) {
    double length = 0;
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) length += LengthOf(segment);
    return length;
}

} // namespace ozm::conform
