#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ozm {

/// The style properties that can be written as an attribute or as a declaration, in the order in which
/// presentation attributes apply.
enum class StylePropertyName : uint8_t {
    Fill,
    FillOpacity,
    FillRule,
    Stroke,
    StrokeOpacity,
    StrokeWidth,
    StrokeLineJoin,
    StrokeLineCap,
    StrokeMiterLimit,
    StrokeDashArray,
    StrokeDashOffset,
    Opacity,
    Display,
    Visibility,
    ClipPath,
    ClipRule,
    Href,
    Unknown, ///< Any other name.
};

inline constexpr size_t kPresentationAttributeCount = static_cast<size_t>(StylePropertyName::Unknown);

/// Returns the property with exactly this name.
StylePropertyName FindStylePropertyName(std::string_view name);

} // namespace ozm
