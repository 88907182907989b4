#include "svg/style_property_names.h"

#include <algorithm>
#include <array>

namespace ozm {
namespace {

/// The names in SVG, in the order of `StylePropertyName`.
constexpr std::array<std::string_view, kPresentationAttributeCount> kPresentationAttributeNames = {
    "fill",
    "fill-opacity",
    "fill-rule",
    "stroke",
    "stroke-opacity",
    "stroke-width",
    "stroke-linejoin",
    "stroke-linecap",
    "stroke-miterlimit",
    "stroke-dasharray",
    "stroke-dashoffset",
    "opacity",
    "display",
    "visibility",
    "clip-path",
    "clip-rule",
    "href",
};

} // namespace

StylePropertyName FindStylePropertyName(std::string_view name) {
    const auto found =
        std::find(kPresentationAttributeNames.begin(), kPresentationAttributeNames.end(), name);
    return static_cast<StylePropertyName>(found - kPresentationAttributeNames.begin());
}

} // namespace ozm
