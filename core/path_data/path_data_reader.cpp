#include "path_data/path_data_reader.h"

#include "numbers/list_number_reader.h"
#include "path_data/argument_list.h"
#include "path_data/command_letters.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <utility>

namespace ozm {
namespace {

using Point = TVec2<double>;

/// How many arguments each segment of a command takes.
template <size_t Size>
struct GroupSize {};

enum class SegmentKind : uint8_t { Line, Curve, Move, Close };

/// How a command of a single segment gets its end.
struct SingleSegment {
    size_t argumentCount; ///< `SIZE_MAX` for commands of another kind.
    SegmentKind kind;
    // Of lines.
    bool keepsX, keepsY;  ///< The coordinate stays what it is.
    uint8_t xFrom, yFrom; ///< The argument for it, counted from 1. 0 where there is none.
};

/// By the last five bits of a command's letter.
constexpr auto kSingleSegments = [] {
    std::array<SingleSegment, 32> segments{};
    for (SingleSegment& segment : segments) segment.argumentCount = SIZE_MAX;
    segments['c' % 32] = {6, SegmentKind::Curve, false, false, 0, 0};
    segments['h' % 32] = {1, SegmentKind::Line, false, true, 1, 0};
    segments['l' % 32] = {2, SegmentKind::Line, false, false, 1, 2};
    segments['m' % 32] = {2, SegmentKind::Move, false, false, 0, 0};
    segments['v' % 32] = {1, SegmentKind::Line, true, false, 0, 1};
    segments['z' % 32] = {0, SegmentKind::Close, false, false, 0, 0};
    return segments;
}();

/// Reads path data command by command, resolves each against the running current point and appends what it
/// draws.
class PathDataReader {
public:
    PathDataReader(StringView text, std::vector<PathCommand>& commands)
        : m_at(text.begin()), m_end(text.end()), m_commands(commands) {}

    /// Stops at the first character that cannot begin a command. Reads in blocks if there is a scanner.
    void ReadCommands(const PathDataScanner* scanner) {
        // Much of a text that is irregular all over would be read twice.
        int shortReadsLeft = 4;
        for (;;) {
            m_at = SkipWhitespace(m_at, m_end);
            if (m_at == m_end || !IsCommandLetter(*m_at)) return;
            m_arguments.Clear();
            if (scanner) {
                const char* const first = m_at;
                ReadBlocks(*scanner);
                if (m_at == m_end) return;
                m_arguments.Clear();
                const bool isShort = static_cast<size_t>(m_at - first) < kPathDataBlockSize;
                if (isShort && --shortReadsLeft == 0) scanner = nullptr;
            }
            AppendCommand(*m_at++, [this](auto groupSize) { return ReadArguments(groupSize); });
        }
    }

private:
    using Arguments = std::span<const double>;

    /// Reads commands, the one at hand first, up to the end of the text or a command that is not regular.
    void ReadBlocks(const PathDataScanner& scanner) {
        const char* at = m_at + 1;
        char letter = *m_at;
        static_assert(kPathDataBlockNumbers <= ArgumentList::kLargestReserve);
        while (at != m_end) {
            PathDataBlock block;
            double* const numbers = m_arguments.Reserve(kPathDataBlockNumbers);
            scanner.scan(at, m_end, block, numbers);
            double* first = m_arguments.First();
            for (size_t i = 0; i < block.letterCount; ++i) {
                double* const end = numbers + block.numbersBefore[i];
                AppendRegularCommand(letter, {std::exchange(first, end), end});
                letter = at[block.letterAt[i]];
            }
            if (block.letterCount != 0) m_at = at + block.letterAt[block.letterCount - 1];
            if (block.irregular != kPathDataBlockSize || block.size == 0) return;
            m_arguments.DropTo(first);
            m_arguments.GrowTo(numbers + block.numberCount);
            at += block.size;
        }
        AppendRegularCommand(letter, m_arguments.TakeAll());
        m_at = m_end;
    }

