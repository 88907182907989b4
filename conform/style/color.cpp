#include "style/color.h"

#include "geometry/css_units.h"
#include "geometry/number_text.h"
#include "geometry/text.h"
#include "style/color_spaces.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace ozm::conform {
namespace {

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<Color> ReadHexadecimal(std::string_view digits) {
    std::array<int, 8> values{};
    if (digits.size() < 3 || digits.size() > 8) return {};
    for (size_t i = 0; i < digits.size(); ++i) {
        values[i] = HexDigit(digits[i]);
        if (values[i] < 0) return {};
    }
    const bool isShort = digits.size() <= 4;
    const auto component = [&](size_t i) {
        return isShort ? values[i] * 17 : values[2 * i] * 16 + values[2 * i + 1];
    };
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(component(i)); };
    switch (digits.size()) {
    case 3:
    case 6: return Color{byte(0), byte(1), byte(2), 1};
    case 4:
    case 8: return Color{byte(0), byte(1), byte(2), component(3) / 255.0};
    default: return {};
    }
}

std::optional<Color> ReadName(std::string_view text) {
    std::array<char, 24> lower{};
    if (text.empty() || text.size() > lower.size()) return {};
    std::transform(text.begin(), text.end(), lower.begin(), ToLower);
    const std::string_view name(lower.data(), text.size());
    if (name == "transparent") return Color{0, 0, 0, 0};
    if (name == "rebeccapurple") return Color{0x66, 0x33, 0x99, 1};
    ozm::Color found{};
    if (!SVGParser().ParseCSSColorNamedColor(name, found)) return {};
    const auto byte = [](double value) { return static_cast<uint8_t>(std::lround(value * 255)); };
    return Color{byte(found.r), byte(found.g), byte(found.b), 1};
}

uint8_t ToByte(double value) { return static_cast<uint8_t>(std::lround(std::clamp(value, 0.0, 255.0))); }

/// An argument of a colour function.
struct Argument {
    enum class Unit { Number, Percent, Degrees, None } unit = Unit::Number;
    double value = 0;

    /// A share from 0 to 1, a number being one of `whole`.
    double ShareOf(double whole) const { return value / (unit == Unit::Percent ? 100 : whole); }
};

std::optional<Argument> ReadArgument(const char*& p, const char* end) {
    Argument argument;
    if (!ReadNumber(p, end, argument.value)) {
        if (!StartsWithIgnoringCase({p, static_cast<size_t>(end - p)}, "none")) return {};
        p += 4;
        argument.unit = Argument::Unit::None;
        return argument;
    }
    const char* const unit = p;
    while (p != end && (*p == '%' || (*p >= 'a' && *p <= 'z') || (*p >= 'A' && *p <= 'Z'))) ++p;
    const std::string_view name(unit, static_cast<size_t>(p - unit));
    if (name.empty()) return argument;
    if (name == "%") {
        argument.unit = Argument::Unit::Percent;
        return argument;
    }
    argument.unit = Argument::Unit::Degrees;
    const std::optional<double> degrees = AngleUnit(name);
    if (!degrees) return {};
    argument.value *= *degrees;
    return argument;
}

/// The three or four arguments between the parentheses, separated by commas throughout, or by blanks with a
/// slash before the alpha.
struct Arguments {
    std::array<Argument, 4> values;
    bool hasAlpha = false;
    bool hasCommas = false; ///< In the older syntax all three are of the same kind.
};

std::optional<Arguments> ReadArguments(std::string_view text) {
    Arguments arguments;
    const char* p = text.data();
    const char* const end = p + text.size();
    bool hasCommas = false;
    for (size_t i = 0; i < 4; ++i) {
        SkipSpaces(p, end);
        if (i == 3 && p == end) return arguments;
        if (i > 0) {
            const char separator = p != end ? *p : ' ';
            if (i == 1) arguments.hasCommas = hasCommas = separator == ',';
            if (hasCommas ? separator != ',' : (i == 3 && separator != '/')) return {};
            if (hasCommas || i == 3) ++p;
            SkipSpaces(p, end);
        }
        const std::optional<Argument> argument = ReadArgument(p, end);
        if (!argument || (hasCommas && argument->unit == Argument::Unit::None)) return {};
        arguments.values[i] = *argument;
    }
    arguments.hasAlpha = true;
    SkipSpaces(p, end);
    return p == end ? std::optional(arguments) : std::nullopt;
}

/// A fully saturated colour of this hue, mixed.
Color FromHue(double degrees, auto&& mix) {
    const auto component = [&](double n) {
        double k = std::fmod(n + degrees / 30, 12);
        if (k < 0) k += 12;
        return ToByte(255 * mix(std::clamp(std::min(k - 3, 9 - k), -1.0, 1.0)));
    };
    return {component(0), component(8), component(4), 1};
}

