#include "style/color_matrix.h"

#include "geometry/number_text.h"
#include "geometry/text.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace ozm::conform {
namespace {

/// How much red, green and blue are seen as light.
constexpr double kLight[3] = {0.213, 0.715, 0.072};

double ToLinear(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}
double FromLinear(double value) {
    return value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
}

std::vector<double> ReadNumbers(std::string_view text) {
    std::vector<double> numbers;
    for (std::string_view word = NextWord(text); !word.empty(); word = NextWord(text)) {
        double number = 0;
        const char* p = word.data();
        if (!ReadNumber(p, word.data() + word.size(), number)) break;
        numbers.push_back(number);
    }
    return numbers;
}

/// The identity, with a matrix of three by three for the colours.
std::array<double, 20> FromColors(const double (&m)[3][3]) {
    std::array<double, 20> values{};
    for (size_t row = 0; row < 3; ++row)
        std::copy(m[row], m[row] + 3, values.begin() + static_cast<ptrdiff_t>(row) * 5);
    values[18] = 1;
    return values;
}

std::array<double, 20> Saturation(double s) {
    double m[3][3];
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            m[row][column] = kLight[column] * (1 - s) + (row == column ? s : 0);
        }
    }
    return FromColors(m);
}

std::array<double, 20> HueRotation(double degrees) {
    const double c = std::cos(degrees * std::numbers::pi / 180),
                 s = std::sin(degrees * std::numbers::pi / 180);
    constexpr double kCos[3][3] = {{0.787, -0.715, -0.072}, {-0.213, 0.285, -0.072}, {-0.213, -0.715, 0.928}};
    constexpr double kSin[3][3] = {{-0.213, -0.715, 0.928}, {0.143, 0.140, -0.283}, {-0.787, 0.715, 0.072}};
    double m[3][3];
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            m[row][column] = kLight[column] + c * kCos[row][column] + s * kSin[row][column];
        }
    }
    return FromColors(m);
}

} // namespace

Color ColorMatrix::Apply(const Color& color) const {
    double in[3] = {color.r / 255.0, color.g / 255.0, color.b / 255.0};
    if (isLinear) std::transform(std::begin(in), std::end(in), std::begin(in), ToLinear);
    const auto component = [&](size_t row) {
        const double* const m = &values[row * 5];
        const double value =
            std::clamp(m[0] * in[0] + m[1] * in[1] + m[2] * in[2] + m[3] * color.alpha + m[4], 0.0, 1.0);
        return static_cast<uint8_t>(std::lround(255 * (isLinear ? FromLinear(value) : value)));
    };
    return {component(0), component(1), component(2), std::clamp(color.alpha * values[18], 0.0, 1.0)};
}

std::optional<ColorMatrix> ReadColorMatrix(std::string_view type, std::string_view values, bool isLinear) {
    const std::vector<double> numbers = ReadNumbers(values);
    ColorMatrix matrix;
    matrix.isLinear = isLinear;
    if (type == "saturate") {
        matrix.values = Saturation(numbers.empty() ? 1 : numbers[0]);
    } else if (type == "hueRotate") {
        matrix.values = HueRotation(numbers.empty() ? 0 : numbers[0]);
    } else if (type.empty() || type == "matrix") {
        if (numbers.size() != 20) return {};
        std::copy(numbers.begin(), numbers.end(), matrix.values.begin());
    } else {
        return {};
    }
    const std::array<double, 20>& v = matrix.values;
    const bool keepsAlpha = v[15] == 0 && v[16] == 0 && v[17] == 0 && v[19] == 0;
    return keepsAlpha ? std::optional(matrix) : std::nullopt;
}

} // namespace ozm::conform
