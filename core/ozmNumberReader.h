#pragma once

#include <Ozmira/ozmStringUtils.h>

#include <bit>
#include <cstdint>
#include <cstring>

// Scanning and converting numbers in one pass over the characters [p, end). Every reader returns the place
// behind the number, or null, with `value` left alone, when there is none. The values are those that
// `StringView::toDouble` gives for the same characters.

namespace ozm {

inline const char* SkipWhitespace(const char* p, const char* end) {
    while (p != end && IsWhitespace(*p)) ++p;
    return p;
}

/// What stands between two numbers of an argument list: whitespace and at most one comma.
inline const char* SkipSeparator(const char* p, const char* end) {
    if (end - p >= 2) {
        // Mostly one character or none. Which of the two cannot be predicted, so that no branch depends on it.
        const bool isSeparated = (*p == ' ') | (*p == ',');
        const char next = p[isSeparated];
        if (!IsWhitespace(next) && next != ',') return p + isSeparated;
    }
    p = SkipWhitespace(p, end);
    return p != end && *p == ',' ? SkipWhitespace(p + 1, end) : p;
}

/// Digits, optionally a point and more digits.
struct DecimalDigits {
    const char* end;        ///< Behind the last character.
    uint64_t significand;   ///< All digits as one integer, modulo 2^64.
    int64_t count;          ///< Digits before and after the point.
    int64_t fractionDigits; ///< Digits after the point.
};

/// The value of eight decimal digits, one to a byte, the first one in the lowest byte. Adds up pairs, then pairs
/// of pairs (Lemire, "Number Parsing at a Gigabyte per Second", 2021).
constexpr uint64_t ValueOfEightDigits(uint64_t digits) {
    constexpr uint64_t kEveryFourthByte = 0x000000FF000000FF;
    digits = digits * 10 + (digits >> 8);
    return ((digits & kEveryFourthByte) * (100 + (uint64_t{1000000} << 32)) +
            ((digits >> 16) & kEveryFourthByte) * (1 + (uint64_t{10000} << 32))) >>
           32;
}

/// Scans digits with an optional point like `ScanDecimalDigits`, but without loops and branches, when they end
/// within the eight characters at `p`, as nearly all numbers of drawings do. `end` is null when they do not.
inline DecimalDigits ScanShortDecimalDigits(const char* p) {
    constexpr uint64_t kEveryByte = 0x0101010101010101;
    uint64_t text;
    std::memcpy(&text, p, sizeof text);
    // Digits become 0 to 9. The lowest bit that is set in `others` belongs to the first other character; carries
    // only reach bytes behind it.
    const uint64_t digits = text ^ (kEveryByte * '0');
    const uint64_t others = ((digits + kEveryByte * (0x80 - 10)) | digits) & (kEveryByte * 0x80);
    const int integerBits = std::countr_zero(others) & 0x38;
    const bool hasPoint = ((text >> integerBits) & 0xFF) == '.';
    const uint64_t othersBehind = others & (others - hasPoint);
    const int bits = std::countr_zero(othersBehind) & 0x38;
    const int digitBits = bits - 8 * hasPoint;
    // Close the gap that the point leaves, then move the last digit into the highest byte.
    const uint64_t integerMask = (uint64_t{1} << integerBits) - 1;
    const uint64_t joined = (digits & integerMask) | ((digits >> (8 * hasPoint)) & ~integerMask);
    const uint64_t aligned = joined << (-digitBits & 0x3F);
    return {othersBehind != 0 ? p + bits / 8 : nullptr, ValueOfEightDigits(aligned), digitBits / 8,
            (digitBits - integerBits) / 8};
}

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

// 10^0 to 10^22, the powers of ten that are exact.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Converts scanned digits scaled by 10^exponent; `text` is the whole number, sign included.
inline double ConvertDecimal(const DecimalDigits& digits, int64_t exponent, StringView text) {
    // Clinger's fast path ("How to Read Floating Point Numbers Accurately", 1990): when significand and power
    // of ten are both exact doubles, one operation rounds once. 19 digits fit into 64 bits.
    const int64_t power = exponent - digits.fractionDigits;
    if (digits.count <= 19 && digits.significand <= (uint64_t{1} << 53) && power >= -22 && power <= 22) {
        const double value = static_cast<double>(static_cast<int64_t>(digits.significand));
        const double sign = *text.data == '-' ? -1 : 1;
        return sign * (power > 0 ? value * kPowersOfTen[power] : value / kPowersOfTen[-power]);
    }
    return ConvertDecimalText(text);
}

/// What follows the digits of a number: `e`, optional sign, digits. The exponent saturates far beyond any
/// double.
struct DecimalExponent {
    const char* end; ///< Behind the last digit; null when no digit follows the `e`.
    int64_t value;
};

/// Scans an exponent at its `e`.
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

/// Reads digits with an optional fraction: no sign, no exponent.
inline const char* ReadPositiveDecimal(const char* p, const char* end, double& value) {
    const DecimalDigits digits = ScanDecimalDigits(p, end);
    if (digits.count == 0) return nullptr;
    value = ConvertDecimal(digits, 0, {p, static_cast<uint64_t>(digits.end - p)});
    return digits.end;
}

/// Reads an optional "-" and digits with an optional fraction: no "+", no exponent.
inline const char* ReadDecimal(const char* p, const char* end, double& value) {
    const DecimalDigits digits = ScanDecimalDigits(p != end && *p == '-' ? p + 1 : p, end);
    if (digits.count == 0) return nullptr;
    value = ConvertDecimal(digits, 0, {p, static_cast<uint64_t>(digits.end - p)});
    return digits.end;
}

/// Reads what `ScanScientificNumber` scans, leading whitespace included.
const char* ReadAnyScientificNumber(const char* p, const char* end, double& value);

/// As `ReadAnyScientificNumber`; made for numbers that stand in the middle of text.
[[gnu::always_inline]] inline const char* ReadScientificNumber(const char* p, const char* end, double& value) {
    if (std::endian::native == std::endian::little && end - p > 8) {
        const bool isNegative = *p == '-';
        const DecimalDigits digits = ScanShortDecimalDigits(p + isNegative);
        if (digits.end && digits.count != 0 && (*digits.end | 0x20) != 'e') {
            // Both are exact, so that the division rounds once.
            const double magnitude = static_cast<double>(static_cast<int32_t>(digits.significand)) /
                                     kPowersOfTen[digits.fractionDigits];
            value = isNegative ? -magnitude : magnitude;
            return digits.end;
        }
    }
    return ReadAnyScientificNumber(p, end, value);
}

} // namespace ozm
