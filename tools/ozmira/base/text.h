// Small pieces of text: numbers, names and counts as people read them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ozm::tool {

/// The shortest decimal text that reads back as the same number, whatever the locale; "inf", "-inf" or "nan".
std::string FormatNumber(double number);

/// A count in groups of three digits: 10,000,000.
std::string FormatCount(uint64_t count);

/// "1 picture", "12 pictures".
std::string CountOf(uint64_t count, std::string_view singular);

/// The text on one line: control characters are shown as \xHH.
std::string OnOneLine(std::string_view text);

/// How messages call an input: its path, or "standard input" for "-".
std::string InputName(std::string_view path);

/// The text with everything that is not UTF-8 replaced by U+FFFD, one for each maximal part of a character,
/// as the Unicode Standard recommends in its section on conformance.
std::string ValidUTF8(std::string_view text);

/// The text as a JSON string with its quotes, made UTF-8 as above.
std::string QuoteJSON(std::string_view text);

} // namespace ozm::tool
