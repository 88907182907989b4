#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ozm {

/// A style property that can be written as an attribute of its own or as a declaration. The order is that in
/// which presentation attributes apply.
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

/// The names as they are written, addressed by `StylePropertyName`.
extern const std::array<std::string_view, kPresentationAttributeCount> kPresentationAttributeNames;

/// The property with exactly this name.
StylePropertyName FindStylePropertyName(std::string_view name);

} // namespace ozm
