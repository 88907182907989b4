#include <Ozmira/SVG/ozmSVGParser.h>

#include "ozmNumberReader.h"

#include <algorithm>
#include <span>

namespace ozm {
namespace {

using Point = TVec2<double>;

/// A command as it is written: its letter and how many numbers follow it.
struct CommandRecord {
    char letter;
    size_t argumentCount;
};

/// Path data cut into commands, with the numbers of all of them in one list.
struct PathData {
    std::vector<CommandRecord> records;
    std::vector<double> arguments;
};

bool IsCommandLetter(char c) {
    return std::string_view("ACHLMQSTVZachlmqstvz").find(c) != std::string_view::npos;
}

/// Cuts up to the first character that cannot begin a command.
PathData CutIntoCommands(StringView text) {
    PathData data;
    const char* const end = text.end();
    const char* at = SkipWhitespace(text.begin(), end);
    while (at != end && IsCommandLetter(*at)) {
        const char letter = *at++;
        const size_t first = data.arguments.size();
        double number;
        while (const char* const next = ReadScientificNumber(at, end, number)) {
            data.arguments.push_back(number);
            at = SkipSeparator(next, end);
        }
        data.records.push_back({letter, data.arguments.size() - first});
        at = SkipWhitespace(at, end);
    }
    return data;
}

/// Resolves commands against a running current point and appends what they draw.
class PathResolver {
public:
    explicit PathResolver(Path& path) : m_commands(path.commands) {}

    /// `letter` is the command's letter in upper case.
    void Append(char letter, bool isRelative, std::span<const double> arguments) {
        m_isRelative = isRelative;
        switch (letter) {
        case 'M': return AppendMove(arguments);
        case 'L': return AppendLines(arguments);
        case 'H': return AppendHorizontalLines(arguments);
        case 'V': return AppendVerticalLines(arguments);
        case 'C': return AppendCurves(arguments);
        case 'S': return AppendSmoothCurves(arguments);
        case 'Z': m_commands.emplace_back(PathCommand::Type::ClosePath); return;
        default: return; // Arcs and quadratic curves.
        }
    }

private:
    static bool IsMultiple(std::span<const double> arguments, size_t group) {
        return !arguments.empty() && arguments.size() % group == 0;
    }

    Point PointAt(std::span<const double> arguments, size_t index) const {
        const Point point{arguments[index], arguments[index + 1]};
        return m_isRelative ? Point{m_current.x + point.x, m_current.y + point.y} : point;
    }

    std::vector<Point>& AppendLineTo(size_t count) {
        std::vector<Point>& points = m_commands.emplace_back(PathCommand::Type::LineTo).points;
        points.reserve(count);
        return points;
    }

    void AppendMove(std::span<const double> arguments) {
        if (!IsMultiple(arguments, 2)) return;
        m_current = PointAt(arguments, 0);
        m_commands.emplace_back(PathCommand::Type::MoveTo).point = m_current;
        for (size_t i = 2; i < arguments.size(); i += 2) {
            m_current = PointAt(arguments, i);
            AppendLineTo(1).push_back(m_current);
        }
    }

    void AppendLines(std::span<const double> arguments) {
        if (!IsMultiple(arguments, 2)) return;
        std::vector<Point>& points = AppendLineTo(arguments.size() / 2);
        for (size_t i = 0; i < arguments.size(); i += 2) {
            m_current = PointAt(arguments, i);
            points.push_back(m_current);
        }
    }

    void AppendHorizontalLines(std::span<const double> arguments) {
        std::vector<Point>& points = AppendLineTo(arguments.size());
        for (const double x : arguments) {
            m_current.x = m_isRelative ? m_current.x + x : x;
            points.push_back(m_current);
        }
    }

    void AppendVerticalLines(std::span<const double> arguments) {
        std::vector<Point>& points = AppendLineTo(arguments.size());
        for (const double y : arguments) {
            m_current.y = m_isRelative ? m_current.y + y : y;
            points.push_back(m_current);
        }
    }

    void AppendCurves(std::span<const double> arguments) {
        if (!IsMultiple(arguments, 6)) return;
        std::vector<BezierCurve>& curves = m_commands.emplace_back(PathCommand::Type::CurveTo).curves;
        curves.reserve(arguments.size() / 6);
        for (size_t i = 0; i < arguments.size(); i += 6) {
            curves.push_back({PointAt(arguments, i + 4), PointAt(arguments, i), PointAt(arguments, i + 2)});
            m_current = curves.back().end;
        }
    }

    void AppendSmoothCurves(std::span<const double> arguments) {
        if (!IsMultiple(arguments, 4)) return;
        Point control1 = m_current;
        if (!m_commands.empty() && m_commands.back().type == PathCommand::Type::CurveTo &&
            !m_commands.back().curves.empty()) {
            control1 = Reflect(m_commands.back().curves.back().control2);
        }
        std::vector<BezierCurve>& curves = m_commands.emplace_back(PathCommand::Type::CurveTo).curves;
        curves.reserve(arguments.size() / 4);
        for (size_t i = 0; i < arguments.size(); i += 4) {
            curves.push_back({PointAt(arguments, i + 2), control1, PointAt(arguments, i)});
            m_current = curves.back().end;
            control1 = Reflect(curves.back().control2);
        }
    }

    Point Reflect(Point point) const { return {2 * m_current.x - point.x, 2 * m_current.y - point.y}; }

    std::vector<PathCommand>& m_commands;
    Point m_current{0, 0};
    bool m_isRelative = false;
};

} // namespace

bool SVGParser::PathCommandIsRelative(char letter) const {
    static constexpr std::string_view relativeCommands = "mzlhvcsqta";
    return relativeCommands.find(letter) != std::string_view::npos;
}

void SVGParser::ParsePathData(StringView text, Path& path) {
    const PathData data = CutIntoCommands(text);
    path.commands.reserve(path.commands.size() + data.records.size());
    PathResolver resolver(path);
    std::span<const double> rest(data.arguments);
    for (const auto& [letter, count] : data.records) {
        const bool isRelative = PathCommandIsRelative(letter);
        resolver.Append(isRelative ? static_cast<char>(letter - 'a' + 'A') : letter, isRelative,
                        rest.first(count));
        rest = rest.subspan(count);
    }
}

std::vector<double> SVGParser::ParsePathCommandArguments(StringView text) {
    const auto isSeparator = [](char c) {
        return c == ' ' || c == ',' || c == '\t' || c == '\n' || c == '\r';
    };
    std::vector<double> numbers;
    const char* at = text.begin();
    const char* const end = text.end();
    double number;
    while (const char* const next = ReadScientificNumber(at, end, number)) {
        numbers.push_back(number);
        at = std::find_if_not(next, end, isSeparator);
    }
    return numbers;
}

int64_t SVGParser::ProcessPathNode(const XMLNode& node) {
    StringView data;
    if (!node.FindAttribute("d", data)) return -1;
    const uint64_t index = AddElement(Element::Type::Path);
    ParsePathData(data, document->elements[index].path);
    ProcessCommonAttributes(index, node);
    return static_cast<int64_t>(index);
}

} // namespace ozm
