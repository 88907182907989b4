// Small operations on the text of values.
#pragma once

#include "geometry/number_text.h"

#include <algorithm>
#include <string_view>

namespace ozm::conform {

/// The lower-case letter for an ASCII capital; other characters stay.
constexpr char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// The text without blanks at its ends.
constexpr std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    return text;
}

/// True when the text begins with `prefix`, whatever the case of ASCII letters.
constexpr bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char a, char b) { return ToLower(a) == ToLower(b); });
}
/// True when the text is `word`, whatever the case of ASCII letters.
constexpr bool EqualsIgnoringCase(std::string_view text, std::string_view word) {
    return text.size() == word.size() && StartsWithIgnoringCase(text, word);
}

/// Where `word` first stands in the text, whatever the case of ASCII letters; the size of the text if
/// nowhere.
constexpr size_t FindIgnoringCase(std::string_view text, std::string_view word) {
    const auto at = std::search(text.begin(), text.end(), word.begin(), word.end(),
                                [](char a, char b) { return ToLower(a) == ToLower(b); });
    return static_cast<size_t>(at - text.begin());
}

/// Takes the first word off a list that blanks and commas separate; empty at its end.
constexpr std::string_view NextWord(std::string_view& list) {
    const auto isSeparator = [](char c) { return IsSpace(c) || c == ','; };
    while (!list.empty() && isSeparator(list.front())) list.remove_prefix(1);
    size_t length = 0;
    while (length < list.size() && !isSeparator(list[length])) ++length;
    const std::string_view word = list.substr(0, length);
    list.remove_prefix(length);
    return word;
}

} // namespace ozm::conform
