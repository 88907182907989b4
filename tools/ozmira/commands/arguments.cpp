#include "commands/arguments.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace ozm::tool {
namespace {

[[noreturn]] void ThrowBadValue(std::string_view option, std::string_view text, const std::string& expected) {
    throw UsageError(std::string(option) + ": \"" + OnOneLine(text) + "\" is not " + expected);
}

/// A colour after "#": three, four, six or eight digits. The parser reads the first of them, and no alpha.
std::optional<Color> ParseHexadecimalColor(std::string_view digits) {
    const bool isShort = digits.size() <= 4;
    const size_t colorDigits = isShort ? 3 : 6,
                 alphaDigits = digits.size() - std::min(colorDigits, digits.size());
    if (digits.size() < colorDigits || (alphaDigits != 0 && alphaDigits != colorDigits / 3) ||
        !std::all_of(digits.begin(), digits.end(), isHexDigit)) {
        return std::nullopt;
    }
    Color color;
    SVGParser().ParseCSSColor("#" + std::string(digits.substr(0, colorDigits)), color);
    if (alphaDigits > 0) {
        unsigned alpha = 0;
        std::from_chars(digits.data() + colorDigits, digits.data() + digits.size(), alpha, 16);
        color.a = alpha / (isShort ? 15.0 : 255.0);
    }
    return color;
}

/// A colour that the text holds from its first character to its last; the parser ignores some of what follows
/// one, and takes components beyond 255 and 100 %.
std::optional<Color> ParseColor(std::string_view text) {
    if (text.starts_with('#')) return ParseHexadecimalColor(text.substr(1));
    Color color;
    if (text == "none") return color;
    SVGParser parser;
    StringView consumed;
    const bool isFunction = parser.ParseCSSColorInRGBIntegerFunctionalForm(text, color, consumed) ||
                            parser.ParseCSSColorInRGBFloatingFunctionalForm(text, color, consumed);
    if (isFunction ? consumed.length != text.size() : !parser.ParseCSSColorNamedColor(text, color)) {
        return std::nullopt;
    }
    return std::max({color.r, color.g, color.b}) <= 1 ? std::optional(color) : std::nullopt;
}

bool IsLength(double length) { return length > 0 && length <= kMaximumSide; }
bool IsScale(double scale) { return scale >= kMinimumScale && scale <= kMaximumScale; }
bool IsTimeout(double seconds) { return seconds >= 0 && seconds <= kMaximumTimeout; }

std::string Range(double first, double last) { return FormatNumber(first) + " to " + FormatNumber(last); }

} // namespace

double ParseLengthArgument(std::string_view option, std::string_view text) {
    const double length = ParseNumber(text);
    if (IsLength(length)) return length;
    ThrowBadValue(option, text,
                  "a length in points, a number above 0 and up to " + FormatNumber(kMaximumSide));
}

double CheckLength(std::string_view option, double length) {
    return IsLength(length) ? length : ParseLengthArgument(option, FormatNumber(length));
}

std::vector<double> ParseScales(std::string_view option, std::string_view text) {
    std::vector<double> scales;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find(',', start), text.size());
        const std::string_view item = text.substr(start, end - start);
        const double scale = ParseNumber(item);
        if (!IsScale(scale)) {
            ThrowBadValue(option, item,
                          "a number of pixels per point from " + Range(kMinimumScale, kMaximumScale) +
                              "; separate several with commas, as in 1,2,3");
        }
        if (std::find(scales.begin(), scales.end(), scale) != scales.end()) {
            throw UsageError(std::string(option) + ": " + FormatNumber(scale) +
                             " is listed twice; each scale makes one picture");
        }
        scales.push_back(scale);
        start = end + 1;
    }
    return scales;
}

double ParseScale(std::string_view option, std::string_view text) {
    const double scale = ParseNumber(text);
    if (IsScale(scale)) return scale;
    ThrowBadValue(option, text, "a number of pixels per point from " + Range(kMinimumScale, kMaximumScale));
}

double CheckScale(std::string_view option, double scale) {
    return IsScale(scale) ? scale : ParseScale(option, FormatNumber(scale));
}

double ParseThreshold(std::string_view option, std::string_view text) {
    constexpr double kMost = 255;
    const double threshold = ParseNumber(text);
    if (threshold >= 0 && threshold <= kMost) return threshold;
    ThrowBadValue(option, text, "a mean difference of components from " + Range(0, kMost));
}

Color ParseColorArgument(std::string_view option, std::string_view text) {
    const StringView trimmed = StringView(text).TrimLeadingWhitespace().TrimTrailingWhitespace();
    if (const auto color = ParseColor(std::string_view(trimmed.data, trimmed.length))) return *color;
    ThrowBadValue(option, text,
                  "a colour; write #rgb, #rgba, #rrggbb, #rrggbbaa, rgb(255,0,0), rgb(100%,0%,0%), none, or "
                  "one of the 147 names of CSS such as steelblue in lower case");
}

double ParseTimeout(std::string_view option, std::string_view text) {
    const double seconds = ParseNumber(text);
    if (IsTimeout(seconds)) return seconds;
    ThrowBadValue(option, text,
                  "a number of seconds from " + Range(0, kMaximumTimeout) + "; 0 sets no limit");
}

double CheckTimeout(std::string_view option, double seconds) {
    return IsTimeout(seconds) ? seconds : ParseTimeout(option, FormatNumber(seconds));
}

unsigned ParseJobs(std::string_view option, std::string_view text) {
    const double jobs = ParseNumber(text);
    if (jobs >= 1 && jobs <= kMaximumJobs && jobs == std::floor(jobs)) return static_cast<unsigned>(jobs);
    ThrowBadValue(option, text, "a whole number of threads from " + Range(1, kMaximumJobs));
}

int ParseDecimals(std::string_view option, std::string_view text) {
    constexpr double kMost = 12;
    const double decimals = ParseNumber(text);
    if (decimals >= 0 && decimals <= kMost && decimals == std::floor(decimals))
        return static_cast<int>(decimals);
    ThrowBadValue(option, text, "a whole number from " + Range(0, kMost));
}

} // namespace ozm::tool
