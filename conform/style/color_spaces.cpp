#include "style/color_spaces.h"

#include "geometry/text.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {
namespace {

double FromGammaOfA98(double value) { return std::copysign(std::pow(std::abs(value), 563.0 / 256), value); }
double FromGammaOfProPhoto(double value) {
    const double size = std::abs(value);
    return std::copysign(size <= 16.0 / 512 ? size / 16 : std::pow(size, 1.8), value);
}
double FromGammaOfRec2020(double value) {
    constexpr double kAlpha = 1.09929682680944, kBeta = 0.018053968510807;
    const double size = std::abs(value);
    return std::copysign(size < kBeta * 4.5 ? size / 4.5 : std::pow((size + kAlpha - 1) / kAlpha, 1 / 0.45),
                         value);
}
double Unchanged(double value) { return value; }

struct Matrix3 {
    double rows[3][3];
};
constexpr Matrix3 kUnit = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
constexpr Matrix3 kFromP3 = {
    {{1.22494018, -0.22494018, 0}, {-0.04205695, 1.04205695, 0}, {-0.01963755, -0.07863605, 1.0982736}}};
constexpr Matrix3 kFromXYZ = {{{3.24096994, -1.53738318, -0.49861076},
                               {-0.96924364, 1.8759675, 0.04155506},
                               {0.05563008, -0.20397696, 1.05697151}}};
constexpr Matrix3 kFromXYZRelativeToD50 = {{{3.13413585, -1.617386, -0.49066222},
                                            {-0.97879548, 1.91625438, 0.03344287},
                                            {0.07195539, -0.22897676, 1.40538604}}};

/// A colour space: how its components become linear, and the matrix from there to linear sRGB. The matrices
/// are products of those of CSS Color 4, section 18.
struct Space {
    std::string_view name;
    double (*toLinear)(double);
    Matrix3 matrix;
};

constexpr Space kSpaces[] = {
    {"srgb", LinearFromSRGB, kUnit},
    {"srgb-linear", Unchanged, kUnit},
    {"display-p3", LinearFromSRGB, kFromP3},
    {"display-p3-linear", Unchanged, kFromP3},
    {"a98-rgb", FromGammaOfA98, {{{1.39835574, -0.39835574, 0}, {0, 1, 0}, {0, -0.04292899, 1.04292899}}}},
    {"prophoto-rgb",
     FromGammaOfProPhoto,
     {{{2.03438085, -0.72763579, -0.30674506},
       {-0.22882573, 1.23174254, -0.00291681},
       {-0.00855883, -0.1532667, 1.16182553}}}},
    {"rec2020",
     FromGammaOfRec2020,
     {{{1.660491, -0.58764114, -0.07284986},
       {-0.12455047, 1.1328999, -0.00834942},
       {-0.01815076, -0.1005789, 1.11872966}}}},
    {"xyz", Unchanged, kFromXYZ},
    {"xyz-d65", Unchanged, kFromXYZ},
    {"xyz-d50", Unchanged, kFromXYZRelativeToD50},
};

/// The colour with these components in a linear space, and the matrix from there to linear sRGB.
Color FromLinearSpace(const double (&linear)[3], const Matrix3& matrix) {
    double mixed[3];
    for (size_t i = 0; i < 3; ++i) {
        const double(&row)[3] = matrix.rows[i];
        mixed[i] = row[0] * linear[0] + row[1] * linear[1] + row[2] * linear[2];
    }
    return FromLinear(mixed[0], mixed[1], mixed[2]);
}

} // namespace

double LinearFromSRGB(double value) {
    const double size = std::abs(value);
    return std::copysign(size <= 0.04045 ? size / 12.92 : std::pow((size + 0.055) / 1.055, 2.4), value);
}

double SRGBFromLinear(double value) {
    return value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
}

Color FromLinear(double r, double g, double b) {
    const auto byte = [](double value) {
        if (!(value > 0)) return uint8_t{0};
        return static_cast<uint8_t>(std::lround(255 * std::min(SRGBFromLinear(value), 1.0)));
    };
    return {byte(r), byte(g), byte(b), 1};
}

Color FromLab(double lightness, double a, double b) {
    const double y = (lightness + 16) / 116;
    const auto cube = [](double value) {
        constexpr double kEdge = 6.0 / 29;
        return value > kEdge ? value * value * value : 3 * kEdge * kEdge * (value - 4.0 / 29);
    };
    const double xyz[3] = {0.96422 * cube(y + a / 500), cube(y), 0.82521 * cube(y - b / 200)};
    return FromLinearSpace(xyz, kFromXYZRelativeToD50);
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

std::optional<Color> FromColorSpace(std::string_view space, const double (&components)[3]) {
    for (const Space& known : kSpaces) {
        if (!EqualsIgnoringCase(space, known.name)) continue;
        double linear[3];
        std::transform(components, components + 3, linear, known.toLinear);
        return FromLinearSpace(linear, known.matrix);
    }
    return {};
}

} // namespace ozm::conform
