#include "path_data/path_data_reader.h"

#include "numbers/list_number_reader.h"
#include "path_data/argument_list.h"
#include "path_data/command_letters.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace ozm {
namespace {

using Point = TVec2<double>;

/// What a path command draws.
enum class Drawing : uint8_t { Nothing, Move, Line, Curve, SmoothCurve, Close };

/// The point to which coordinates are relative.
enum Origin : uint8_t { kZero, kCurrentPoint };

/// A coordinate of the end of a line: the sum of a coordinate of a point and of an argument.
struct CoordinateSource {
    Origin origin;
    uint8_t argument; ///< The index of the argument, or `kNoArgument` to add none.
};
constexpr uint8_t kNoArgument = 2;

/// The meaning of a path command.
struct CommandRule {
    Drawing drawing = Drawing::Nothing;
    uint8_t argumentCount = 0; ///< Number of arguments per segment.
    bool mayBeEmpty = false;   ///< Without arguments, the command draws an empty line instead of nothing.
    Origin origin = kZero;
    CoordinateSource x{}, y{}; ///< For lines.
};

constexpr size_t RuleIndex(char letter) { return static_cast<size_t>(letter) % 64; }

/// Indexed by `RuleIndex` of a command's letter. Arcs and quadratic curves draw nothing.
constexpr auto kCommandRules = [] {
    std::array<CommandRule, 64> rules{};
    for (const Origin origin : {kZero, kCurrentPoint}) {
        const auto add = [&](char letter, Drawing drawing, uint8_t argumentCount) -> CommandRule& {
            CommandRule& rule = rules[RuleIndex(origin == kCurrentPoint ? letter : letter ^ 0x20)];
            return rule = {drawing, argumentCount, false, origin, {origin, 0}, {origin, 1}};
        };
        add('m', Drawing::Move, 2);
        add('l', Drawing::Line, 2);
        CommandRule& horizontal = add('h', Drawing::Line, 1);
        horizontal.mayBeEmpty = true;
        horizontal.y = {kCurrentPoint, kNoArgument};
        CommandRule& vertical = add('v', Drawing::Line, 1);
        vertical.mayBeEmpty = true;
        vertical.x = {kCurrentPoint, kNoArgument};
        vertical.y.argument = 0;
        add('c', Drawing::Curve, 6);
        add('s', Drawing::SmoothCurve, 4);
        add('z', Drawing::Close, 0);
    }
    return rules;
}();

/// Reads path data command by command, converts coordinates to absolute ones and appends what each command
/// draws.
class PathDataReader {
public:
    PathDataReader(StringView text, std::vector<PathCommand>& commands)
        : m_at(text.begin()), m_end(text.end()), m_commands(commands) {}

    /// Reads up to the first character that cannot begin a command. Uses the scanner unless it is null.
    void ReadCommands(const PathDataScanner* scanner) {
        // An irregular command is read twice, first in blocks and then number by number. In a text with many
        // of them the scanner is soon given up.
        int uselessBlocksLeft = 4;
        for (;;) {
            m_at = SkipWhitespace(m_at, m_end);
            if (m_at == m_end || !IsCommandLetter(*m_at)) return;
            m_arguments.Clear();
            bool areArgumentsRead = false;
            if (scanner) {
                const char* const first = m_at;
                areArgumentsRead = ReadBlocks(*scanner);
                const bool wasUseless = static_cast<size_t>(m_at - first) < kPathDataBlockSize;
                if (wasUseless && --uselessBlocksLeft == 0) scanner = nullptr;
            }
            const char letter = *m_at++;
            if (areArgumentsRead) {
                m_at = m_end;
            } else {
                m_arguments.Clear();
                ReadArguments();
            }
            AppendCommand(letter, m_arguments.TakeAll());
        }
    }

private:
    using Arguments = std::span<const double>;

