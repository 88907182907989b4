#include "report/names.h"

#include <array>
#include <cstddef>

namespace ozm::tool {
namespace {

/// The name at the index of an enumerator.
template <typename Enum, size_t Count>
std::string_view Lookup(const std::array<std::string_view, Count>& names, Enum value) {
    const auto index = static_cast<size_t>(value);
    return index < Count ? names[index] : std::string_view("Unknown");
}

constexpr std::array<std::string_view, 9> kElementTypes = {
    "Group", "Unknown", "Path", "Ellipse", "Rect", "Use", "ClipPath", "Defs", "GradientElement"};
constexpr std::array<std::string_view, 6> kCommandTypes = {"MoveTo",           "ClosePath",      "LineTo",
                                                           "HorizontalLineTo", "VerticalLineTo", "CurveTo"};
constexpr std::array<std::string_view, 15> kPropertyTypes = {
    "StrokeColor",      "StrokeOpacity",   "StrokeWidth",      "StrokeLineCap", "StrokeLineJoin",
    "StrokeMiterLimit", "StrokeDashArray", "StrokeDashOffset", "FillColor",     "FillURL",
    "FillOpacity",      "FillRule",        "ClipPathURL",      "ClipRule",      "Opacity"};
constexpr std::array<std::string_view, 9> kUnits = {"None", "EM", "PX", "PT",     "PC",
                                                    "CM",   "MM", "IN", "Percent"};
constexpr std::array<std::string_view, 2> kGradientTypes = {"Linear", "Radial"};
constexpr std::array<std::string_view, 2> kGradientUnits = {"UserSpaceOnUse", "ObjectBoundingBox"};
constexpr std::array<std::string_view, 3> kSpreadMethods = {"Pad", "Reflect", "Repeat"};
constexpr std::array<std::string_view, 3> kLineCaps = {"Butt", "Round", "Square"};
constexpr std::array<std::string_view, 3> kLineJoins = {"Miter", "Round", "Bevel"};
constexpr std::array<std::string_view, 2> kWindingRules = {"NonZero", "EvenOdd"};

} // namespace

std::string_view NameOf(Element::Type type) { return Lookup(kElementTypes, type); }
std::string_view NameOf(PathCommand::Type type) { return Lookup(kCommandTypes, type); }
std::string_view NameOf(StyleProperty::Type type) { return Lookup(kPropertyTypes, type); }
std::string_view NameOf(Dimension::Unit unit) { return Lookup(kUnits, unit); }
std::string_view NameOf(Gradient::Type type) { return Lookup(kGradientTypes, type); }
std::string_view NameOf(Gradient::Units units) { return Lookup(kGradientUnits, units); }
std::string_view NameOf(Gradient::SpreadMethod method) { return Lookup(kSpreadMethods, method); }

std::string_view NameOfKeyword(const StyleProperty& property) {
    switch (property.type) {
    case StyleProperty::Type::StrokeLineCap: return Lookup(kLineCaps, property.keyword);
    case StyleProperty::Type::StrokeLineJoin: return Lookup(kLineJoins, property.keyword);
    default: return Lookup(kWindingRules, property.keyword);
    }
}

} // namespace ozm::tool
