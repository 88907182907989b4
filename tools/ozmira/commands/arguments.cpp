#include "commands/arguments.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace ozm::tool {
namespace {

/// Parses text that is a number from its first character to its last. Returns NaN, which no range contains,
/// for any other text.
double ParseNumber(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && last == end ? number : std::nan("");
}

[[noreturn]] void ThrowBadValue(std::string_view option, std::string_view text, const std::string& expected) {
    throw UsageError(std::string(option) + ": \"" + OnOneLine(text) + "\" is not " + expected);
}

std::string Range(double first, double last) { return FormatNumber(first) + " to " + FormatNumber(last); }

} // namespace

double ParseLengthArgument(std::string_view option, std::string_view text) {
    const double length = ParseNumber(text);
    if (length > 0 && length <= kMaximumSide) return length;
    ThrowBadValue(option, text,
                  "a length in points, a number above 0 and up to " + FormatNumber(kMaximumSide));
}

std::vector<double> ParseScales(std::string_view option, std::string_view text) {
    std::vector<double> scales;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find(',', start), text.size());
        const std::string_view item = text.substr(start, end - start);
        const double scale = ParseNumber(item);
        if (!(scale >= kMinimumScale && scale <= kMaximumScale)) {
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

Color ParseColorArgument(std::string_view option, std::string_view text) {
    Color color;
    const StringView trimmed = StringView(text).TrimLeadingWhitespace().TrimTrailingWhitespace();
    if (SVGParser().ParseCSSColor(trimmed, color)) return color;
    ThrowBadValue(
        option, text,
        "a colour; write #rgb, #rrggbb, rgb(255,0,0), rgb(100%,0%,0%), none, or one of the 147 names of "
        "CSS such as steelblue in lower case");
}

double ParseTimeout(std::string_view option, std::string_view text) {
    const double seconds = ParseNumber(text);
    if (seconds >= 0 && seconds <= kMaximumTimeout) return seconds;
    ThrowBadValue(option, text,
                  "a number of seconds from " + Range(0, kMaximumTimeout) + "; 0 sets no limit");
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