    /// Nearly all commands are of a single segment, and their kinds take turns, so that branches between them
    /// are often mispredicted: here is only one.
    void AppendRegularCommand(char letter, Arguments arguments) {
        const SingleSegment& single = kSingleSegments[static_cast<size_t>(letter) % 32];
        if (arguments.size() != single.argumentCount) return AppendGroups(letter, arguments);
        const double* const at = arguments.data();
        const size_t isRelative = letter >= 'a';
        switch (single.kind) {
        case SegmentKind::Line: {
            static constexpr double kNothing = -0.0;
            const double* const sources[] = {&kNothing, at, at + 1};
            Current() = {m_origins[isRelative | single.keepsX].x + *sources[single.xFrom],
                         m_origins[isRelative | single.keepsY].y + *sources[single.yFrom]};
            m_commands.emplace_back(std::vector<Point>(1, Current()));
            return;
        }
        case SegmentKind::Curve:
            m_commands.emplace_back(std::vector<BezierCurve>(1, CurveAt(at, m_origins[isRelative])));
            return;
        case SegmentKind::Move:
            Current() = PointAt(at, m_origins[isRelative]);
            m_commands.emplace_back(PathCommand::Type::MoveTo).point = Current();
            return;
        case SegmentKind::Close: m_commands.emplace_back(PathCommand::Type::ClosePath); return;
        }
    }

    [[gnu::noinline]] void AppendGroups(char letter, Arguments arguments) {
        AppendCommand(letter, [arguments]<size_t Size>(GroupSize<Size>) {
            return arguments.size() % Size == 0 ? arguments : Arguments();
        });
    }

    /// `getArguments(GroupSize<Size>())` gives whole groups or nothing.
    template <typename GetArguments>
    void AppendCommand(char letter, GetArguments getArguments) {
        m_isRelative = letter >= 'a';
        switch (letter | 0x20) {
        case 'm': AppendMove(getArguments(GroupSize<2>())); break;
        case 'l': AppendLines(getArguments(GroupSize<2>())); break;
        case 'h': AppendHorizontalLines(getArguments(GroupSize<1>())); break;
        case 'v': AppendVerticalLines(getArguments(GroupSize<1>())); break;
        case 'c': AppendCurves(getArguments(GroupSize<6>())); break;
        case 's': AppendSmoothCurves(getArguments(GroupSize<4>())); break;
        case 'z':
            getArguments(GroupSize<1>());
            m_commands.emplace_back(PathCommand::Type::ClosePath);
            break;
        default: getArguments(GroupSize<1>()); // Arcs and quadratic curves draw nothing.
        }
    }

    /// Reads all numbers behind a command's letter. Each kind of command has a loop of its own, a group long,
    /// because then the branch that ends it is seldom mispredicted.
    template <size_t Size>
    Arguments ReadArguments(GroupSize<Size>) {
        const char* at = SkipWhitespace(m_at, m_end);
        for (;;) {
            double* const group = m_arguments.Reserve(Size);
            for (size_t i = 0; i < Size; ++i) {
                const bool isOver = i == 0 && (at == m_end || IsLetter(*at));
                const char* const next =
                    isOver ? nullptr : ReadListNumber(at, m_end, group[i], SkipSeparator);
                if (!next) {
                    m_at = at;
                    return i == 0 ? m_arguments.TakeAll() : Arguments();
                }
                at = next;
            }
            m_arguments.GrowTo(group + Size);
        }
    }

    Point& Current() { return m_origins[1]; }
    Point Origin() const { return m_origins[m_isRelative]; }

    static Point PointAt(const double* coordinates, Point origin) {
        return {origin.x + coordinates[0], origin.y + coordinates[1]};
    }

    BezierCurve CurveAt(const double* coordinates, Point origin) {
        const BezierCurve curve = {PointAt(coordinates + 4, origin), PointAt(coordinates, origin),
                                   PointAt(coordinates + 2, origin)};
        Current() = curve.end;
        return curve;
    }

