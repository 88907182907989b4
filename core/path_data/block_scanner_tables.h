#pragma once

#include "path_data/command_letters.h"

#include <Ozmira/ozmStringUtils.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

// Tables of the vector code that scans path data. They are the same for all instruction sets.

namespace ozm {

/// The classes of characters in path data, one bit each. Each half of a character's code selects an entry of
/// a table; the class is the bit that both entries have in common, if any (Langdale and Lemire, "Parsing
/// Gigabytes of JSON per Second", 2019).
enum CharacterClass : uint8_t {
    kDigit = 0x80,
    kPoint = 0x40,
    kMinus = 0x20,
    kComma = 0x10,
    kLetterPToZ = 0x08, ///< A command letter from P to Z, in either case.
    kLetterAToO = 0x04, ///< A command letter from A to O, in either case.
    kSpace = 0x02,
    kControl = 0x01, ///< Whitespace from tab to carriage return.
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
    add("qstvz", kLetterPToZ);
    add("achlm", kLetterAToO);
    add(" ", kSpace);
    add("\t\n\v\f\r", kControl);
    return classes;
}();

alignas(16) inline constexpr auto kClassesByHighHalf = [] {
    std::array<uint8_t, 16> classes{};
    classes[0] = kControl;
    classes[2] = kPoint | kMinus | kComma | kSpace;
    classes[3] = kDigit;
    classes[4] = classes[6] = kLetterAToO;
    classes[5] = classes[7] = kLetterPToZ;
    return classes;
}();

/// Whether the tables yield the right class for every character.
constexpr bool ClassifiesAllCharacters() {
    for (size_t i = 0; i < 256; ++i) {
        const auto c = static_cast<char>(i);
        const auto found = static_cast<uint8_t>(kClassesByLowHalf[i % 16] & kClassesByHighHalf[i / 16]);
        const bool isLetter = found == kLetterPToZ || found == kLetterAToO;
        const bool isSpace = found == kSpace || found == kControl;
        const uint8_t otherClass = c == '.'            ? kPoint
                                   : c == '-'          ? kMinus
                                   : c == ','          ? kComma
                                   : isNumericDigit(c) ? kDigit
                                                       : 0;
        if (isLetter != IsCommandLetter(c) || isSpace != IsWhitespace(c)) return false;
        if (!isLetter && !isSpace && found != otherClass) return false;
    }
    return true;
}
static_assert(ClassifiesAllCharacters());

/// The length of the longest number that `kNumberLayouts` describes, without its sign.
constexpr size_t kMaxLayoutLength = 7;

/// How to convert a short number from eight characters, the first of which precedes the number: two words
/// that are loaded as one vector.
///
/// The first word is a byte shuffle, lowest byte first: for each byte of the result, the index of the
/// character that is moved there. It removes the point, moves the last digit into the last byte and, with the
/// index 0x80, puts zeros before the first digit. The second word is a double: the power of ten by which the
/// integer that the digits form is divided.
using NumberLayout = std::array<uint64_t, 2>;

/// Indexed by the length of a number, without its sign, and by the number of digits before its point. Without
/// a point, both are equal.
alignas(16) inline constexpr auto kNumberLayouts = [] {
    std::array<std::array<NumberLayout, kMaxLayoutLength + 1>, kMaxLayoutLength + 1> layouts{};
    for (size_t length = 0; length <= kMaxLayoutLength; ++length) {
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
