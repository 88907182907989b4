#include <Ozmira/SVG/ozmSVGParser.h>

#include "ozmListNumberReader.h"

#include <algorithm>
#include <iterator>

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

/// At least as many as there are letters: counts the characters from 64 to 127 and from 192 on.
size_t CountLetters(StringView text) {
    constexpr uint64_t kEveryByte = 0x0101010101010101, kEverySecondByte = 0x00FF00FF00FF00FF;
    constexpr uint64_t kEveryFourthByte = 0x0001000100010001;
    const char* at = text.begin();
    size_t count = 0;
    while (text.end() - at >= 8) {
        // Eight sums, each of which fits into its byte.
        const auto blocks = std::min<size_t>(static_cast<size_t>(text.end() - at) / 8, 255);
        const char* const end = at + 8 * blocks;
        uint64_t sums = 0;
        for (; at != end; at += 8) sums += (LoadEightCharacters(at) >> 6) & kEveryByte;
        sums = (sums & kEverySecondByte) + ((sums >> 8) & kEverySecondByte);
        count += (sums * kEveryFourthByte) >> 48;
    }
    for (; at != text.end(); ++at) count += (*at >> 6) & 1;
    return count;
}

/// Room for the numbers of one command. Nearly always they fit in place.
class ArgumentList {
public:
    size_t Count() const { return m_count; }
    double operator[](size_t index) const { return m_first[index]; }
    void Clear() { m_count = 0; }

    /// Room for `count` numbers behind the last one; `Grow` makes them part of the list.
    double* Reserve(size_t count) {
        if (m_capacity - m_count < count) MoveToHeap();
        return m_first + m_count;
    }
    void Grow(size_t count) { m_count += count; }

private:
    void MoveToHeap() {
        std::vector<double> larger(2 * m_capacity);
        std::copy_n(m_first, m_count, larger.begin());
        m_heap = std::move(larger);
        m_first = m_heap.data();
        m_capacity = m_heap.size();
    }

    double m_inPlace[64];
    double* m_first = m_inPlace;
    size_t m_count = 0;
    size_t m_capacity = std::size(m_inPlace);
    std::vector<double> m_heap;
};

/// Reads path data command by command, resolves each against the running current point and appends what it
/// draws.
class PathDataReader {
public:
    PathDataReader(StringView text, std::vector<PathCommand>& commands)
        : m_at(text.begin()), m_end(text.end()), m_commands(commands) {}

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
    /// command has a loop of its own, a group long, because then the branch that ends it is seldom
    /// mispredicted.
    template <size_t GroupSize>
    bool ReadArguments() {
        m_arguments.Clear();
        const char* at = SkipWhitespace(m_at, m_end);
        for (;;) {
            double* const group = m_arguments.Reserve(GroupSize);
            for (size_t i = 0; i < GroupSize; ++i) {
                const bool isOver = i == 0 && (at == m_end || IsLetter(*at));
                const char* const next =
                    isOver ? nullptr : ReadListNumber(at, m_end, group[i], SkipSeparator);
                if (!next) {
                    m_at = at;
                    return i == 0 && m_arguments.Count() != 0;
                }
                at = next;
            }
            m_arguments.Grow(GroupSize);
        }
    }

    /// What the coordinates of a group are relative to. Adding -0 leaves every number as it is, -0 included.
    Point Origin() const { return m_isRelative ? m_current : Point{-0.0, -0.0}; }

    Point PointAt(size_t index, Point origin) const {
        return {origin.x + m_arguments[index], origin.y + m_arguments[index + 1]};
    }

    /// A new command of `count` points that are still to be set.
    Point* AppendLineTo(size_t count) {
        return m_commands.emplace_back(std::vector<Point>(count)).points.data();
    }

    BezierCurve* AppendCurveTo(size_t count) {
        return m_commands.emplace_back(std::vector<BezierCurve>(count)).curves.data();
    }

    void AppendMove() {
        m_current = PointAt(0, Origin());
        m_commands.emplace_back(PathCommand::Type::MoveTo).point = m_current;
        for (size_t i = 2; i < m_arguments.Count(); i += 2) {
            m_current = PointAt(i, Origin());
            *AppendLineTo(1) = m_current;
        }
    }

    void AppendLines() {
        Point* point = AppendLineTo(m_arguments.Count() / 2);
        for (size_t i = 0; i < m_arguments.Count(); i += 2) {
            m_current = PointAt(i, Origin());
            *point++ = m_current;
        }
    }

    void AppendHorizontalLines() {
        Point* point = AppendLineTo(m_arguments.Count());
        for (size_t i = 0; i < m_arguments.Count(); ++i) {
            m_current.x = Origin().x + m_arguments[i];
            *point++ = m_current;
        }
    }

    void AppendVerticalLines() {
        Point* point = AppendLineTo(m_arguments.Count());
        for (size_t i = 0; i < m_arguments.Count(); ++i) {
            m_current.y = Origin().y + m_arguments[i];
            *point++ = m_current;
        }
    }

    void AppendCurves() {
        BezierCurve* curve = AppendCurveTo(m_arguments.Count() / 6);
        for (size_t i = 0; i < m_arguments.Count(); i += 6) {
            const Point origin = Origin();
            m_current = PointAt(i + 4, origin);
            *curve++ = {m_current, PointAt(i, origin), PointAt(i + 2, origin)};
        }
    }

    void AppendSmoothCurves() {
        Point control1 = m_current;
        if (!m_commands.empty() && m_commands.back().type == PathCommand::Type::CurveTo &&
            !m_commands.back().curves.empty()) {
            control1 = Reflect(m_commands.back().curves.back().control2);
        }
        BezierCurve* curve = AppendCurveTo(m_arguments.Count() / 4);
        for (size_t i = 0; i < m_arguments.Count(); i += 4) {
            const Point origin = Origin();
            const Point control2 = PointAt(i, origin);
            m_current = PointAt(i + 2, origin);
            *curve++ = {m_current, control1, control2};
            control1 = Reflect(control2);
        }
    }

    Point Reflect(Point point) const { return {2 * m_current.x - point.x, 2 * m_current.y - point.y}; }

    const char* m_at;
    const char* const m_end;
    std::vector<PathCommand>& m_commands;
    ArgumentList m_arguments; ///< Of the command at hand.
    Point m_current{0, 0};
    bool m_isRelative = false;
};

} // namespace

bool SVGParser::PathCommandIsRelative(char letter) const {
    return relativeCommands.find(letter) != std::string_view::npos;
}

void SVGParser::ParsePathData(StringView text, Path& path) {
    // An estimate, because letters may also be exponents or lie behind a fault: there it must not cost
    // memory.
    constexpr size_t kLargestReserve = 1 << 16;
    if (path.commands.capacity() == 0) path.commands.reserve(std::min(CountLetters(text), kLargestReserve));
    PathDataReader(text, path.commands).ReadCommands();
}

std::vector<double> SVGParser::ParsePathCommandArguments(StringView text) {
    const auto skipSeparators = [](const char* at, const char* end) {
        return std::find_if_not(
            at, end, [](char c) { return c == ' ' || c == ',' || c == '\t' || c == '\n' || c == '\r'; });
    };
    constexpr size_t kFirstReserve = 64;
    std::vector<double> numbers;
    numbers.reserve(std::min(text.length / 2 + 1, kFirstReserve));
    const char* at = text.begin();
    double number;
    while ((at = ReadListNumber(at, text.end(), number, skipSeparators))) numbers.push_back(number);
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
