#pragma once

#include "numbers/number_reader.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Reading the number lists that drawings mostly consist of, eight characters at a time.

namespace ozm {

/// The value of eight decimal digits, one to a byte, the first one in the lowest byte. Adds up pairs, then
/// pairs of pairs (Lemire, "Number Parsing at a Gigabyte per Second", 2021).
constexpr uint64_t ValueOfEightDigits(uint64_t digits) {
    constexpr uint64_t kEveryFourthByte = 0x000000FF000000FF;
    digits = digits * 10 + (digits >> 8);
    return ((digits & kEveryFourthByte) * (100 + (uint64_t{1000000} << 32)) +
            ((digits >> 16) & kEveryFourthByte) * (1 + (uint64_t{10000} << 32))) >>
           32;
}

inline uint64_t LoadEightCharacters(const char* p) {
    uint64_t text;
    std::memcpy(&text, p, sizeof text);
    return text;
}

/// What a character leaves to the slower reader.
enum CharacterTrait : uint8_t {
    kIsNoPlainEnd = 1,   ///< Behind a number: an exponent's "e", and what can't stand there.
    kIsNoPlainStart = 2, ///< Behind one separator: another one.
};

constexpr auto kCharacterTraits = [] {
    std::array<uint8_t, 256> traits{};
    for (size_t c = 0; c < '-'; ++c) traits[c] = kIsNoPlainEnd;
    for (const char c : {' ', '\t', '\n', '\r', ','}) traits[static_cast<size_t>(c)] = 0;
    for (const char c : {'e', 'E'}) traits[static_cast<size_t>(c)] = kIsNoPlainEnd;
    for (size_t c = 0; c <= ' '; ++c) traits[c] |= kIsNoPlainStart;
    traits[','] |= kIsNoPlainStart;
    return traits;
}();

inline bool HasTrait(char c, CharacterTrait trait) {
    return (kCharacterTraits[static_cast<unsigned char>(c)] & trait) != 0;
}

/// Reads an optional "-" and digits with an optional point, and steps over one whitespace character or comma
/// behind them, without loops and without branches that depend on the number. Null, for a slower reader to
/// decide, when it takes up more than seven characters behind the sign, when an exponent or something strange
/// follows, or when there is none. Ten characters have to be readable. All steps from one number to the next
/// depend on each other, so their order is for latency.
[[gnu::always_inline]] inline const char* ReadShortListNumber(const char* p, double& value) {
    constexpr uint64_t kEveryByte = 0x0101010101010101;
    const bool isNegative = *p == '-';
    const uint64_t unsignedText = LoadEightCharacters(p);
    const uint64_t signedText = LoadEightCharacters(p + 1);
    const uint64_t text = isNegative ? signedText : unsignedText;

    // Marks what is no digit in the highest bit of its byte. Carries only reach bytes behind the first mark.
    // Digits become 0 to 9.
    const uint64_t digits = text ^ (kEveryByte * '0');
    const uint64_t isOther = ((digits + kEveryByte * (0x80 - 10)) | digits) & (kEveryByte * 0x80);
    const uint64_t isFirstOther = isOther & (~isOther + 1);
    const auto integerBits = static_cast<size_t>(std::countr_zero(isOther)) & 0x38;
    const bool hasPoint = static_cast<char>(text >> integerBits) == '.';
    const uint64_t isEnd = hasPoint ? isOther ^ isFirstOther : isOther;
    if (isEnd == 0) return nullptr;
    const auto bits = static_cast<size_t>(std::countr_zero(isEnd)) & 0x38;
    const auto last = static_cast<char>(text >> bits);
    const bool isSeparated = static_cast<unsigned char>(last) < '-';
    const char* const end = p + isNegative + bits / 8 + isSeparated;

    // Close the gap that a point leaves, then move the last digit into the highest byte.
    const uint64_t integerMask = (isFirstOther >> 7) - 1;
    const uint64_t joined = (digits & integerMask) | ((digits >> 8) & ~integerMask);
    const size_t digitBits = bits - size_t{8} * hasPoint;
    if (digitBits == 0 || HasTrait(last, kIsNoPlainEnd)) return nullptr;
    const uint64_t significand = ValueOfEightDigits(joined << (64 - digitBits));

    // Both are exact, so that the division rounds once.
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         -1e0, -1e1, -1e2, -1e3, -1e4, -1e5, -1e6, -1e7};
    const size_t fractionDigits = (digitBits - integerBits) / 8;
    value = static_cast<double>(static_cast<int32_t>(significand)) /
            kPowers[size_t{8} * isNegative + fractionDigits];
    return end;
}

/// As `ReadScientificNumber`, and skips with `skipSeparator(place, end)` what separates the number from the
/// next one of a list: one blank or comma, perhaps more.
template <typename SkipSeparator>
[[gnu::always_inline]] inline const char* ReadListNumber(const char* p, const char* end, double& value,
                                                         SkipSeparator skipSeparator) {
    if (std::endian::native == std::endian::little && end - p >= 10) {
        if (const char* const next = ReadShortListNumber(p, value)) {
            if (!HasTrait(*next, kIsNoPlainStart)) return next;
        }
    }
    const char* const next = ReadScientificNumber(p, end, value);
    return next ? skipSeparator(next, end) : nullptr;
}

} // namespace ozm
