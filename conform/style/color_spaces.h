// Colours outside of sRGB, cut to it as browsers do.
#pragma once

#include "style/color.h"

namespace ozm::conform {

/// Of CIE Lab: lightness 0...100, white being that of D50.
Color FromLab(double lightness, double a, double b);
/// Of Oklab: lightness 0...1.
Color FromOklab(double lightness, double a, double b);
/// Of linear sRGB.
Color FromLinear(double r, double g, double b);

} // namespace ozm::conform
