#include "source/names.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ozm::conform {
namespace {

template <typename Value>
struct Entry {
    std::string_view name;
    Value value;
};

/// Sorted by name.
constexpr Entry<Tag> kTags[] = {
    {"a", Tag::A},
    {"circle", Tag::Circle},
    {"clipPath", Tag::ClipPath},
    {"defs", Tag::Defs},
    {"ellipse", Tag::Ellipse},
    {"filter", Tag::Filter},
    {"foreignObject", Tag::ForeignObject},
    {"g", Tag::G},
    {"image", Tag::Image},
    {"line", Tag::Line},
    {"linearGradient", Tag::LinearGradient},
    {"marker", Tag::Marker},
    {"mask", Tag::Mask},
    {"path", Tag::Path},
    {"pattern", Tag::Pattern},
    {"polygon", Tag::Polygon},
    {"polyline", Tag::Polyline},
    {"radialGradient", Tag::RadialGradient},
    {"rect", Tag::Rect},
    {"stop", Tag::Stop},
    {"style", Tag::Style},
    {"svg", Tag::Svg},
    {"switch", Tag::Switch},
    {"symbol", Tag::Symbol},
    {"text", Tag::Text},
    {"title", Tag::Title},
    {"use", Tag::Use},
};

/// Sorted by name.
constexpr Entry<Attr> kAttrs[] = {
    {"all", Attr::All},
    {"background", Attr::Background},
    {"background-color", Attr::Background},
    {"class", Attr::Class},
    {"clip-path", Attr::ClipPath},
    {"clip-rule", Attr::ClipRule},
    {"clipPathUnits", Attr::ClipPathUnits},
    {"color", Attr::Color},
    {"cx", Attr::Cx},
    {"cy", Attr::Cy},
    {"d", Attr::D},
    {"display", Attr::Display},
    {"fill", Attr::Fill},
    {"fill-opacity", Attr::FillOpacity},
    {"fill-rule", Attr::FillRule},
    {"filter", Attr::Filter},
    {"font", Attr::Font},
    {"font-size", Attr::FontSize},
    {"fr", Attr::Fr},
    {"fx", Attr::Fx},
    {"fy", Attr::Fy},
    {"gradientTransform", Attr::GradientTransform},
    {"gradientUnits", Attr::GradientUnits},
    {"height", Attr::Height},
    {"href", Attr::Href},
    {"id", Attr::Id},
    {"isolation", Attr::Isolation},
    {"marker", Attr::Marker},
    {"marker-end", Attr::MarkerEnd},
    {"marker-mid", Attr::MarkerMid},
    {"marker-start", Attr::MarkerStart},
    {"markerHeight", Attr::MarkerHeight},
    {"markerUnits", Attr::MarkerUnits},
    {"markerWidth", Attr::MarkerWidth},
    {"mask", Attr::Mask},
    {"mask-type", Attr::MaskType},
    {"maskContentUnits", Attr::MaskContentUnits},
    {"maskUnits", Attr::MaskUnits},
    {"media", Attr::Media},
    {"mix-blend-mode", Attr::MixBlendMode},
    {"offset", Attr::Offset},
    {"opacity", Attr::Opacity},
    {"orient", Attr::Orient},
    {"overflow", Attr::Overflow},
    {"paint-order", Attr::PaintOrder},
    {"pathLength", Attr::PathLength},
    {"patternContentUnits", Attr::PatternContentUnits},
    {"patternTransform", Attr::PatternTransform},
    {"patternUnits", Attr::PatternUnits},
    {"points", Attr::Points},
    {"preserveAspectRatio", Attr::PreserveAspectRatio},
    {"r", Attr::R},
    {"refX", Attr::RefX},
    {"refY", Attr::RefY},
    {"requiredExtensions", Attr::RequiredExtensions},
    {"requiredFeatures", Attr::RequiredFeatures},
    {"rotate", Attr::Rotate},
    {"rx", Attr::Rx},
    {"ry", Attr::Ry},
    {"scale", Attr::Scale},
    {"spreadMethod", Attr::SpreadMethod},
    {"stop-color", Attr::StopColor},
    {"stop-opacity", Attr::StopOpacity},
    {"stroke", Attr::Stroke},
    {"stroke-dasharray", Attr::StrokeDasharray},
    {"stroke-dashoffset", Attr::StrokeDashoffset},
    {"stroke-linecap", Attr::StrokeLinecap},
    {"stroke-linejoin", Attr::StrokeLinejoin},
    {"stroke-miterlimit", Attr::StrokeMiterlimit},
    {"stroke-opacity", Attr::StrokeOpacity},
    {"stroke-width", Attr::StrokeWidth},
    {"style", Attr::Style},
    {"systemLanguage", Attr::SystemLanguage},
    {"transform", Attr::Transform},
    {"transform-box", Attr::TransformBox},
    {"transform-origin", Attr::TransformOrigin},
    {"translate", Attr::Translate},
    {"type", Attr::Type},
    {"vector-effect", Attr::VectorEffect},
    {"viewBox", Attr::ViewBox},
    {"visibility", Attr::Visibility},
    {"width", Attr::Width},
    {"x", Attr::X},
    {"x1", Attr::X1},
    {"x2", Attr::X2},
    {"y", Attr::Y},
    {"y1", Attr::Y1},
    {"y2", Attr::Y2},
};

template <typename Value>
constexpr bool IsBefore(const Entry<Value>& a, const Entry<Value>& b) {
    return a.name < b.name;
}
static_assert(std::is_sorted(std::begin(kTags), std::end(kTags), IsBefore<Tag>));
static_assert(std::is_sorted(std::begin(kAttrs), std::end(kAttrs), IsBefore<Attr>));

template <typename Value, size_t Count>
Value Find(const Entry<Value> (&entries)[Count], std::string_view name, Value otherwise) {
    const auto* const entry = std::lower_bound(std::begin(entries), std::end(entries), name,
                                               [](const auto& a, std::string_view b) { return a.name < b; });
    return entry != std::end(entries) && entry->name == name ? entry->value : otherwise;
}

} // namespace

Tag TagOf(std::string_view name) { return Find(kTags, name, Tag::Other); }

Attr AttrOf(std::string_view name) { return Find(kAttrs, name, Attr::Other); }

std::string_view NameOf(Attr attr) {
    for (const auto& entry : kAttrs) {
        if (entry.value == attr) return entry.name;
    }
    return {};
}

bool IsShape(Tag tag) {
    switch (tag) {
    case Tag::Circle:
    case Tag::Ellipse:
    case Tag::Line:
    case Tag::Path:
    case Tag::Polygon:
    case Tag::Polyline:
    case Tag::Rect: return true;
    default: return false;
    }
}

bool IsKnownToOzmira(Tag tag) {
    switch (tag) {
    case Tag::A:
    case Tag::ClipPath:
    case Tag::Defs:
    case Tag::G:
    case Tag::LinearGradient:
    case Tag::RadialGradient:
    case Tag::Use: return true;
    default: return IsShape(tag);
    }
}

} // namespace ozm::conform
