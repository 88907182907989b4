#include "base/text.h"

#include <Ozmira/ozmStringUtils.h>

#include <array>
#include <charconv>
#include <cmath>

namespace ozm::tool {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

/// The UTF-8 character at the start of a text, or as much of it as is well-formed.
struct CharacterPrefix {
    size_t length;
    bool isComplete;
};

bool IsBetween(unsigned char byte, unsigned char first, unsigned char last) {
    return byte >= first && byte <= last;
}

/// Reads the character at the start of a text, which must not be empty. The ranges of the second byte rule
/// out overlong forms, surrogates and code points above U+10FFFF.
CharacterPrefix ReadCharacter(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {1, true};
    if (!IsBetween(lead, 0xC2, 0xF4)) return {1, false};
    const size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (text.size() < 2 || !IsBetween(byte(1), low, high)) return {1, false};
    for (size_t i = 2; i < length; ++i) {
        if (i >= text.size() || !IsBetween(byte(i), 0x80, 0xBF)) return {i, false};
    }
    return {length, true};
}

} // namespace

std::string FormatNumber(double number) {
    if (std::isnan(number)) return "nan";
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), result.ptr};
}

double ParseNumber(std::string_view text) {
    // The scanner skips what the caller must not have written. libc++ has no std::from_chars for doubles.
    if (text.empty() || IsWhitespace(text.front()) || text.front() == '+') return std::nan("");
    const StringView number = ScanScientificNumber(text);
    return number.length == text.size() ? number.toDouble() : std::nan("");
}

std::string FormatCount(uint64_t count) {
    std::string text = std::to_string(count);
    for (size_t at = text.size(); at > 3;) text.insert(at -= 3, 1, ',');
    return text;
}

std::string CountOf(uint64_t count, std::string_view singular) {
    return FormatCount(count) + ' ' + std::string(singular) + (count == 1 ? "" : "s");
}

std::string InLowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    }
    return lower;
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            line += c;
        } else {
            line += "\\x";
            line += kDigits[byte >> 4];
            line += kDigits[byte & 15];
        }
    }
    return line;
}

std::string InputName(std::string_view path) { return path == "-" ? "standard input" : OnOneLine(path); }

std::string ValidUTF8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const CharacterPrefix prefix = ReadCharacter(text);
        valid += prefix.isComplete ? text.substr(0, prefix.length) : kReplacementCharacter;
        text.remove_prefix(prefix.length);
    }
    return valid;
}

std::string QuoteJSON(std::string_view text) {
    constexpr std::string_view kSpecial = "\"\\\b\f\n\r\t", kLetters = "\"\\bfnrt";
    std::string quoted = "\"";
    for (const char c : ValidUTF8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (const size_t special = kSpecial.find(c); special != std::string_view::npos) {
            quoted += '\\';
            quoted += kLetters[special];
        } else if (byte < 0x20) {
            quoted += "\\u00";
            quoted += kDigits[byte >> 4];
            quoted += kDigits[byte & 15];
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

} // namespace ozm::tool
