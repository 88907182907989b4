#include "style/media_query.h"

#include "geometry/text.h"

#include <algorithm>

namespace ozm::conform {
namespace {

/// Deepest nesting of parentheses, as reading them recurses; what is deeper does not apply.
constexpr int kDeepestParenthesis = 8;

/// The bytes up to the parenthesis that closes the one at the start, or all.
size_t ParenthesisLength(std::string_view text) {
    size_t length = 0;
    int depth = 0;
    do {
        if (text[length] == '(') ++depth;
        if (text[length] == ')') --depth;
        ++length;
    } while (depth > 0 && length < text.size());
    return length;
}

/// Takes a word off the front of a query; a parenthesis with what is in it counts as one.
std::string_view TakeWord(std::string_view& query) {
    query = Trim(query);
    size_t length = 0;
    if (query.starts_with('(')) {
        length = ParenthesisLength(query);
    } else {
        while (length < query.size() && !IsSpace(query[length]) && query[length] != '(') ++length;
    }
    const std::string_view word = query.substr(0, length);
    query.remove_prefix(length);
    return word;
}

bool HasFeature(std::string_view feature) {
    const size_t colon = std::min(feature.find(':'), feature.size());
    const std::string_view name = Trim(feature.substr(0, colon));
    const std::string_view value = Trim(feature.substr(std::min(colon + 1, feature.size())));
    constexpr struct {
        std::string_view name, value;
    } kFeatures[] = {{"prefers-color-scheme", "light"},
                     {"prefers-reduced-motion", "no-preference"},
                     {"prefers-contrast", "no-preference"},
                     {"forced-colors", "none"},
                     {"inverted-colors", "none"},
                     {"scripting", "none"},
                     {"color", ""}};
    for (const auto& known : kFeatures) {
        if (EqualsIgnoringCase(name, known.name)) return EqualsIgnoringCase(value, known.value);
    }
    return false;
}

bool Meets(std::string_view query, int depth);

bool MeetsParenthesis(std::string_view text, int depth) {
    text = Trim(text.substr(1, text.size() - (text.ends_with(')') ? 2 : 1)));
    const bool isCondition = text.starts_with('(') || StartsWithIgnoringCase(text, "not");
    return isCondition ? depth < kDeepestParenthesis && Meets(text, depth + 1) : HasFeature(text);
}

bool Meets(std::string_view query, int depth) {
    bool isMet = true, isNegated = false, isAlternative = false;
    for (std::string_view word = TakeWord(query); !word.empty(); word = TakeWord(query)) {
        if (EqualsIgnoringCase(word, "not")) {
            isNegated = true;
        } else if (EqualsIgnoringCase(word, "or")) {
            isAlternative = true;
        } else if (word.starts_with('(')) {
            const bool isTrue = MeetsParenthesis(word, depth);
            isMet = isAlternative ? isMet || isTrue : isMet && isTrue;
        } else if (!EqualsIgnoringCase(word, "only") && !EqualsIgnoringCase(word, "and")) {
            isMet &= EqualsIgnoringCase(word, "all") || EqualsIgnoringCase(word, "screen");
        }
    }
    return isMet != isNegated;
}

} // namespace

bool MeetsMediaQuery(std::string_view list) {
    if (Trim(list).empty()) return true;
    while (!list.empty()) {
        const size_t comma = std::min(list.find(','), list.size());
        if (Meets(list.substr(0, comma), 0)) return true;
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
    return false;
}

} // namespace ozm::conform
