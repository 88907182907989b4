#include <Ozmira/SVG/ozmSVGParser.h>

#include "ozmNumberReader.h"

#include <algorithm>

namespace ozm {
namespace {

using Point = TVec2<double>;

constexpr std::string_view relativeCommands = "mzlhvcsqta";

constexpr bool IsLetter(char c) { return static_cast<unsigned char>((c | 0x20) - 'a') < 26; }

/// True for the letters of `relativeCommands` in either case.
constexpr bool IsCommandLetter(char c) {
    constexpr uint32_t kCommands = [] {
        uint32_t bits = 0;
        for (const char letter : relativeCommands) bits |= uint32_t{1} << (letter - 'a');
        return bits;
    }();
    return IsLetter(c) && ((kCommands >> ((c | 0x20) - 'a')) & 1) != 0;
}

/// At least as many as there are letters.
size_t CountLetters(StringView text) {
    size_t count = 0;
    for (const char* block = text.begin(); block != text.end();) {
        // Counts that fit into a byte are added up a vector at a time.
        const char* const end = text.end() - block > 255 ? block + 255 : text.end();
        uint8_t blockCount = 0;
        for (; block != end; ++block) blockCount = static_cast<uint8_t>(blockCount + ((*block >> 6) & 1));
        count += blockCount;
    }
    return count;
}

/// Reads path data command by command, resolves each against the running current point and appends what it
/// draws.
class PathDataReader {
public:
    PathDataReader(StringView text, std::vector<PathCommand>& commands)
        : m_at(text.begin()), m_end(text.end()), m_commands(commands) {
        m_arguments.reserve(64);
    }

    /// Stops at the first character that cannot begin a command.
    void ReadCommands() {
        for (;;) {
            m_at = SkipWhitespace(m_at, m_end);
            if (m_at == m_end || !IsCommandLetter(*m_at)) return;
            ReadCommand(*m_at++);
        }
    }

private:
    void ReadCommand(char letter) {
        m_isRelative = letter >= 'a';
        switch (letter | 0x20) {
        case 'm':
            if (ReadArguments<2>()) AppendMove();
            break;
        case 'l':
            if (ReadArguments<2>()) AppendLines();
            break;
        case 'h':
            ReadArguments<1>();
            AppendHorizontalLines();
            break;
        case 'v':
            ReadArguments<1>();
            AppendVerticalLines();
            break;
        case 'c':
            if (ReadArguments<6>()) AppendCurves();
            break;
        case 's':
            if (ReadArguments<4>()) AppendSmoothCurves();
            break;
        case 'z':
            ReadArguments<1>();
            m_commands.emplace_back(PathCommand::Type::ClosePath);
            break;
        default: ReadArguments<1>(); // Arcs and quadratic curves draw nothing.
        }
    }

    /// Reads all numbers behind a command's letter. True for a positive multiple of `GroupSize`. Each kind of
    /// command has a loop of its own, a group long, because then the branch that ends it is seldom mispredicted.
    template <size_t GroupSize>
    bool ReadArguments() {
        m_arguments.clear();
        const char* at = SkipWhitespace(m_at, m_end);
        for (;;) {
            for (size_t i = 0; i < GroupSize; ++i) {
                double number;
                const char* next = nullptr;
                if (at != m_end && !IsLetter(*at)) next = ReadScientificNumber(at, m_end, number);
                if (!next) {
                    m_at = at;
                    return i == 0 && !m_arguments.empty();
                }
                m_arguments.push_back(number);
                at = SkipSeparator(next, m_end);
            }
        }
    }

    Point PointAt(size_t index) const {
        const Point point{m_arguments[index], m_arguments[index + 1]};
        return m_isRelative ? Point{m_current.x + point.x, m_current.y + point.y} : point;
    }

    std::vector<Point>& AppendLineTo(size_t count) {
        std::vector<Point>& points = m_commands.emplace_back(PathCommand::Type::LineTo).points;
        points.reserve(count);
        return points;
    }

    void AppendMove() {
        m_current = PointAt(0);
        m_commands.emplace_back(PathCommand::Type::MoveTo).point = m_current;
        for (size_t i = 2; i < m_arguments.size(); i += 2) {
            m_current = PointAt(i);
            AppendLineTo(1).push_back(m_current);
        }
    }

    void AppendLines() {
        std::vector<Point>& points = AppendLineTo(m_arguments.size() / 2);
        for (size_t i = 0; i < m_arguments.size(); i += 2) {
            m_current = PointAt(i);
            points.push_back(m_current);
        }
    }

    void AppendHorizontalLines() {
        std::vector<Point>& points = AppendLineTo(m_arguments.size());
        for (const double x : m_arguments) {
            m_current.x = m_isRelative ? m_current.x + x : x;
            points.push_back(m_current);
        }
    }

    void AppendVerticalLines() {
        std::vector<Point>& points = AppendLineTo(m_arguments.size());
        for (const double y : m_arguments) {
            m_current.y = m_isRelative ? m_current.y + y : y;
            points.push_back(m_current);
        }
    }

    void AppendCurves() {
        std::vector<BezierCurve>& curves = m_commands.emplace_back(PathCommand::Type::CurveTo).curves;
        curves.reserve(m_arguments.size() / 6);
        for (size_t i = 0; i < m_arguments.size(); i += 6) {
            curves.push_back({PointAt(i + 4), PointAt(i), PointAt(i + 2)});
            m_current = curves.back().end;
        }
    }

    void AppendSmoothCurves() {
        Point control1 = m_current;
        if (!m_commands.empty() && m_commands.back().type == PathCommand::Type::CurveTo &&
            !m_commands.back().curves.empty()) {
            control1 = Reflect(m_commands.back().curves.back().control2);
        }
        std::vector<BezierCurve>& curves = m_commands.emplace_back(PathCommand::Type::CurveTo).curves;
        curves.reserve(m_arguments.size() / 4);
        for (size_t i = 0; i < m_arguments.size(); i += 4) {
            curves.push_back({PointAt(i + 2), control1, PointAt(i)});
            m_current = curves.back().end;
            control1 = Reflect(curves.back().control2);
        }
    }

    Point Reflect(Point point) const { return {2 * m_current.x - point.x, 2 * m_current.y - point.y}; }

    const char* m_at;
    const char* const m_end;
    std::vector<PathCommand>& m_commands;
    std::vector<double> m_arguments; ///< Of the command at hand.
    Point m_current{0, 0};
    bool m_isRelative = false;
};

} // namespace

bool SVGParser::PathCommandIsRelative(char letter) const {
    return relativeCommands.find(letter) != std::string_view::npos;
}

void SVGParser::ParsePathData(StringView text, Path& path) {
    path.commands.reserve(path.commands.size() + CountLetters(text));
    PathDataReader(text, path.commands).ReadCommands();
}

std::vector<double> SVGParser::ParsePathCommandArguments(StringView text) {
    const auto isSeparator = [](char c) { return c == ' ' || c == ',' || c == '\t' || c == '\n' || c == '\r'; };
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
