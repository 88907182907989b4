// Each value syntax on its own: the first byte chooses the parsing function, the rest is its text.
#include "path_data/path_data_reader.h"
#include "require.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace ozm;

namespace {

/// `prefix` must be empty or a view of the beginning of `text`, not a copy.
void RequirePrefix(StringView text, StringView prefix) {
    Require(prefix.length <= text.length && (prefix.empty() || prefix.data == text.data));
}

void CompareWithStrtod(StringView text) {
    errno = 0;
    const double value = std::strtod(std::string(text).c_str(), nullptr);
    const double expected = errno == ERANGE ? 0.0 : value;
    Require(std::bit_cast<uint64_t>(text.toDouble()) == std::bit_cast<uint64_t>(expected));
}

void ParseDeclarations(SVGParser& parser, StringView text) {
    std::pair<StringView, StringView> declaration;
    StringView consumed;
    while (parser.ParseCSSStylePropertyDeclaration(text, declaration, consumed)) {
        Require(!consumed.empty());
        RequirePrefix(text, consumed);
        text = text.CutFront(consumed.length);
    }
    Element element(Element::Type::Group);
    Style style;
    Require(parser.ProcessCSSStylePropertyDeclarations(text, element, style));
}

void ParseProperty(SVGParser& parser, StringView text) {
    const uint64_t split = std::string_view(text).find('=');
    if (split == std::string_view::npos) return;
    Element element(Element::Type::Group);
    Style style;
    parser.ProcessStyleProperty({text.data, split}, text.CutFront(split + 1), element, style);
}

void ParseColors(SVGParser& parser, StringView text) {
    Color color;
    StringView consumed;
    parser.ParseCSSColor(text, color);
    if (parser.ParseCSSColorInRGBIntegerFunctionalForm(text, color, consumed)) RequirePrefix(text, consumed);
    if (parser.ParseCSSColorInRGBFloatingFunctionalForm(text, color, consumed)) RequirePrefix(text, consumed);
    parser.ParseCSSColorNamedColor(text, color);
}

template <typename Record>
bool SameBits(const std::vector<Record>& a, const std::vector<Record>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Record)) == 0);
}

bool SameBits(const PathCommand& a, const PathCommand& b) {
    if (a.type != b.type) return false;
    switch (a.type) {
    // Unlike ==, tells -0 from 0 and takes NaN as equal.
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    case PathCommand::Type::MoveTo: return std::memcmp(&a.point, &b.point, sizeof a.point) == 0;
    case PathCommand::Type::LineTo: return SameBits(a.points, b.points);
    case PathCommand::Type::CurveTo: return SameBits(a.curves, b.curves);
    default: return true;
    }
}

/// Every scanner, and a whole document, must read path data as the plain reader does.
void ParsePathData(StringView text) {
    std::vector<PathCommand> expected;
    ReadPathData(text, expected, nullptr);
    const auto requireExpected = [&](const std::vector<PathCommand>& commands) {
        Require(std::equal(commands.begin(), commands.end(), expected.begin(), expected.end(),
                           [](const PathCommand& a, const PathCommand& b) { return SameBits(a, b); }));
    };
    for (const PathDataScanner* const scanner : PathDataScanners()) {
        if (text.length < scanner->shortestText) continue;
        // The block ends where the scanner may read last, so that AddressSanitizer detects any further read.
        const auto copy = std::make_unique<char[]>(text.length + scanner->overrun);
        std::copy(text.begin(), text.end(), copy.get());
        std::vector<PathCommand> commands;
        ReadPathData({copy.get(), text.length}, commands, scanner);
        requireExpected(commands);
    }
    if (std::any_of(text.begin(), text.end(), [](char c) { return c == '"' || c == '\0'; })) return;
    const std::string svg = "<svg><path d=\"" + std::string(text.data, text.length) + "\"/></>";
    const auto copy = std::make_unique<char[]>(svg.size() + 1);
    std::copy(svg.begin(), svg.end(), copy.get());
    const auto document = SVGParser().ParseSVGData(copy.get());
    Require(document->elements.size() == 2);
    requireExpected(document->elements[1].path.commands);
}

void ParseText(uint8_t operation, StringView text) {
    SVGParser parser;
    Dimension dimension;
    Rectf box;
    Transform transform;
    std::string id;
    switch (operation % 11) {
    case 0: CompareWithStrtod(text); break;
    case 1: RequirePrefix(text, ScanScientificNumber(text)); break;
    case 2: parser.ParseDimension(text, dimension, SVGParser::UnitAttributeFormat::CaseSensitive); break;
    case 3: parser.ParseDimension(text, dimension, SVGParser::UnitAttributeFormat::CaseInsensitive); break;
    case 4: parser.ParseViewBox(text, box); break;
    case 5: parser.ParseTransform(text, transform); break;
    case 6: ParsePathData(text); break;
    case 7: Require(parser.ParsePathCommandArguments(text).size() <= text.length); break;
    case 8: ParseColors(parser, text); break;
    case 9: parser.ParseFunctionalLocalIRI(text, id); break;
    case 10:
        ParseDeclarations(parser, text);
        ParseProperty(parser, text);
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    // The block ends with the text, so that AddressSanitizer detects reading past it.
    const auto text = std::make_unique<char[]>(size - 1);
    std::copy(data + 1, data + size, text.get());
    ParseText(data[0], {text.get(), size - 1});
    return 0;
}
