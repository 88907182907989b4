#pragma once

#include "path_data/command_letters.h"

#include <Ozmira/ozmStringUtils.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

// The tables of the vector code that scans path data, which are the same for all instruction sets.

namespace ozm {

/// The classes of the characters of path data, one bit each. A character's class is the one bit that the
/// table entries of its two halves have in common, if any (Langdale and Lemire, "Parsing Gigabytes of JSON
/// per Second", 2019).
enum CharacterClass : uint8_t {
    kDigit = 0x80,
    kPoint = 0x40,
    kMinus = 0x20,
    kComma = 0x10,
    kUpperRowLetter = 0x08, ///< A command letter of the alphabet's second half, P to Z in either case.
    kLowerRowLetter = 0x04, ///< A command letter from A to O.
    kSpace = 0x02,
    kControl = 0x01, ///< Tab to carriage return.
};

alignas(16) inline constexpr auto kClassesByLowHalf = [] {
    std::array<uint8_t, 16> classes{};
    const auto add = [&](const char* characters, CharacterClass characterClass) {
        for (; *characters != '\0'; ++characters) {
            classes[static_cast<size_t>(*characters) % 16] |= characterClass;
        }
    };
    add("0123456789", kDigit);
    add(".", kPoint);
    add("-", kMinus);
    add(",", kComma);
    add("qstvz", kUpperRowLetter);
    add("achlm", kLowerRowLetter);
    add(" ", kSpace);
    add("\t\n\v\f\r", kControl);
    return classes;
}();

alignas(16) inline constexpr auto kClassesByHighHalf = [] {
    std::array<uint8_t, 16> classes{};
    classes[0] = kControl;
    classes[2] = kPoint | kMinus | kComma | kSpace;
    classes[3] = kDigit;
    classes[4] = classes[6] = kLowerRowLetter;
    classes[5] = classes[7] = kUpperRowLetter;
    return classes;
}();

constexpr bool ClassifiesAllCharacters() {
    for (size_t i = 0; i < 256; ++i) {
        const auto c = static_cast<char>(i);
        const auto found = static_cast<uint8_t>(kClassesByLowHalf[i % 16] & kClassesByHighHalf[i / 16]);
        const bool isLetter = found == kUpperRowLetter || found == kLowerRowLetter;
        const bool isSpace = found == kSpace || found == kControl;
        const uint8_t single = c == '.'            ? kPoint
                               : c == '-'          ? kMinus
                               : c == ','          ? kComma
                               : isNumericDigit(c) ? kDigit
                                                   : 0;
        if (isLetter != IsCommandLetter(c) || isSpace != IsWhitespace(c)) return false;
        if (!isLetter && !isSpace && found != single) return false;
    }
    return true;
}
static_assert(ClassifiesAllCharacters());

/// The longest number, sign excluded, that `kNumberLayouts` describes.
constexpr size_t kLongestLayout = 7;

/// How a short number is converted from the eight characters that start before its first one: two words that
/// are loaded as one vector.
///
/// The first word has, for each byte of the result, the index of the character that it is taken from; its
/// lowest byte comes first. The digits, without the point, end in the last byte, and 0x80 stands for a 0 in
/// front of them. The second word is a double: the power of ten by which the digits, as an integer, are
/// divided.
using NumberLayout = std::array<uint64_t, 2>;

/// Indexed by the length of a number and the number of its digits before the point, which is the length when
/// it has no point.
alignas(16) inline constexpr auto kNumberLayouts = [] {
    std::array<std::array<NumberLayout, kLongestLayout + 1>, kLongestLayout + 1> layouts{};
    for (size_t length = 0; length <= kLongestLayout; ++length) {
        for (size_t integerDigits = 0; integerDigits <= length; ++integerDigits) {
            uint64_t shuffle = 0x8080808080808080;
            double divisor = 1;
            for (size_t from = 0; from < length; ++from) {
                if (from != integerDigits) shuffle = shuffle >> 8 | uint64_t{from + 1} << 56;
                if (from > integerDigits) divisor *= 10;
            }
            layouts[length][integerDigits] = {shuffle, std::bit_cast<uint64_t>(divisor)};
        }
    }
    return layouts;
}();

} // namespace ozm
