#pragma once

#include "style/color.h"

#include <array>
#include <optional>
#include <string_view>

namespace ozm::conform {

/// A `feColorMatrix` that maps each colour to another and alpha to a share of it.
struct ColorMatrix {
    std::array<double, 20> values{}; ///< Four rows, for red, green, blue and alpha, of five.
    bool isLinear = true;            ///< Computes with linear light.

    Color Apply(const Color& color) const;
};

/// Reads the `type` and `values` of a `feColorMatrix`. None where alpha would depend on more than alpha.
std::optional<ColorMatrix> ReadColorMatrix(std::string_view type, std::string_view values, bool isLinear);

/// Reads a filter function of CSS that only changes colours, such as "grayscale(50%)". None for others, and
/// for a list of several.
std::optional<ColorMatrix> ReadFilterFunction(std::string_view text);

} // namespace ozm::conform
