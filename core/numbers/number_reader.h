#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <cstdint>

// Functions that scan and convert numbers in one pass over the characters [p, end). Every reader returns the
// end of the number, or null, leaving `value` unchanged, if there is none. The values are those that
// `StringView::toDouble` returns for the same characters.

namespace ozm {

inline const char* SkipWhitespace(const char* p, const char* end) {
    while (p != end && IsWhitespace(*p)) ++p;
    return p;
}

/// Skips what separates two numbers of an argument list: whitespace and at most one comma.
inline const char* SkipSeparator(const char* p, const char* end) {
    p = SkipWhitespace(p, end);
    return p != end && *p == ',' ? SkipWhitespace(p + 1, end) : p;
}

/// The digits of a number, which may include a decimal point.
struct DecimalDigits {
    const char* end;        ///< Past the last character.
    uint64_t significand;   ///< All digits as one integer, modulo 2^64.
    int64_t count;          ///< Digits before and after the point.
    int64_t fractionDigits; ///< Digits after the point.
};

inline DecimalDigits ScanDecimalDigits(const char* p, const char* end) {
    uint64_t significand = 0;
    const auto skipDigits = [&] {
        const char* const first = p;
        for (; p != end && isNumericDigit(*p); ++p) {
            significand = significand * 10 + static_cast<uint64_t>(*p - '0');
        }
        return p - first;
    };
    const int64_t integerDigits = skipDigits();
    int64_t fractionDigits = 0;
    if (p != end && *p == '.') {
        ++p;
        fractionDigits = skipDigits();
    }
    return {p, significand, integerDigits + fractionDigits, fractionDigits};
}

/// Converts a decimal number of any length, `[sign] digits [. digits] [e [sign] digits]`, correctly rounded.
double ConvertDecimalText(StringView text);

/// Converts scanned digits, scaled by 10^exponent. `text` is the whole number, sign included.
inline double ConvertDecimal(const DecimalDigits& digits, int64_t exponent, StringView text) {
    // Clinger's fast path ("How to Read Floating Point Numbers Accurately", 1990): if the significand and the
    // power of ten are both exact doubles, a single operation rounds correctly. 19 digits fit into 64 bits.
    static constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const int64_t power = exponent - digits.fractionDigits;
    if (digits.count <= 19 && digits.significand <= (uint64_t{1} << 53) && power >= -22 && power <= 22) {
        const double value = static_cast<double>(static_cast<int64_t>(digits.significand));
        const double sign = *text.data == '-' ? -1 : 1;
        return sign * (power > 0 ? value * kPowersOfTen[power] : value / kPowersOfTen[-power]);
    }
    return ConvertDecimalText(text);
}

/// An `e`, an optional sign and digits. The value saturates far beyond the exponents of doubles.
struct DecimalExponent {
    const char* end; ///< Past the last digit; null if the `e` is followed by no digit.
    int64_t value;
};

/// Scans an exponent, which starts with its `e` at `p`.
inline DecimalExponent ScanDecimalExponent(const char* p, const char* end) {
    ++p;
    const bool negative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+')) ++p;
    if (p == end || !isNumericDigit(*p)) return {nullptr, 0};
    int64_t value = 0;
    for (; p != end && isNumericDigit(*p); ++p) {
        if (value < 1000000) value = value * 10 + (*p - '0');
    }
    return {p, negative ? -value : value};
}

/// Reads a number without sign and exponent.
inline const char* ReadPositiveDecimal(const char* p, const char* end, double& value) {
    const DecimalDigits digits = ScanDecimalDigits(p, end);
    if (digits.count == 0) return nullptr;
    value = ConvertDecimal(digits, 0, {p, static_cast<uint64_t>(digits.end - p)});
    return digits.end;
}

/// Reads a number with an optional "-", but neither "+" nor exponent.
inline const char* ReadDecimal(const char* p, const char* end, double& value) {
    const DecimalDigits digits = ScanDecimalDigits(p != end && *p == '-' ? p + 1 : p, end);
    if (digits.count == 0) return nullptr;
    value = ConvertDecimal(digits, 0, {p, static_cast<uint64_t>(digits.end - p)});
    return digits.end;
}

/// Skips what `ScanScientificNumber` scans, including leading whitespace. Returns the end of the number, or
/// null.
const char* SkipScientificNumber(const char* p, const char* end);

/// Reads what `ScanScientificNumber` scans, including leading whitespace.
const char* ReadScientificNumber(const char* p, const char* end, double& value);

} // namespace ozm
