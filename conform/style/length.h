#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ozm::conform {

/// Where a length's size comes from.
enum class Unit : uint8_t { User, Percent, Em, Ex, Rem };

/// A number with a unit; absolute units are user units already.
struct CssLength {
    double value = 0;
    Unit unit = Unit::User;
};

/// What relative lengths are relative to.
struct LengthBase {
    double percent = 0; ///< What 100 % are.
    double fontSize = 16;
    double rootFontSize = 16;
};

/// Reads a length: a number and a unit in any case, with blanks around. None for anything else.
std::optional<CssLength> ReadLength(std::string_view text);

/// The length in user units.
double Resolve(CssLength length, const LengthBase& base);

/// Reads a number, or a percentage as a share of 1, cut to 0...1.
std::optional<double> ReadShare(std::string_view text);

/// Reads one number with blanks around.
std::optional<double> ReadPlainNumber(std::string_view text);

} // namespace ozm::conform
