#include "geometry/path_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace ozm::conform {

namespace {

/// A point as whole multiples of the last decimal place, so that differences are exact.
struct GridPoint {
    int64_t x = 0, y = 0;

    bool operator==(const GridPoint&) const = default;
    friend GridPoint operator-(GridPoint a, GridPoint b) { return {a.x - b.x, a.y - b.y}; }
};

/// True when a control point may lie at `b` instead of `a`, which moves its curve by less than rounding does.
bool IsRoundedTo(GridPoint a, GridPoint b) {
    const GridPoint by = a - b;
    return by.x >= -1 && by.x <= 1 && by.y >= -1 && by.y <= 1;
}

/// Coordinates reach no further, and no more relative commands follow each other. So a reader who adds them
/// up in doubles stays far nearer than half a unit to the sum.
constexpr double kMaxUnits = 1099511627776; // 2^40
constexpr int kMaxRelativeRun = 1000;
constexpr int kMinDecimals = -30, kMaxDecimals = 15;

/// The text of one command.
class CommandText {
public:
    explicit CommandText(int decimals) : m_decimals(decimals) {}

    /// Starts anew. A command like the one before it goes without a letter, as its coordinates follow on;
    /// `lastHasPoint` tells whether the number before has a point.
    void Begin(char letter, bool isLikeLast, bool lastHasPoint) {
        m_size = 0;
        m_letter = letter;
        if (!isLikeLast) m_text[m_size++] = letter;
        m_needsSpace = isLikeLast;
        m_lastHasPoint = isLikeLast && lastHasPoint;
    }

    void Add(int64_t units) {
        char digits[24];
        const auto magnitude = static_cast<uint64_t>(units < 0 ? -units : units);
        const char* const digitsEnd = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
        const std::span<const char> all(digits, static_cast<size_t>(digitsEnd - digits));
        const size_t places = m_decimals > 0 ? static_cast<size_t>(m_decimals) : 0;
        size_t fraction = std::min(all.size(), places);
        size_t zeros = places - fraction; // Between the point and the first digit.
        const size_t integers = all.size() - fraction;
        while (fraction > 0 && all[integers + fraction - 1] == '0') --fraction;
        const bool hasPoint = fraction > 0;
        if (!hasPoint) zeros = 0;

        if (units < 0) {
            m_text[m_size++] = '-';
        } else if (m_needsSpace && !(integers == 0 && hasPoint && m_lastHasPoint)) {
            m_text[m_size++] = ' ';
        }
        Append(all.first(integers));
        if (integers == 0 && !hasPoint) m_text[m_size++] = '0';
        if (hasPoint) m_text[m_size++] = '.';
        m_size = static_cast<size_t>(std::fill_n(m_text + m_size, zeros, '0') - m_text);
        Append(all.subspan(integers, fraction));
        if (m_decimals < 0 && units != 0) AppendExponent();
        m_needsSpace = true;
        m_lastHasPoint = hasPoint;
    }
    void Add(GridPoint p) {
        Add(p.x);
        Add(p.y);
    }
    template <size_t N>
    void Add(const std::array<GridPoint, N>& points) {
        for (const GridPoint p : points) Add(p);
    }

    std::string_view Text() const { return {m_text, m_size}; }
    char Letter() const { return m_letter; }
    bool LastHasPoint() const { return m_lastHasPoint; }

private:
    void Append(std::span<const char> characters) {
        m_size =
            static_cast<size_t>(std::copy(characters.begin(), characters.end(), m_text + m_size) - m_text);
    }
    void AppendExponent() {
        m_text[m_size++] = 'e';
        m_size =
            static_cast<size_t>(std::to_chars(m_text + m_size, std::end(m_text), -m_decimals).ptr - m_text);
    }

    const int m_decimals;
    /// Room for a letter and six numbers: sign, 13 digits or up to 15 places, point, exponent.
    char m_text[160];
    size_t m_size = 0;
    char m_letter = 0;
    bool m_needsSpace = false;
    bool m_lastHasPoint = false;
};

class PathWriter {
public:
    PathWriter(int decimals, std::string& out)
        : m_scale(std::pow(10.0, std::abs(decimals))),
          m_dividesByScale(decimals < 0), m_texts{CommandText(decimals), CommandText(decimals)}, m_out(out) {}

    void Write(const Path& path) {
        Segment segment;
        for (Segments segments(path); segments.Next(segment);) {
            switch (segment.verb) {
            case Verb::Move: Move(Grid(segment.points[0])); break;
            case Verb::Line: Line(Grid(segment.points[1])); break;
            case Verb::Cubic:
                Cubic(Grid(segment.points[1]), Grid(segment.points[2]), Grid(segment.points[3]));
                break;
            case Verb::Close: Close(); break;
            }
        }
        EndSubpath();
    }

private:
    int64_t Units(double value) const {
        const double units = m_dividesByScale ? value / m_scale : value * m_scale;
        if (std::isnan(units)) return 0;
        return std::llround(std::clamp(units, -kMaxUnits, kMaxUnits));
    }
    GridPoint Grid(Point p) const { return {Units(p.x), Units(p.y)}; }

    /// Where the next segment starts.
    GridPoint Pen() const { return m_heldLine ? *m_heldLine : m_pen; }

    /// The move is written when something follows.
    void Move(GridPoint p) {
        EndSubpath();
        m_start = m_pen = m_lastControl = p;
        m_isMoveOpen = true;
        m_hasDot = false;
    }

