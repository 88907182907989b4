#include "geometry/number_text.h"

#include <Ozmira/ozmStringUtils.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace ozm::conform {

namespace {

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// The digits of a number as they stand in the text.
struct Digits {
    uint64_t significand = 0; ///< Of at most 19 digits; of more only the lowest bits.
    ptrdiff_t count = 0;
    ptrdiff_t fraction = 0;

    void Read(const char*& p, const char* end) {
        const char* const first = p;
        for (; p != end && isNumericDigit(*p); ++p)
            significand = significand * 10 + static_cast<uint64_t>(*p - '0');
        count += p - first;
    }
};

/// Skips the exponent at `p`; false when its digits are missing.
bool SkipExponent(const char*& p, const char* end) {
    ++p;
    if (p != end && (*p == '-' || *p == '+')) ++p;
    if (p == end || !isNumericDigit(*p)) return false;
    while (p != end && isNumericDigit(*p)) ++p;
    return true;
}

/// True at the `e` of an exponent, false at that of a unit.
bool BeginsExponent(const char* p, const char* end) {
    return p != end && (*p == 'e' || *p == 'E') && !(p + 1 != end && (p[1] == 'm' || p[1] == 'x'));
}

} // namespace

bool ReadNumber(const char*& begin, const char* end, double& value) {
    const char* p = begin;
    const bool isNegative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) ++p;
    const char* const digitsBegin = p;
    Digits digits;
    digits.Read(p, end);
    if (p != end && *p == '.') {
        ++p;
        const ptrdiff_t integers = digits.count;
        digits.Read(p, end);
        digits.fraction = digits.count - integers;
        if (digits.fraction == 0) return false;
    }
    if (digits.count == 0) return false;
    const bool hasExponent = BeginsExponent(p, end);
    if (hasExponent && !SkipExponent(p, end)) return false;

    double magnitude = 0;
    if (!hasExponent && digits.count <= 15) {
        // Both operands are exact, so that the quotient is correctly rounded.
        magnitude = static_cast<double>(digits.significand) / kPowersOfTen[digits.fraction];
    } else {
        // strtod reports 0 for what is out of range at either end.
        const StringView text{digitsBegin, static_cast<uint64_t>(p - digitsBegin)};
        magnitude = text.toDouble();
        if (magnitude == 0 && hasExponent) {
            const char* const e = std::find_if(digitsBegin, p, [](char c) { return c == 'e' || c == 'E'; });
            const bool isZero = std::all_of(digitsBegin, e, [](char c) { return c == '0' || c == '.'; });
            if (!isZero && e[1] != '-') return false;
        }
        if (magnitude > static_cast<double>(std::numeric_limits<float>::max())) return false;
    }
    value = isNegative ? -magnitude : magnitude;
    begin = p;
    return true;
}

void WriteNumber(double value, int decimals, std::string& out) {
    if (std::isnan(value)) value = 0;
    value = std::fmax(-1e18, std::fmin(1e18, value));
    decimals = decimals < 0 ? 0 : decimals > 15 ? 15 : decimals;
    // Longest: a sign, 19 digits, a point, 15 digits.
    char text[40];
    const auto [end, error] =
        std::to_chars(text, text + sizeof text, std::abs(value), std::chars_format::fixed, decimals);
    const char* last = end;
    if (decimals > 0) {
        while (last[-1] == '0') --last;
        if (last[-1] == '.') --last;
    }
    const char* first = text;
    if (*first == '0' && last - first > 1) ++first;
    if (value < 0 && !(last - first == 1 && *first == '0')) out += '-';
    out.append(first, last);
}

void WriteSignificant(double value, int digits, int maxDecimals, std::string& out) {
    const double magnitude = std::abs(value);
    if (!(magnitude > 0) || !std::isfinite(magnitude)) return WriteNumber(value, 0, out);
    const int leading = static_cast<int>(std::floor(std::log10(magnitude))) + 1;
    const int decimals = digits - leading;
    WriteNumber(value, decimals < maxDecimals ? decimals : maxDecimals, out);
}

} // namespace ozm::conform
