#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ozm::conform {

/// A colour of sRGB.
struct Color {
    uint8_t r = 0, g = 0, b = 0;
    double alpha = 1; ///< 0...1

    bool operator==(const Color&) const = default;
};

/// Reads a colour of CSS Color 4, except "currentColor" and the colours of the system: hexadecimal, named,
/// "transparent", rgb(), hsl(), hwb(), lab(), lch(), oklab(), oklch() and color() in any case and syntax, cut
/// to sRGB as browsers do on a screen of that. None for everything else.
std::optional<Color> ReadColor(std::string_view text);

/// Appends "#rrggbb", or "#rgb" where that is the same; without the alpha.
void WriteColor(const Color& color, std::string& out);

} // namespace ozm::conform
