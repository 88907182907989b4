#pragma once

#include <string>
#include <string_view>

namespace ozm::conform {

/// Appends the number rounded to `decimals` places (0...15), as short as can be: no exponent, no plus sign,
/// no zeros that say nothing, not even before the point. -0 is 0, and so is what is not a number. Magnitudes
/// beyond 1e18 are cut to it.
void WriteNumber(double value, int decimals, std::string& out);

/// Appends the number rounded to `digits` significant digits (1...17) but at most `maxDecimals` places, in
/// the same form.
void WriteSignificant(double value, int digits, int maxDecimals, std::string& out);

/// Reads one number of SVG as browsers do: optional sign, digits with an optional fraction (a point needs
/// digits after it), optional exponent; magnitudes in the range of `float`. Advances `p` past the number;
/// false without moving it when there is none. An exponent that lacks its digits is an error, but "em" and
/// "ex" begin a unit.
bool ReadNumber(const char*& p, const char* end, double& value);

/// Space, tab, line feed, form feed and carriage return.
constexpr bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; }
inline void SkipSpaces(const char*& p, const char* end) {
    while (p != end && IsSpace(*p)) ++p;
}
/// Skips spaces and at most one comma among them; true when there was a comma.
inline bool SkipSpacesAndComma(const char*& p, const char* end) {
    SkipSpaces(p, end);
    if (p == end || *p != ',') return false;
    ++p;
    SkipSpaces(p, end);
    return true;
}

} // namespace ozm::conform
