#pragma once

#include <Ozmira/OzmiraExport.h>

#include <array>
#include <concepts>
#include <cstdint>
#include <string_view>

namespace ozm {

/// True for the whitespace of every value syntax: the bytes 9 to 13 and 32, whatever the locale.
constexpr bool IsWhitespace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The digits of decimal numbers.
inline constexpr std::string_view numericDigitCharacters = "0123456789";
/// The digits of hexadecimal numbers.
inline constexpr std::string_view hexAlphaDigitCharacters = "aAbBcCdDeEfF0123456789";

/// True for the characters of `numericDigitCharacters`.
constexpr bool isNumericDigit(char c) {
    return c >= numericDigitCharacters.front() && c <= numericDigitCharacters.back();
}

/// Indexed by byte: whether it is one of `hexAlphaDigitCharacters`.
inline constexpr auto kIsHexDigit = [] {
    std::array<bool, 256> isHexDigit{};
    for (const char c : hexAlphaDigitCharacters) isHexDigit[static_cast<unsigned char>(c)] = true;
    return isHexDigit;
}();

/// True for the characters of `hexAlphaDigitCharacters`.
constexpr bool isHexDigit(char c) { return kIsHexDigit[static_cast<unsigned char>(c)]; }

/// A non-owning view of characters. They may be any bytes and are not NUL-terminated.
struct OZM_CXX_EXPORT StringView {
    const char* data = nullptr; ///< First character; may be null when `length` is 0.
    uint64_t length = 0;        ///< Number of characters.

    constexpr StringView() = default;
    constexpr StringView(const char* first, uint64_t count) : data(first), length(count) {}
    /// A view of a literal, a `std::string` or a `std::string_view`, which has to outlive the view.
    template <std::convertible_to<std::string_view> Text>
    constexpr StringView(const Text& text)
        : data(std::string_view(text).data()), length(std::string_view(text).size()) {}

    constexpr operator std::string_view() const { return {data, static_cast<size_t>(length)}; }
    constexpr const char* begin() const { return data; }
    constexpr const char* end() const { return data + length; }
    constexpr bool empty() const { return length == 0; }

    /// The view without its first `count` characters; a null view when `count` exceeds the length.
    constexpr StringView CutFront(uint64_t count) const {
        return count > length ? StringView() : StringView(data + count, length - count);
    }

    /// The view without its leading whitespace.
    constexpr StringView TrimLeadingWhitespace() const {
        uint64_t count = 0;
        while (count < length && IsWhitespace(data[count])) ++count;
        return CutFront(count);
    }

    /// The view without its trailing whitespace.
    constexpr StringView TrimTrailingWhitespace() const {
        uint64_t count = length;
        while (count > 0 && IsWhitespace(data[count - 1])) --count;
        return {data, count};
    }

    /// True if the view begins with exactly these bytes.
    constexpr bool HasPrefix(std::string_view prefix) const {
        return std::string_view(*this).substr(0, prefix.size()) == prefix;
    }

    /// As `HasPrefix`, ignoring the case of ASCII letters. `lowerCasePrefix` must not contain upper-case
    /// letters.
    constexpr bool HasPrefixIgnoringCase(std::string_view lowerCasePrefix) const {
        if (length < lowerCasePrefix.size()) return false;
        for (size_t i = 0; i < lowerCasePrefix.size(); ++i) {
            const char c = data[i];
            const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            if (lower != lowerCasePrefix[i]) return false;
        }
        return true;
    }

    /// The result of `strtod` in the "C" locale, whatever the locale of the process. Leading whitespace and
    /// anything after the number are ignored; text without a number yields 0.0. Where `strtod` reports a
    /// range error, overflow as well as underflow, the result is 0.0.
    double toDouble() const;

    /// True for equal lengths and equal bytes.
    template <std::convertible_to<std::string_view> Text>
    friend constexpr bool operator==(StringView a, const Text& b) {
        return std::string_view(a) == std::string_view(b);
    }
};

/// Scans one number with an optional sign, fraction and exponent at the start of `text`, after optional
/// whitespace. Returns the view from the start of `text`, whitespace included, to the end of the number,
/// which `toDouble` converts. Returns a view of length 0 at the start of `text` if there is no number, or one
/// with an `e` but no exponent digits.
OZM_CXX_EXPORT StringView ScanScientificNumber(StringView text);

} // namespace ozm
