#include "style/color_matrix.h"

#include "geometry/css_units.h"
#include "geometry/number_text.h"
#include "geometry/text.h"
#include "style/color_spaces.h"
#include "style/length.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace ozm::conform {
namespace {

/// How much red, green and blue are seen as light.
constexpr double kLight[3] = {0.213, 0.715, 0.072};

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

/// Of Filter Effects, section 13.
std::array<double, 20> Sepia(double share) {
    constexpr double kSepia[3][3] = {{0.393, 0.769, 0.189}, {0.349, 0.686, 0.168}, {0.272, 0.534, 0.131}};
    double m[3][3];
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) {
            m[row][column] = kSepia[row][column] * share + (row == column ? 1 - share : 0);
        }
    }
    return FromColors(m);
}

/// The matrix of `hue-rotate()`; none for an angle that is not valid.
std::optional<std::array<double, 20>> ReadHueRotation(std::string_view text) {
    const char* p = text.data();
    const char* const end = p + text.size();
    double angle = 0;
    if (!text.empty() && !ReadNumber(p, end, angle)) return {};
    const std::optional<double> unit = AngleUnit({p, static_cast<size_t>(end - p)});
    if (angle != 0 && !unit) return {};
    return HueRotation(angle * unit.value_or(0));
}

/// Reads the amount of a filter function: a number or a percentage, and 1 where it is left out.
std::optional<double> ReadAmount(std::string_view text) {
    const bool isPercent = text.ends_with('%');
    if (isPercent) text.remove_suffix(1);
    const std::optional<double> number = text.empty() ? 1 : ReadPlainNumber(text);
    if (!number || *number < 0) return {};
    return isPercent ? *number / 100 : *number;
}

/// Multiplies every colour, adds to it, and multiplies the alpha.
std::array<double, 20> Scaling(double slope, double intercept, double alpha) {
    std::array<double, 20> values{};
    for (size_t row = 0; row < 3; ++row) {
        values[row * 6] = slope;
        values[row * 5 + 4] = intercept;
    }
    values[18] = alpha;
    return values;
}

} // namespace

Color ColorMatrix::Apply(const Color& color) const {
    double in[3] = {color.r / 255.0, color.g / 255.0, color.b / 255.0};
    if (isLinear) std::transform(std::begin(in), std::end(in), std::begin(in), LinearFromSRGB);
    const auto component = [&](size_t row) {
        const double* const m = &values[row * 5];
        const double value =
            std::clamp(m[0] * in[0] + m[1] * in[1] + m[2] * in[2] + m[3] * color.alpha + m[4], 0.0, 1.0);
        return static_cast<uint8_t>(std::lround(255 * (isLinear ? SRGBFromLinear(value) : value)));
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

std::optional<ColorMatrix> ReadFilterFunction(std::string_view text) {
    const size_t open = text.find('(');
    if (open == std::string_view::npos || text.find(')') != text.size() - 1) return {};
    const std::string_view name = text.substr(0, open);
    const std::string_view inner = Trim(text.substr(open + 1, text.size() - open - 2));
    ColorMatrix matrix;
    matrix.isLinear = false;
    if (EqualsIgnoringCase(name, "hue-rotate")) {
        const std::optional<std::array<double, 20>> rotation = ReadHueRotation(inner);
        if (!rotation) return {};
        matrix.values = *rotation;
        return matrix;
    }
    const std::optional<double> read = ReadAmount(inner);
    if (!read) return {};
    const double amount = *read, share = std::min(amount, 1.0);
    if (EqualsIgnoringCase(name, "grayscale")) {
        matrix.values = Saturation(1 - share);
    } else if (EqualsIgnoringCase(name, "saturate")) {
        matrix.values = Saturation(amount);
    } else if (EqualsIgnoringCase(name, "sepia")) {
        matrix.values = Sepia(share);
    } else if (EqualsIgnoringCase(name, "invert")) {
        matrix.values = Scaling(1 - 2 * share, share, 1);
    } else if (EqualsIgnoringCase(name, "brightness")) {
        matrix.values = Scaling(amount, 0, 1);
    } else if (EqualsIgnoringCase(name, "contrast")) {
        matrix.values = Scaling(amount, (1 - amount) / 2, 1);
    } else if (EqualsIgnoringCase(name, "opacity")) {
        matrix.values = Scaling(1, 0, share);
    } else {
        return {};
    }
    return matrix;
}

} // namespace ozm::conform
