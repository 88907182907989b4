#pragma once

#include "numbers/number_reader.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Reads the numbers of a list eight characters at a time. Drawings consist mostly of such lists.

namespace ozm {

/// The value of eight decimal digits, one per byte, with the first digit in the lowest byte. Combines digits
/// into pairs, and pairs into pairs of pairs (Lemire, "Number Parsing at a Gigabyte per Second", 2021).
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

/// The places in which a character needs the slower reader.
enum CharacterTrait : uint8_t {
    kUnusualAfterNumber = 1,    ///< The "e" of an exponent, and characters that may not follow a number.
    kUnusualAfterSeparator = 2, ///< A further separator.
};

constexpr auto kCharacterTraits = [] {
    std::array<uint8_t, 256> traits{};
    for (size_t c = 0; c < '-'; ++c) traits[c] = kUnusualAfterNumber;
    for (const char c : {' ', '\t', '\n', '\r', ','}) traits[static_cast<unsigned char>(c)] = 0;
    for (const char c : {'e', 'E'}) traits[static_cast<unsigned char>(c)] = kUnusualAfterNumber;
    for (size_t c = 0; c <= ' '; ++c) traits[c] |= kUnusualAfterSeparator;
    traits[','] |= kUnusualAfterSeparator;
    return traits;
}();

inline bool HasTrait(char c, CharacterTrait trait) {
    return (kCharacterTraits[static_cast<unsigned char>(c)] & trait) != 0;
}

/// Reads an optional "-" and digits with an optional point, and skips one whitespace character or comma after
/// them. Has no loops and no branches that depend on the number. Returns null, leaving the decision to a
/// slower reader, if the number has more than seven characters after the sign, if an exponent or anything
/// unusual follows it, or if there is no number. Ten characters must be readable. Each number can only be
/// found when the end of the previous one is known, so the order of the steps is chosen for low latency.
[[gnu::always_inline]] inline const char* ReadShortListNumber(const char* p, double& value) {
    constexpr uint64_t kEveryByte = 0x0101010101010101;
    const bool isNegative = *p == '-';
    const uint64_t unsignedText = LoadEightCharacters(p);
    const uint64_t signedText = LoadEightCharacters(p + 1);
    const uint64_t text = isNegative ? signedText : unsignedText;

    // Digits become 0 to 9. Other characters are marked in the highest bit of their bytes. A carry may set
    // wrong marks, but only in bytes after the first right mark.
    const uint64_t digits = text ^ (kEveryByte * '0');
    const uint64_t nonDigits = ((digits + kEveryByte * (0x80 - 10)) | digits) & (kEveryByte * 0x80);
    const uint64_t firstNonDigit = nonDigits & (~nonDigits + 1);
    const auto integerBits = static_cast<size_t>(std::countr_zero(nonDigits)) & 0x38;
    const bool hasPoint = static_cast<char>(text >> integerBits) == '.';
    const uint64_t terminators = hasPoint ? nonDigits ^ firstNonDigit : nonDigits;
    if (terminators == 0) return nullptr;
    const auto bits = static_cast<size_t>(std::countr_zero(terminators)) & 0x38;
    const auto terminator = static_cast<char>(text >> bits);
    const bool isSeparated = static_cast<unsigned char>(terminator) < '-';
    const char* const end = p + isNegative + bits / 8 + isSeparated;

    // Remove the point, then shift the last digit into the highest byte.
    const uint64_t integerMask = (firstNonDigit >> 7) - 1;
    const uint64_t joined = (digits & integerMask) | ((digits >> 8) & ~integerMask);
    const size_t digitBits = bits - size_t{8} * hasPoint;
    if (digitBits == 0 || HasTrait(terminator, kUnusualAfterNumber)) return nullptr;
    const uint64_t significand = ValueOfEightDigits(joined << (64 - digitBits));

    // Both operands are exact, so the division rounds only once.
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         -1e0, -1e1, -1e2, -1e3, -1e4, -1e5, -1e6, -1e7};
    const size_t fractionDigits = (digitBits - integerBits) / 8;
    value = static_cast<double>(static_cast<int32_t>(significand)) /
            kPowers[size_t{8} * isNegative + fractionDigits];
    return end;
}

/// Reads one number of a list, as `ReadScientificNumber` does, and skips the separator after it. The function
/// `skipSeparator(p, end)` defines separators; it must at least skip one whitespace character or comma.
template <typename SkipSeparator>
[[gnu::always_inline]] inline const char* ReadListNumber(const char* p, const char* end, double& value,
                                                         SkipSeparator skipSeparator) {
    if (std::endian::native == std::endian::little && end - p >= 10) {
        if (const char* const next = ReadShortListNumber(p, value)) {
            if (!HasTrait(*next, kUnusualAfterSeparator)) return next;
        }
    }
    const char* const next = ReadScientificNumber(p, end, value);
    return next ? skipSeparator(next, end) : nullptr;
}

} // namespace ozm