    void WriteMove() {
        if (!m_isMoveOpen) return;
        m_isMoveOpen = false;
        m_texts[0].Begin('M', false, false);
        m_texts[0].Add(m_start);
        Append(m_texts[0]);
        m_relativeRun = 0;
        // What coordinates without a letter mean after a move.
        m_lastLetter = 'L';
    }

    /// Holds the line back: if it leads back to the start, closing draws it.
    void Line(GridPoint p) {
        if (p == Pen()) {
            m_hasDot = true;
            return;
        }
        WriteHeldLine();
        m_heldLine = p;
    }

    void WriteHeldLine() {
        if (!m_heldLine) return;
        WriteMove();
        WriteLine(*m_heldLine);
        m_heldLine.reset();
    }

    void WriteLine(GridPoint p) {
        const GridPoint by = p - m_pen;
        // Neither H nor V sets both coordinates.
        const bool mustSetBoth = m_relativeRun >= kMaxRelativeRun;
        if (mustSetBoth || (by.x != 0 && by.y != 0)) {
            WriteShorter('l', by, 'L', p);
        } else if (by.y == 0) {
            WriteShorter('h', by.x, 'H', p.x);
        } else {
            WriteShorter('v', by.y, 'V', p.y);
        }
        m_pen = m_lastControl = p;
    }

    void Cubic(GridPoint control1, GridPoint control2, GridPoint end) {
        // With its control points at its ends, a curve is a line.
        if (control1 == Pen() && control2 == end) return Line(end);
        WriteHeldLine();
        WriteMove();
        const GridPoint pen = m_pen;
        // Smooth, a curve that comes to its end from there would become a line.
        const bool becomesLine = m_lastControl == pen && control2 == end;
        if (!becomesLine && IsRoundedTo(control1 - pen, pen - m_lastControl)) {
            WriteShorter('s', std::array{control2 - pen, end - pen}, 'S', std::array{control2, end});
        } else {
            WriteShorter('c', std::array{control1 - pen, control2 - pen, end - pen}, 'C',
                         std::array{control1, control2, end});
        }
        m_pen = end;
        m_lastControl = control2;
    }

    void Close() {
        if (m_heldLine == m_start) m_heldLine.reset();
        WriteHeldLine();
        WriteDot();
        WriteMove();
        m_out += 'z';
    }

    void EndSubpath() {
        WriteHeldLine();
        WriteDot();
        m_isMoveOpen = false;
    }

    /// A line without length, where nothing else was drawn.
    void WriteDot() {
        if (!m_isMoveOpen || !m_hasDot) return;
        WriteMove();
        WriteLine(m_start);
    }

    template <typename Coordinates>
    void WriteShorter(char relative, const Coordinates& fromPen, char absolute,
                      const Coordinates& coordinates) {
        m_texts[0].Begin(relative, relative == m_lastLetter, m_lastHasPoint);
        m_texts[0].Add(fromPen);
        m_texts[1].Begin(absolute, absolute == m_lastLetter, m_lastHasPoint);
        m_texts[1].Add(coordinates);
        const bool isAbsolute =
            m_relativeRun >= kMaxRelativeRun || m_texts[1].Text().size() < m_texts[0].Text().size();
        m_relativeRun = isAbsolute && absolute != 'H' && absolute != 'V' ? 0 : m_relativeRun + 1;
        Append(m_texts[isAbsolute ? 1 : 0]);
    }

    void Append(const CommandText& text) {
        m_out += text.Text();
        m_lastLetter = text.Letter();
        m_lastHasPoint = text.LastHasPoint();
    }

    const double m_scale;
    const bool m_dividesByScale;
    CommandText m_texts[2];
    std::string& m_out;

    GridPoint m_start;       ///< Of the subpath.
    GridPoint m_pen;         ///< After what is written.
    GridPoint m_lastControl; ///< What a smooth curve reflects; the pen after anything but a curve.
    std::optional<GridPoint> m_heldLine;
    bool m_isMoveOpen = false; ///< The subpath's move is not written yet.
    int m_relativeRun = 0;     ///< Commands since one that set both coordinates.
    bool m_hasDot = false;     ///< The subpath has a line without length.
    char m_lastLetter = 0;
    bool m_lastHasPoint = false;
};

/// `decimals`, or as many as the largest coordinate leaves room for.
int FittingDecimals(const Path& path, int decimals) {
    double largest = 0;
    const std::vector<Verb>& verbs = path.Verbs();
    const Point* p = path.Points().data();
    for (size_t i = 0; i < verbs.size(); ++i) {
        const int points = verbs[i] == Verb::Cubic ? 3 : verbs[i] == Verb::Close ? 0 : 1;
        const bool isLeftOut =
            verbs[i] == Verb::Move && (i + 1 == verbs.size() || verbs[i + 1] == Verb::Move);
        for (const Point* const end = p + points; p != end; ++p) {
            if (!isLeftOut) largest = std::max({largest, std::abs(p->x), std::abs(p->y)});
        }
    }
    decimals = std::clamp(decimals, kMinDecimals, kMaxDecimals);
    while (decimals > kMinDecimals && largest * std::pow(10.0, decimals) > kMaxUnits) --decimals;
    return decimals;
}

} // namespace

void WritePath(const Path& path, int decimals, std::string& out) {
    PathWriter(FittingDecimals(path, decimals), out).Write(path);
}

double RoundingError(int decimals) { return std::sqrt(0.5) * std::pow(10.0, -decimals); }

} // namespace ozm::conform
