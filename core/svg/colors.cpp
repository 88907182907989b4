#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/number_reader.h"
#include "svg/named_colors.h"

namespace ozm {
namespace {

constexpr double kByteScale = 1.0 / 255;
constexpr double kPercentScale = 0.01;

/// Only letters have bit 6 set; their low four bits count from 1.
int HexDigitValue(char c) { return (c & 15) + 9 * (c >> 6); }

/// Reads the three or six digits after the "#" and ignores what follows them. Of four or five digits, three
/// count.
bool ParseHexadecimalColor(StringView text, Color& color) {
    constexpr uint64_t kMaxDigits = 6;
    uint64_t digits = 0;
    while (digits < text.length && digits < kMaxDigits && isHexDigit(text.data[digits])) ++digits;
    if (digits < 3) return false;
    const bool isLong = digits == kMaxDigits;
    const auto component = [&](int index) {
        const int high = HexDigitValue(text.data[isLong ? 2 * index : index]);
        const int low = isLong ? HexDigitValue(text.data[2 * index + 1]) : high;
        return (16 * high + low) * kByteScale;
    };
    color = {component(0), component(1), component(2), 1};
    return true;
}

/// Reads "rgb(", three numbers and ")". Unless `suffix` is 0, it must follow each number.
bool ParseRGBFunction(StringView text, char suffix, double scale, Color& color, StringView& consumed) {
    constexpr std::string_view kPrefix = "rgb(";
    if (!text.HasPrefix(kPrefix)) return false;
    const char* at = text.begin() + kPrefix.size();
    const char* const end = text.end();
    double components[3];
    for (double& component : components) {
        at = &component == components ? SkipWhitespace(at, end) : SkipSeparator(at, end);
        at = ReadPositiveDecimal(at, end, component);
        if (!at) return false;
        component *= scale;
        if (suffix == 0) continue;
        at = SkipWhitespace(at, end);
        if (at == end || *at != suffix) return false;
        ++at;
    }
    at = SkipWhitespace(at, end);
    if (at == end || *at != ')') return false;
    color = {components[0], components[1], components[2], 1};
    consumed = {text.data, static_cast<uint64_t>(at + 1 - text.data)};
    return true;
}

} // namespace

bool SVGParser::ParseCSSColor(StringView text, Color& color) {
    text = text.TrimLeadingWhitespace();
    if (text.empty()) return false;
    if (*text.data == '#') return ParseHexadecimalColor(text.CutFront(1), color);
    if (text.HasPrefixIgnoringCase("rgb(")) {
        StringView consumed;
        return ParseCSSColorInRGBIntegerFunctionalForm(text, color, consumed) ||
               ParseCSSColorInRGBFloatingFunctionalForm(text, color, consumed);
    }
    if (text.HasPrefixIgnoringCase("none")) {
        color = {0, 0, 0, 0};
        return true;
    }
    if (text.HasPrefixIgnoringCase("url(")) return false;
    return ParseCSSColorNamedColor(text, color);
}

bool SVGParser::ParseCSSColorInRGBIntegerFunctionalForm(StringView text, Color& color, StringView& consumed) {
    return ParseRGBFunction(text, 0, kByteScale, color, consumed);
}

bool SVGParser::ParseCSSColorInRGBFloatingFunctionalForm(StringView text, Color& color,
                                                         StringView& consumed) {
    return ParseRGBFunction(text, '%', kPercentScale, color, consumed);
}

bool SVGParser::ParseCSSColorNamedColor(StringView text, Color& color) {
    const Color* const named = FindNamedColor(text);
    if (!named) return false;
    color = *named;
    return true;
}

bool SVGParser::ParseFunctionalLocalIRI(StringView text, std::string& id) {
    constexpr std::string_view kPrefix = "url(#";
    if (!text.HasPrefixIgnoringCase(kPrefix)) return false;
    const std::string_view rest = text.CutFront(kPrefix.size());
    const size_t parenthesis = rest.find(')');
    if (parenthesis == 0) return false;
    id.assign(rest.substr(0, parenthesis));
    return true;
}

} // namespace ozm
