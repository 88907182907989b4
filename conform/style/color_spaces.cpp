#include "style/color_spaces.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {

Color FromLinear(double r, double g, double b) {
    const auto byte = [](double value) {
        value = value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
        return static_cast<uint8_t>(std::lround(255 * std::clamp(value, 0.0, 1.0)));
    };
    return {byte(r), byte(g), byte(b), 1};
}

Color FromLab(double lightness, double a, double b) {
    const double y = (lightness + 16) / 116;
    const auto cube = [](double value) {
        constexpr double kEdge = 6.0 / 29;
        return value > kEdge ? value * value * value : 3 * kEdge * kEdge * (value - 4.0 / 29);
    };
    // XYZ relative to D50, and from there to linear sRGB in one step.
    const double X = 0.96422 * cube(y + a / 500), Y = cube(y), Z = 0.82521 * cube(y - b / 200);
    return FromLinear(3.1338561 * X - 1.6168667 * Y - 0.4906146 * Z,
                      -0.9787684 * X + 1.9161415 * Y + 0.0334540 * Z,
                      0.0719453 * X - 0.2289914 * Y + 1.4052427 * Z);
}

Color FromOklab(double lightness, double a, double b) {
    const auto cube = [](double value) { return value * value * value; };
    const double l = cube(lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = cube(lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = cube(lightness - 0.0894841775 * a - 1.2914855480 * b);
    return FromLinear(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
                      -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
                      -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s);
}

} // namespace ozm::conform
