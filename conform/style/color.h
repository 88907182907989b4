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

/// Reads a colour of CSS Color 4, except "currentColor" and color(): hexadecimal, named, "transparent",
/// rgb(), hsl(), hwb(), lab(), lch(), oklab() and oklch() in any case and syntax. None for everything else.
std::optional<Color> ReadColor(std::string_view text);

/// Appends "#rrggbb", or "#rgb" where that is the same; without the alpha.
void WriteColor(const Color& color, std::string& out);

} // namespace ozm::conform