/// A colour by lightness and two more coordinates, which for lch() and oklch() are a distance and an angle.
std::optional<Color> ReadLab(std::string_view name, const Arguments& arguments) {
    const bool isOk = StartsWithIgnoringCase(name, "ok");
    if (isOk) name.remove_prefix(2);
    const bool isPolar = EqualsIgnoringCase(name, "lch");
    if ((!isPolar && !EqualsIgnoringCase(name, "lab")) || arguments.hasCommas) return {};
    const auto& [first, second, third, last] = arguments.values;
    const auto scaled = [](const Argument& argument, double whole) {
        return argument.unit == Argument::Unit::Percent ? argument.value / 100 * whole : argument.value;
    };
    const double lightness = std::clamp(scaled(first, isOk ? 1 : 100), 0.0, isOk ? 1.0 : 100.0);
    double a = scaled(second, isOk ? 0.4 : isPolar ? 150 : 125), b = scaled(third, isOk ? 0.4 : 125);
    if (isPolar) {
        const double angle = third.value * std::numbers::pi / 180, chroma = std::max(0.0, a);
        a = chroma * std::cos(angle);
        b = chroma * std::sin(angle);
    }
    return isOk ? FromOklab(lightness, a, b) : FromLab(lightness, a, b);
}

/// A colour by the name of its colour space and three components.
std::optional<Color> ReadInSpace(std::string_view text) {
    text = Trim(text);
    const std::string_view space = text.substr(0, std::min(text.find_first_of(" \t\r\n\f"), text.size()));
    const std::optional<Arguments> arguments = ReadArguments(text.substr(space.size()));
    if (!arguments || arguments->hasCommas) return {};
    double components[3];
    for (size_t i = 0; i < 3; ++i) {
        if (arguments->values[i].unit == Argument::Unit::Degrees) return {};
        components[i] = arguments->values[i].ShareOf(1);
    }
    std::optional<Color> color = FromColorSpace(space, components);
    if (color && arguments->hasAlpha) color->alpha = std::clamp(arguments->values[3].ShareOf(1), 0.0, 1.0);
    return color;
}

std::optional<Color> ReadFunction(std::string_view name, std::string_view text) {
    if (EqualsIgnoringCase(name, "color")) return ReadInSpace(text);
    const std::optional<Arguments> arguments = ReadArguments(text);
    if (!arguments) return {};
    const auto& [first, second, third, last] = arguments->values;
    Color color;
    if (EqualsIgnoringCase(name, "rgb") || EqualsIgnoringCase(name, "rgba")) {
        const bool isMixed = first.unit != second.unit || second.unit != third.unit;
        if (isMixed && arguments->hasCommas) return {};
        const auto byte = [](const Argument& argument) { return ToByte(255 * argument.ShareOf(255)); };
        color = {byte(first), byte(second), byte(third), 1};
    } else if (EqualsIgnoringCase(name, "hsl") || EqualsIgnoringCase(name, "hsla")) {
        const bool hasPercentages =
            second.unit == Argument::Unit::Percent && third.unit == Argument::Unit::Percent;
        if (arguments->hasCommas && !hasPercentages) return {};
        const double saturation = std::clamp(second.ShareOf(100), 0.0, 1.0);
        const double lightness = std::clamp(third.ShareOf(100), 0.0, 1.0);
        const double chroma = saturation * std::min(lightness, 1 - lightness);
        color = FromHue(first.value, [&](double k) { return lightness - chroma * k; });
    } else if (EqualsIgnoringCase(name, "hwb")) {
        if (arguments->hasCommas) return {};
        double white = std::max(0.0, second.ShareOf(100)), black = std::max(0.0, third.ShareOf(100));
        if (const double sum = white + black; sum > 1) {
            white /= sum;
            black /= sum;
        }
        color = FromHue(first.value, [&](double k) { return white + (1 - white - black) * (0.5 - 0.5 * k); });
    } else if (const std::optional<Color> lab = ReadLab(name, *arguments)) {
        color = *lab;
    } else {
        return {};
    }
    if (arguments->hasAlpha) color.alpha = std::clamp(last.ShareOf(1), 0.0, 1.0);
    return color;
}

} // namespace

std::optional<Color> ReadColor(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('#')) return ReadHexadecimal(text.substr(1));
    const size_t open = text.find('(');
    if (open == std::string_view::npos) return ReadName(text);
    if (!text.ends_with(')')) return {};
    return ReadFunction(text.substr(0, open), text.substr(open + 1, text.size() - open - 2));
}

void WriteColor(const Color& color, std::string& out) {
    std::array<char, 8> text;
    const auto isDouble = [](uint8_t byte) { return byte >> 4 == (byte & 15); };
    if (isDouble(color.r) && isDouble(color.g) && isDouble(color.b)) {
        std::snprintf(text.data(), text.size(), "#%x%x%x", color.r & 15u, color.g & 15u, color.b & 15u);
    } else {
        std::snprintf(text.data(), text.size(), "#%02x%02x%02x", color.r, color.g, color.b);
    }
    out += text.data();
}

} // namespace ozm::conform
