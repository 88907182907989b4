#include "style/computed_value.h"

#include "geometry/number_text.h"
#include "geometry/text.h"

#include <algorithm>
#include <iterator>

namespace ozm::conform {
namespace {

constexpr std::string_view kFunctions[] = {
    "calc(",   "min(",        "max(",         "clamp(",          "env(", "attr(",    "round(",
    "hypot(",  "color-mix(",  "light-dark(",  "contrast-color(", "3d(",  "rotatex(", "rotatey(",
    "scalez(", "translatez(", "perspective(", "(from "};

constexpr std::string_view kUnits[] = {"vw", "vh",  "vmin", "vmax", "vi", "vb",
                                       "ch", "cap", "ic",   "lh",   "rlh"};

constexpr std::string_view kSystemColors[] = {
    "accentcolor", "accentcolortext", "activetext",       "buttonborder", "buttonface",
    "buttontext",  "canvas",          "canvastext",       "field",        "fieldtext",
    "graytext",    "highlight",       "highlighttext",    "linktext",     "mark",
    "marktext",    "selecteditem",    "selecteditemtext", "visitedtext"};

bool Contains(std::string_view text, std::string_view word) {
    const auto isSame = [](char a, char b) { return ToLower(a) == b; };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) != text.end();
}

/// True for a list with a number in one of the units.
bool HasUnit(std::string_view list) {
    for (std::string_view word = NextWord(list); !word.empty(); word = NextWord(list)) {
        const char* p = word.data();
        const char* const end = p + word.size();
        double number = 0;
        if (!ReadNumber(p, end, number) || p == end) continue;
        const std::string_view unit(p, static_cast<size_t>(end - p));
        const bool isKnown = std::any_of(std::begin(kUnits), std::end(kUnits), [&](std::string_view known) {
            return EqualsIgnoringCase(unit, known);
        });
        if (isKnown) return true;
    }
    return false;
}

} // namespace

bool IsComputedByBrowsers(std::string_view value) {
    if (value.empty()) return false;
    if (value.find('(') != std::string_view::npos) {
        return std::any_of(std::begin(kFunctions), std::end(kFunctions),
                           [&](std::string_view function) { return Contains(value, function); });
    }
    if (value.front() == '#') return false;
    const bool isLetter = ToLower(value.front()) >= 'a' && ToLower(value.front()) <= 'z';
    if (!isLetter) return ToLower(value.back()) >= 'a' && HasUnit(value);
    return std::any_of(std::begin(kSystemColors), std::end(kSystemColors),
                       [&](std::string_view color) { return EqualsIgnoringCase(value, color); });
}

} // namespace ozm::conform
