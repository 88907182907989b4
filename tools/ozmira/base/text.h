// Formats numbers, counts and names for people, and strings for JSON; texts as bytes and in lower case.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ozm::tool {

/// The shortest decimal text that reads back as the same number, whatever the locale; "inf", "-inf" or "nan".
std::string FormatNumber(double number);

/// The number that the whole text is. Returns NaN, which no range contains, for any other text.
double ParseNumber(std::string_view text);

/// A count in groups of three digits: 10,000,000.
std::string FormatCount(uint64_t count);

/// "1 picture", "12 pictures".
std::string CountOf(uint64_t count, std::string_view singular);

/// The text with the letters A to Z in lower case.
std::string InLowerCase(std::string_view text);

/// The bytes of a text, which is borrowed.
inline std::span<const uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

/// The text with control characters written as \xHH, so that it stays on one line.
std::string OnOneLine(std::string_view text);

/// The name of an input in messages: its path, or "standard input" for "-".
std::string InputName(std::string_view path);

/// The text with everything that is not UTF-8 replaced by U+FFFD: one for each maximal subpart of a
/// character, as the Unicode Standard recommends in its chapter on conformance.
std::string ValidUTF8(std::string_view text);

/// The text as a JSON string including the quotes, made valid UTF-8 by `ValidUTF8`.
std::string QuoteJSON(std::string_view text);

} // namespace ozm::tool
