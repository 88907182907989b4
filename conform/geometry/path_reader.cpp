#include "geometry/path_reader.h"

#include "geometry/number_text.h"
#include "geometry/shapes.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ozm::conform {

namespace {

constexpr char UpperCase(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// The number of numbers that a command takes; -1 for what is no command.
constexpr int ArgumentCount(char letter) {
    switch (UpperCase(letter)) {
    case 'M':
    case 'L':
    case 'T': return 2;
    case 'H':
    case 'V': return 1;
    case 'C': return 6;
    case 'S':
    case 'Q': return 4;
    case 'A': return 7;
    case 'Z': return 0;
    default: return -1;
    }
}

class PathDataReader {
public:
    PathDataReader(std::string_view text, double arcTolerance)
        : m_begin(text.data()), m_p(m_begin), m_end(m_begin + text.size()), m_arcTolerance(arcTolerance) {
        m_data.path.Reserve(text.size() / 8 + 2, text.size() / 5 + 2);
    }

    PathData Read() {
        char letter = 0;
        for (SkipSpaces(m_p, m_end); m_p != m_end; SkipSpaces(m_p, m_end)) {
            const char* const place = m_p;
            const bool hasLetter = ArgumentCount(*m_p) >= 0;
            if (hasLetter) {
                letter = *m_p++;
                SkipSpaces(m_p, m_end);
            } else if (letter == 'M' || letter == 'm') {
                letter = letter == 'M' ? 'L' : 'l';
            }
            const bool canFollow =
                m_hasMoved ? hasLetter || UpperCase(letter) != 'Z' : UpperCase(letter) == 'M';
            if (!canFollow) m_p = place;
            if (!canFollow || !ReadArguments(letter)) {
                m_data.error = static_cast<size_t>(m_p - m_begin);
                break;
            }
            const auto offset = static_cast<size_t>(place - m_begin);
            if (m_penOffset != Point{}) AddPenOffset(offset, letter);
            Draw(letter, offset);
        }
        return std::move(m_data);
    }

private:
    bool ReadArguments(char letter) {
        const int count = ArgumentCount(letter);
        const bool isArc = UpperCase(letter) == 'A';
        for (int i = 0; i < count; ++i) {
            const bool isRead = isArc && (i == 3 || i == 4) ? ReadFlag(m_arguments[i])
                                                            : ReadNumber(m_p, m_end, m_arguments[i]);
            if (!isRead) return false;
            SkipSpacesAndComma(m_p, m_end);
        }
        return true;
    }

    bool ReadFlag(double& value) {
        if (m_p == m_end || (*m_p != '0' && *m_p != '1')) return false;
        value = *m_p++ - '0';
        return true;
    }

    void AddPenOffset(size_t offset, char letter) {
        const double distance = PenOffset(letter);
        const double greatest = m_data.penOffsets.empty() ? 0 : m_data.penOffsets.back().distance;
        if (distance > greatest) m_data.penOffsets.push_back({offset, distance});
    }

    double PenOffset(char letter) const {
        switch (letter) {
        case 'Z':
        case 'z':
        case 'M':
        case 'L':
        case 'C':
        case 'Q':
        case 'A': return 0;
        case 'H': return std::abs(m_penOffset.y);
        case 'V': return std::abs(m_penOffset.x);
        default: return Length(m_penOffset);
        }
    }

    /// The point at argument `index`, from the pen where the command is relative.
    Point At(int index) const { return Point{m_arguments[index], m_arguments[index + 1]} + m_origin; }

    /// Draws the command at byte `offset`.
    void Draw(char letter, size_t offset) {
        const bool isRelative = letter >= 'a';
        const Point pen = m_pen = m_data.path.Pen();
        m_origin = isRelative ? pen : Point{};
        const size_t firstPoint = m_data.path.Points().size();
        switch (UpperCase(letter)) {
        case 'M':
            m_data.path.MoveTo(At(0));
            m_start = At(0);
            m_hasMoved = true;
            break;
        case 'L': m_data.path.LineTo(At(0)); break;
        case 'H': m_data.path.LineTo({m_arguments[0] + m_origin.x, pen.y}); break;
        case 'V': m_data.path.LineTo({pen.x, m_arguments[0] + m_origin.y}); break;
        case 'C': DrawCubic(At(0), At(2), At(4)); break;
        case 'S':
            // Ozmira goes on from the last curve that it draws.
            if (m_leftOut && m_isAfterCubic) m_leftOut->reach = std::numeric_limits<double>::infinity();
            DrawCubic(Reflected('C', pen), At(0), At(2));
            break;
        case 'Q':
            LeaveOut(m_data.quadratics, offset);
            DrawQuadratic(At(0), At(2));
            AddReach(firstPoint);
            break;
        case 'T':
            LeaveOut(m_data.quadratics, offset);
            DrawQuadratic(Reflected('Q', pen), At(0));
            AddReach(firstPoint);
            break;
        case 'A': {
            const size_t firstVerb = m_data.path.Verbs().size();
            LeaveOut(m_data.arcs, offset);
            ArcTo(m_data.path, m_arguments[0], m_arguments[1], m_arguments[2], m_arguments[3] != 0,
                  m_arguments[4] != 0, At(5), m_arcTolerance);
            AddReach(firstPoint);
            for (size_t i = firstVerb; i + 1 < m_data.path.Verbs().size(); ++i) {
                if (m_data.path.Verbs()[i] == Verb::Cubic) m_data.arcJoints.push_back(i);
            }
            break;
        }
        default:
            m_penOffset = m_penOffset + (pen - m_start);
            m_data.path.Close();
            break;
        }
        UpdateAfter(letter, isRelative);
    }

    void UpdateAfter(char letter, bool isRelative) {
        const char upper = UpperCase(letter);
        m_lastCurve = upper == 'C' || upper == 'S' ? 'C' : upper == 'Q' || upper == 'T' ? 'Q' : 0;
        if (upper != 'A' && upper != 'Q' && upper != 'T') {
            m_leftOut = nullptr;
            m_isAfterCubic = m_lastCurve == 'C';
        }
        if (isRelative || upper == 'Z') return;
        m_penOffset = upper == 'H'   ? Point{0, m_penOffset.y}
                      : upper == 'V' ? Point{m_penOffset.x, 0}
                                     : Point{};
    }

    void LeaveOut(PathData::LeftOut& kind, size_t offset) {
        if (!kind.first) kind.first = offset;
        m_leftOut = &kind;
    }

    /// The points from `first` on belong to a command that is left out.
    void AddReach(size_t first) {
        const std::vector<Point>& points = m_data.path.Points();
        double reach = 0;
        for (size_t i = first; i < points.size(); ++i) reach = std::max(reach, Distance(m_pen, points[i]));
        m_leftOut->reach += reach;
    }

    /// The control point that a smooth curve begins with.
    Point Reflected(char curve, Point pen) const {
        return m_lastCurve == curve ? pen * 2 - m_lastControl : pen;
    }

    void DrawCubic(Point control1, Point control2, Point end) {
        m_data.path.CubicTo(control1, control2, end);
        m_lastControl = control2;
    }

    void DrawQuadratic(Point control, Point end) {
        m_data.path.QuadraticTo(control, end);
        m_lastControl = control;
    }

    const char* const m_begin;
    const char* m_p;
    const char* const m_end;
    const double m_arcTolerance;
    PathData m_data;
    double m_arguments[7] = {};
    Point m_pen;          ///< Where the command starts.
    Point m_origin;       ///< What the coordinates of the command are added to.
    Point m_start;        ///< Of the subpath.
    Point m_penOffset;    ///< From the pen to where Ozmira's own reader has it.
    Point m_lastControl;  ///< The last control point of the command before, if it was a curve.
    char m_lastCurve = 0; ///< 'C', 'Q' or 0: what the command before drew.
    bool m_hasMoved = false;
    PathData::LeftOut* m_leftOut = nullptr; ///< The commands of which the one before is.
    bool m_isAfterCubic = false;            ///< The last command that is not left out drew a cubic curve.
};

/// Compares segment by segment what is drawn with what Ozmira's own reader made of the text.
class SameDrawing {
public:
    SameDrawing(const Path& path, double tolerance) : m_segments(path), m_tolerance(tolerance) {}

    bool With(const ozm::Path& other) {
        for (const ozm::PathCommand& command : other.commands) {
            if (!IsNext(command)) return false;
        }
        Segment segment;
        return !m_segments.Next(segment);
    }

private:
    bool IsNext(const ozm::PathCommand& command) {
        switch (command.type) {
        case ozm::PathCommand::Type::MoveTo: return IsNext(Verb::Move, {command.point});
        case ozm::PathCommand::Type::ClosePath:
            // Closing twice draws nothing more, and the path does not repeat it.
            return m_lastVerb == Verb::Close || IsNext(Verb::Close, {});
        case ozm::PathCommand::Type::LineTo:
            return std::all_of(command.points.begin(), command.points.end(),
                               [&](auto p) { return IsNext(Verb::Line, {p}); });
        case ozm::PathCommand::Type::CurveTo:
            return std::all_of(command.curves.begin(), command.curves.end(), [&](const BezierCurve& c) {
                return IsNext(Verb::Cubic, {c.control1, c.control2, c.end});
            });
        default: return false;
        }
    }

    bool IsNext(Verb verb, std::initializer_list<TVec2<double>> points) {
        Segment segment;
        if (!m_segments.Next(segment)) return false;
        // Drawing after a close begins a subpath in both; only one of them says so.
        if (segment.verb == Verb::Move && verb != Verb::Move && !m_segments.Next(segment)) return false;
        if (segment.verb != verb) return false;
        m_lastVerb = verb;
        const Point* p = segment.points + (verb == Verb::Move ? 0 : 1);
        return std::all_of(points.begin(), points.end(), [&](TVec2<double> other) {
            return Distance(*p++, {other.x, other.y}) <= m_tolerance;
        });
    }

    Segments m_segments;
    Verb m_lastVerb = Verb::Move;
    const double m_tolerance;
};

} // namespace

std::optional<size_t> PathData::FirstPenOffset(double tolerance) const {
    const auto found = std::find_if(penOffsets.begin(), penOffsets.end(),
                                    [&](const PenOffset& place) { return place.distance > tolerance; });
    if (found == penOffsets.end()) return {};
    return found->offset;
}

PathData ReadPath(std::string_view text, double arcTolerance) {
    return PathDataReader(text, arcTolerance).Read();
}

bool DrawsTheSame(const PathData& data, std::string_view text, double tolerance) {
    if (data.arcs.Seen(tolerance) || data.quadratics.Seen(tolerance) || data.FirstPenOffset(tolerance))
        return false;
    if (!data.error) return true;
    ozm::Path path;
    SVGParser().ParsePathData(text, path);
    return SameDrawing(data.path, tolerance).With(path);
}

PointList ReadPoints(std::string_view text) {
    PointList list;
    const char* p = text.data();
    const char* const end = p + text.size();
    SkipSpaces(p, end);
    double x = 0;
    while (p != end) {
        double number = 0;
        if (!ReadNumber(p, end, number)) {
            list.error = static_cast<size_t>(p - text.data());
            break;
        }
        SkipSpacesAndComma(p, end);
        if (list.isOdd) list.points.push_back({x, number});
        x = number;
        list.isOdd = !list.isOdd;
    }
    return list;
}

} // namespace ozm::conform