    /// Reads commands in blocks, starting with the one at `m_at`. Returns true at the end of the text, when
    /// `m_at` is at the last command and its arguments are in `m_arguments`. Returns false at a command with
    /// an irregular character, when `m_at` is at that command.
    bool ReadBlocks(const PathDataScanner& scanner) {
        const char* at = m_at + 1;
        char letter = *m_at;
        static_assert(kPathDataBlockNumbers <= ArgumentList::kMaxReserve);
        while (at != m_end) {
            PathDataBlock block;
            double* const numbers = m_arguments.Reserve(kPathDataBlockNumbers);
            scanner.scan(at, m_end, block, numbers);
            double* first = m_arguments.First();
            for (size_t i = 0; i < block.letterCount; ++i) {
                double* const end = numbers + block.numbersBefore[i];
                AppendCommand(letter, {std::exchange(first, end), end});
                letter = at[block.letterOffsets[i]];
            }
            if (block.letterCount != 0) m_at = at + block.letterOffsets[block.letterCount - 1];
            if (block.irregular != kPathDataBlockSize || block.consumed == 0) return false;
            m_arguments.DropTo(first);
            m_arguments.GrowTo(numbers + block.numberCount);
            at += block.consumed;
        }
        return true;
    }

    /// Reads the numbers after a command's letter.
    void ReadArguments() {
        m_at = SkipWhitespace(m_at, m_end);
        while (m_at != m_end && !IsLetter(*m_at)) {
            double* const number = m_arguments.Reserve(1);
            const char* const next = ReadListNumber(m_at, m_end, *number, SkipSeparator);
            if (!next) break;
            m_arguments.GrowTo(number + 1);
            m_at = next;
        }
    }

    /// Appends what a command draws. Nearly all commands consist of one segment, and their types alternate,
    /// so that branches on the type are often mispredicted. Commands of one segment therefore take a single
    /// branch, and all kinds of lines share a case, which saves 7 % of parsing.
    [[gnu::always_inline]] void AppendCommand(char letter, Arguments arguments) {
        const CommandRule& rule = kCommandRules[RuleIndex(letter)];
        if (arguments.size() != rule.argumentCount) return AppendSegments(rule, arguments);
        const double* const segment = arguments.data();
        switch (rule.drawing) {
        case Drawing::Nothing: return;
        case Drawing::Move: AppendMoveTo(rule, segment); return;
        case Drawing::Line:
            m_commands.emplace_back(std::vector<Point>(1, ResolveLineEnd(rule, segment)));
            return;
        case Drawing::Curve:
            m_commands.emplace_back(std::vector<BezierCurve>(1, ResolveCurve(rule, segment)));
            return;
        case Drawing::SmoothCurve: AppendSmoothCurves(rule, arguments); return;
        case Drawing::Close: AppendClosePath(); return;
        }
    }

    /// Appends what a command draws that has any number of segments. Drops it if its last segment is
    /// incomplete.
    [[gnu::noinline]] void AppendSegments(const CommandRule& rule, Arguments arguments) {
        if (rule.drawing == Drawing::Nothing) return;
        if (rule.drawing == Drawing::Close) return AppendClosePath(); // Whatever its arguments.
        if (arguments.size() % rule.argumentCount != 0 || (arguments.empty() && !rule.mayBeEmpty)) return;
        switch (rule.drawing) {
        case Drawing::Move: AppendMoves(rule, arguments); return;
        case Drawing::Line: AppendLines(rule, arguments); return;
        case Drawing::Curve: AppendCurves(rule, arguments); return;
        case Drawing::SmoothCurve: AppendSmoothCurves(rule, arguments); return;
        case Drawing::Nothing:
        case Drawing::Close: return;
        }
    }

    Point& Current() { return m_origins[kCurrentPoint]; }

    Point ResolvePoint(const CommandRule& rule, const double* coordinates) const {
        const Point& origin = m_origins[rule.origin];
        return {origin.x + coordinates[0], origin.y + coordinates[1]};
    }

    /// Makes the end of a line the current point and returns it. Selects operands by pointers, because
    /// branches on horizontal, vertical and relative lines would often be mispredicted. Saves 3 % of parsing.
    Point ResolveLineEnd(const CommandRule& rule, const double* arguments) {
        static constexpr double kNothing = -0.0; // Adding -0 changes no number, not even -0.
        const double* const operands[] = {arguments, arguments + 1, &kNothing};
        static_assert(kNoArgument == 2);
        Current() = {m_origins[rule.x.origin].x + *operands[rule.x.argument],
                     m_origins[rule.y.origin].y + *operands[rule.y.argument]};
        return Current();
    }

