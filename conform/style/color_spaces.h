// Colours outside of sRGB, cut to it as browsers do.
#pragma once

#include "style/color.h"

#include <optional>
#include <string_view>

namespace ozm::conform {

/// A component of sRGB as light, and back.
double LinearFromSRGB(double value);
double SRGBFromLinear(double value);

/// Of CIE Lab: lightness 0...100, white being that of D50.
Color FromLab(double lightness, double a, double b);
/// Of Oklab: lightness 0...1.
Color FromOklab(double lightness, double a, double b);
/// Of linear sRGB.
Color FromLinear(double r, double g, double b);
/// Of one of the spaces that `color()` names, in any case; none for other names. The components are shares
/// of 1.
std::optional<Color> FromColorSpace(std::string_view space, const double (&components)[3]);

} // namespace ozm::conform