    /// A new command of `count` points that are still to be set.
    Point* AppendLineTo(size_t count) {
        return m_commands.emplace_back(std::vector<Point>(count)).points.data();
    }

    BezierCurve* AppendCurveTo(size_t count) {
        return m_commands.emplace_back(std::vector<BezierCurve>(count)).curves.data();
    }

    void AppendMove(Arguments arguments) {
        if (arguments.empty()) return;
        Current() = PointAt(&arguments[0], Origin());
        m_commands.emplace_back(PathCommand::Type::MoveTo).point = Current();
        for (size_t i = 2; i < arguments.size(); i += 2) {
            Current() = PointAt(&arguments[i], Origin());
            *AppendLineTo(1) = Current();
        }
    }

    void AppendLines(Arguments arguments) {
        if (arguments.empty()) return;
        Point* point = AppendLineTo(arguments.size() / 2);
        for (size_t i = 0; i < arguments.size(); i += 2) {
            Current() = PointAt(&arguments[i], Origin());
            *point++ = Current();
        }
    }

    void AppendHorizontalLines(Arguments arguments) {
        Point* point = AppendLineTo(arguments.size());
        for (const double x : arguments) {
            Current().x = Origin().x + x;
            *point++ = Current();
        }
    }

    void AppendVerticalLines(Arguments arguments) {
        Point* point = AppendLineTo(arguments.size());
        for (const double y : arguments) {
            Current().y = Origin().y + y;
            *point++ = Current();
        }
    }

    void AppendCurves(Arguments arguments) {
        if (arguments.empty()) return;
        BezierCurve* curve = AppendCurveTo(arguments.size() / 6);
        for (size_t i = 0; i < arguments.size(); i += 6) *curve++ = CurveAt(&arguments[i], Origin());
    }

    void AppendSmoothCurves(Arguments arguments) {
        if (arguments.empty()) return;
        Point control1 = Current();
        if (!m_commands.empty() && m_commands.back().type == PathCommand::Type::CurveTo &&
            !m_commands.back().curves.empty()) {
            control1 = Reflect(m_commands.back().curves.back().control2);
        }
        BezierCurve* curve = AppendCurveTo(arguments.size() / 4);
        for (size_t i = 0; i < arguments.size(); i += 4) {
            const Point origin = Origin();
            const Point control2 = PointAt(&arguments[i], origin);
            Current() = PointAt(&arguments[i + 2], origin);
            *curve++ = {Current(), control1, control2};
            control1 = Reflect(control2);
        }
    }

    Point Reflect(Point point) { return {2 * Current().x - point.x, 2 * Current().y - point.y}; }

    const char* m_at;
    const char* const m_end;
    std::vector<PathCommand>& m_commands;
    ArgumentList m_arguments; ///< Of the command at hand, and of those behind it in its block.
    /// What coordinates are relative to: nothing, and the current point. Adding -0 leaves every number as it
    /// is, -0 included.
    Point m_origins[2] = {{-0.0, -0.0}, {0, 0}};
    bool m_isRelative = false;
};

} // namespace

const PathDataScanner* ChoosePathDataScanner(std::span<const PathDataScanner* const> scanners, size_t length,
                                             size_t readableBehind) {
    for (const PathDataScanner* const scanner : scanners) {
        if (length >= scanner->leastText && readableBehind >= scanner->overrun) return scanner;
    }
    return nullptr;
}

void ReadPathData(StringView text, std::vector<PathCommand>& commands, const PathDataScanner* scanner) {
    if (commands.capacity() == 0) {
        // An estimate, because letters may also be exponents or lie behind a fault: there it must not cost
        // memory.
        constexpr size_t kLargestReserve = 1 << 16;
        const size_t letters = scanner ? scanner->countLetters(text) : CountPathDataLetters(text);
        commands.reserve(std::min(letters, kLargestReserve));
    }
    PathDataReader(text, commands).ReadCommands(scanner);
}

} // namespace ozm
