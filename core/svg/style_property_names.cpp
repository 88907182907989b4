#include "svg/style_property_names.h"

namespace ozm {

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

namespace {

/// At most three names share a length.
constexpr StylePropertyName Find(std::string_view name) {
    using Name = StylePropertyName;
    switch (name.size()) {
    case 4:
        if (name == "fill") return Name::Fill;
        if (name == "href") return Name::Href;
        break;
    case 6:
        if (name == "stroke") return Name::Stroke;
        break;
    case 7:
        if (name == "opacity") return Name::Opacity;
        if (name == "display") return Name::Display;
        break;
    case 9:
        if (name == "fill-rule") return Name::FillRule;
        if (name == "clip-rule") return Name::ClipRule;
        if (name == "clip-path") return Name::ClipPath;
        break;
    case 10:
        if (name == "visibility") return Name::Visibility;
        break;
    case 12:
        if (name == "stroke-width") return Name::StrokeWidth;
        if (name == "fill-opacity") return Name::FillOpacity;
        break;
    case 14:
        if (name == "stroke-linecap") return Name::StrokeLineCap;
        if (name == "stroke-opacity") return Name::StrokeOpacity;
        break;
    case 15:
        if (name == "stroke-linejoin") return Name::StrokeLineJoin;
        break;
    case 16:
        if (name == "stroke-dasharray") return Name::StrokeDashArray;
        break;
    case 17:
        if (name == "stroke-miterlimit") return Name::StrokeMiterLimit;
        if (name == "stroke-dashoffset") return Name::StrokeDashOffset;
        break;
    default: break;
    }
    return Name::Unknown;
}

constexpr bool FindsEveryName() {
    for (size_t i = 0; i < kPresentationAttributeCount; ++i) {
        if (Find(kPresentationAttributeNames[i]) != static_cast<StylePropertyName>(i)) return false;
    }
    return true;
}
static_assert(FindsEveryName());

} // namespace

StylePropertyName FindStylePropertyName(std::string_view name) { return Find(name); }

} // namespace ozm