    /// Returns a curve and makes its end the current point.
    BezierCurve ResolveCurve(const CommandRule& rule, const double* arguments) {
        const BezierCurve curve = {ResolvePoint(rule, arguments + 4), ResolvePoint(rule, arguments),
                                   ResolvePoint(rule, arguments + 2)};
        Current() = curve.end;
        return curve;
    }

    void AppendMoveTo(const CommandRule& rule, const double* arguments) {
        Current() = ResolvePoint(rule, arguments);
        m_commands.emplace_back(PathCommand::Type::MoveTo).point = Current();
    }

    void AppendClosePath() { m_commands.emplace_back(PathCommand::Type::ClosePath); }

    void AppendMoves(const CommandRule& rule, Arguments arguments) {
        AppendMoveTo(rule, arguments.data());
        for (size_t i = 2; i < arguments.size(); i += 2) AppendLines(rule, arguments.subspan(i, 2));
    }

    void AppendLines(const CommandRule& rule, Arguments arguments) {
        std::vector<Point> points(arguments.size() / rule.argumentCount);
        const double* segment = arguments.data();
        for (Point& point : points) {
            point = ResolveLineEnd(rule, segment);
            segment += rule.argumentCount;
        }
        m_commands.emplace_back(std::move(points));
    }

    void AppendCurves(const CommandRule& rule, Arguments arguments) {
        std::vector<BezierCurve> curves(arguments.size() / rule.argumentCount);
        const double* segment = arguments.data();
        for (BezierCurve& curve : curves) {
            curve = ResolveCurve(rule, segment);
            segment += rule.argumentCount;
        }
        m_commands.emplace_back(std::move(curves));
    }

    void AppendSmoothCurves(const CommandRule& rule, Arguments arguments) {
        Point control1 = Current();
        if (!m_commands.empty() && m_commands.back().type == PathCommand::Type::CurveTo &&
            !m_commands.back().curves.empty()) {
            control1 = Reflect(m_commands.back().curves.back().control2);
        }
        std::vector<BezierCurve> curves(arguments.size() / rule.argumentCount);
        const double* segment = arguments.data();
        for (BezierCurve& curve : curves) {
            curve = {ResolvePoint(rule, segment + 2), control1, ResolvePoint(rule, segment)};
            Current() = curve.end;
            control1 = Reflect(curve.control2);
            segment += rule.argumentCount;
        }
        m_commands.emplace_back(std::move(curves));
    }

    Point Reflect(Point point) { return {2 * Current().x - point.x, 2 * Current().y - point.y}; }

    const char* m_at;
    const char* const m_end;
    std::vector<PathCommand>& m_commands;
    /// The arguments of the current command. While blocks are read, also those of later commands of the
    /// block.
    ArgumentList m_arguments;
    /// Indexed by `Origin`. Coordinates that are relative to `kZero` remain unchanged by adding -0.
    Point m_origins[2] = {{-0.0, -0.0}, {0, 0}};
};

/// Frees the unused capacity of a list if there is much of it.
void ShrinkIfMostlyUnused(std::vector<PathCommand>& commands) {
    constexpr size_t kAlwaysTolerated = 16;
    if (commands.capacity() > 2 * commands.size() + kAlwaysTolerated) commands.shrink_to_fit();
}

} // namespace

const PathDataScanner* ChoosePathDataScanner(std::span<const PathDataScanner* const> scanners, size_t length,
                                             size_t readableAfter) {
    for (const PathDataScanner* const scanner : scanners) {
        if (length >= scanner->shortestText && readableAfter >= scanner->overrun) return scanner;
    }
    return nullptr;
}

void ReadPathData(StringView text, std::vector<PathCommand>& commands, const PathDataScanner* scanner) {
    const bool isNew = commands.capacity() == 0;
    if (isNew) {
        // Growing the list in steps would take 9 % of parsing. The number of letters is an upper
        // bound that may be far too high: letters may also belong to exponents, to commands that draw
        // nothing, or follow an error.
        constexpr size_t kMaxReserve = 1 << 16;
        const auto countLetters = [](StringView view) {
            return static_cast<size_t>(
                std::count_if(view.begin(), view.end(), [](char c) { return IsLetter(c); }));
        };
        commands.reserve(std::min(scanner ? scanner->countLetters(text) : countLetters(text), kMaxReserve));
    }
    PathDataReader(text, commands).ReadCommands(scanner);
    if (isNew) ShrinkIfMostlyUnused(commands);
}

} // namespace ozm
