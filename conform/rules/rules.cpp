#include "rules/rules.h"

#include <array>
#include <iterator>

namespace ozm::conform {
namespace {

struct Row {
    Rule rule;
    RuleInfo info;
};

constexpr bool kConvertible = true;
constexpr bool kRefused = false;

constexpr Row kTable[] = {
    {Rule::IllFormed, {"ill-formed", Severity::Error, "the XML is not well-formed ({}), so a browser shows an error", "correct the markup", "files", kRefused}},
    {Rule::NoSvg, {"no-svg", Severity::Error, "the root element is not an svg element of SVG's namespace", "name an SVG drawing", "files", kRefused}},
    {Rule::TooDeep, {"too-deep", Severity::Error, "elements nest more than 1,024 levels deep", "nest them less deeply", "files", kRefused}},
    {Rule::TooLarge, {"too-large", Severity::Error, "the drawing is larger than what is read, or unfolds into more elements than are followed", "split the drawing", "files", kRefused}},
    {Rule::Encoding, {"encoding", Severity::Error, "the text is not encoded in UTF-8, so nothing of it is read", "save it in UTF-8", "files", kConvertible}},
    {Rule::NoSize, {"no-size", Severity::Error, "there is neither a viewBox nor a width and height, so nothing is drawn", "add a viewBox", "sizes-and-coordinates", kConvertible}},
    {Rule::Entity, {"entity", Severity::Warning, "entities in {} are not replaced", "write the characters themselves", "left-out", kConvertible}},
    {Rule::Prefix, {"prefix", Severity::Warning, "{} has a namespace prefix and is left out", "make SVG the default namespace", "left-out", kConvertible}},
    {Rule::ReferenceCycle, {"reference-cycle", Severity::Error, "references lead back to {}", "take the cycle out", "files", kRefused}},
    {Rule::ViewBox, {"view-box", Severity::Warning, "this viewBox is read as 0 0 128 128", "separate four plain numbers by blanks", "sizes-and-coordinates", kConvertible}},
    {Rule::Size, {"size", Severity::Warning, "the size is read otherwise, so proportions differ", "write width and height as plain numbers, or leave out both", "sizes-and-coordinates", kConvertible}},
    {Rule::AspectRatio, {"aspect-ratio", Severity::Warning, "the viewBox is not placed as preserveAspectRatio and the size ask for", "give viewBox and size the same proportions", "sizes-and-coordinates", kConvertible}},
    {Rule::RootStyle, {"root-style", Severity::Warning, "{} on the root element is ignored", "put a <g> with it around everything", "left-out", kConvertible}},
    {Rule::StyleSheet, {"style-sheet", Severity::Warning, "{} from a style sheet is ignored", "write it as an attribute", "left-out", kConvertible}},
    {Rule::StyleSyntax, {"style-syntax", Severity::Warning, "{} in this style attribute is not read: comments, !important, quotes and empty values end or spoil it", "write plain declarations", "style", kConvertible}},
    {Rule::CurrentColor, {"current-color", Severity::Warning, "currentColor is not understood, so the inherited {} stays", "leave a fill out; give a stroke a colour", "left-out", kConvertible}},
    {Rule::ColorSyntax, {"color-syntax", Severity::Warning, "this colour of {} is read otherwise", "write #rrggbb and an opacity", "left-out", kConvertible}},
    {Rule::OpacitySyntax, {"opacity-syntax", Severity::Warning, "this value of {} is read otherwise", "write a number from 0 to 1", "style", kConvertible}},
    {Rule::ValueSyntax, {"value-syntax", Severity::Warning, "this value of {} is not understood", "write a plain number or keyword", "style", kConvertible}},
    {Rule::InheritedGradient, {"inherited-gradient", Severity::Warning, "an inherited gradient stays in force under this fill", "give gradients to shapes, not to groups with other fills", "style", kConvertible}},
    {Rule::MissingReference, {"missing-reference", Severity::Warning, "{} names nothing, and what a browser does then is not done", "correct the name", "style", kConvertible}},
    {Rule::Visibility, {"visibility", Severity::Warning, "visibility hides nothing and undoes display=\"none\"", "write display=\"none\"", "style", kConvertible}},
    {Rule::Display, {"display", Severity::Warning, "display is read otherwise", "write display=\"none\" as an attribute", "style", kConvertible}},
    {Rule::TransformSyntax, {"transform-syntax", Severity::Warning, "this transform is read otherwise", "write plain numbers, and blanks between functions", "sizes-and-coordinates", kConvertible}},
    {Rule::TransformProperty, {"transform-property", Severity::Warning, "{} in style is ignored", "write a transform attribute", "left-out", kConvertible}},
    {Rule::Units, {"units", Severity::Warning, "{} is read as a plain number", "write user units", "sizes-and-coordinates", kConvertible}},
    {Rule::GeometryProperty, {"geometry-property", Severity::Warning, "{} from style is ignored", "write it as an attribute", "left-out", kConvertible}},
    {Rule::Arc, {"arc", Severity::Warning, "elliptical arcs in paths are not drawn", "write cubic curves", "left-out", kConvertible}},
    {Rule::QuadraticCurve, {"quadratic-curve", Severity::Warning, "quadratic curves in paths are not drawn", "write cubic curves", "left-out", kConvertible}},
    {Rule::RelativeAfterZ, {"relative-after-z", Severity::Warning, "a relative command after z continues from the last point drawn, not from the start of the subpath", "begin with an absolute M", "paths", kConvertible}},
    {Rule::PathSyntax, {"path-syntax", Severity::Warning, "path data is read otherwise from here on", "complete the command", "paths", kConvertible}},
    {Rule::PointsSyntax, {"points-syntax", Severity::Warning, "points are read otherwise", "write an even count of plain numbers", "paths", kConvertible}},
    {Rule::ShapeSyntax, {"shape-syntax", Severity::Warning, "the sizes of this {} are read otherwise", "write what is not given", "paths", kConvertible}},
    {Rule::Symbol, {"symbol", Severity::Warning, "a symbol is left out", "make it a <g> inside <defs>", "left-out", kConvertible}},
    {Rule::NestedSvg, {"nested-svg", Severity::Warning, "an svg element inside another is left out", "write a <g> with a transform", "left-out", kConvertible}},
    {Rule::Switch, {"switch", Severity::Warning, "a switch is left out", "keep the child that is shown", "left-out", kConvertible}},
    {Rule::Conditional, {"conditional", Severity::Warning, "{} is not tested, so this is drawn", "leave out what is not shown", "left-out", kConvertible}},
    {Rule::Href, {"href", Severity::Warning, "href without xlink: is not read", "write xlink:href", "left-out", kConvertible}},
    {Rule::UseTarget, {"use-target", Severity::Warning, "{} is found by a browser but not by Ozmira", "put what is used into <defs> or a <g>", "left-out", kConvertible}},
    {Rule::UsePosition, {"use-position", Severity::Warning, "{} is read as a plain number", "write user units", "sizes-and-coordinates", kConvertible}},
    {Rule::External, {"external", Severity::Warning, "{} points into another file", "copy what it points to into this one", "left-out", kRefused}},
    {Rule::Text, {"text", Severity::Warning, "text is left out", "convert it to paths in a drawing program", "left-out", kRefused}},
    {Rule::Image, {"image", Severity::Warning, "an image is left out", "trace it, or draw without it", "left-out", kRefused}},
    {Rule::ForeignObject, {"foreign-object", Severity::Warning, "a foreignObject is left out", "draw without it", "left-out", kRefused}},
    {Rule::Marker, {"marker", Severity::Warning, "markers are left out", "draw them as shapes", "left-out", kConvertible}},
    {Rule::Pattern, {"pattern", Severity::Warning, "a pattern is left out", "draw its tiles as shapes", "left-out", kConvertible}},
    {Rule::PatternSize, {"pattern-size", Severity::Warning, "a pattern takes more than 1,000 tiles", "enlarge its tiles", "left-out", kRefused}},
    {Rule::GradientStroke, {"gradient-stroke", Severity::Warning, "a stroke takes no gradient or pattern, and the inherited stroke stays", "convert the stroke to a path and fill it", "left-out", kConvertible}},
    {Rule::Dashes, {"dashes", Severity::Warning, "dashes are drawn as a solid line", "convert the dashes to paths", "left-out", kConvertible}},
    {Rule::DashCount, {"dash-count", Severity::Warning, "the stroke has more than 20,000 dashes", "write longer dashes", "left-out", kRefused}},
    {Rule::PaintOrder, {"paint-order", Severity::Warning, "paint-order is ignored", "write the stroke as a shape below the fill", "left-out", kConvertible}},
    {Rule::VectorEffect, {"vector-effect", Severity::Warning, "vector-effect is ignored", "set the width that the stroke has in the end", "left-out", kConvertible}},
    {Rule::Mask, {"mask", Severity::Warning, "a mask is left out", "use a clip path or an opacity", "left-out", kConvertible}},
    {Rule::MaskShading, {"mask-shading", Severity::Warning, "a mask whose lightness changes within the drawing is left out", "draw without it", "left-out", kRefused}},
    {Rule::Filter, {"filter", Severity::Warning, "a filter is left out", "draw without it", "left-out", kRefused}},
    {Rule::ColorFilter, {"color-filter", Severity::Warning, "a filter that changes colours is left out", "write the colours that it makes", "left-out", kConvertible}},
    {Rule::BlendMode, {"blend-mode", Severity::Warning, "a blend mode is left out", "mix the colours yourself", "left-out", kRefused}},
    {Rule::GroupOpacity, {"group-opacity", Severity::Warning, "opacity of a group makes each shape in it translucent, so overlapping parts show through", "keep overlapping shapes out of translucent groups", "style", kConvertible}},
    {Rule::GroupOverlap, {"group-overlap", Severity::Warning, "translucent shapes overlap in a translucent group", "mix the colours yourself", "style", kRefused}},
    {Rule::ShapeOpacity, {"shape-opacity", Severity::Warning, "opacity applies to fill and stroke separately, so they show through each other", "write two shapes", "style", kConvertible}},
    {Rule::GradientStrokeBelow, {"gradient-stroke-below", Severity::Warning, "the stroke of a shape with a gradient fill is clipped to the shape", "write two shapes", "gradients", kConvertible}},
    {Rule::GradientOpacity, {"gradient-opacity", Severity::Warning, "fill-opacity does not apply to gradients", "use stop-opacity or opacity", "gradients", kConvertible}},
    {Rule::GradientRule, {"gradient-rule", Severity::Warning, "fill-rule does not apply to gradient fills", "reverse the outlines of holes", "gradients", kConvertible}},
    {Rule::GradientStops, {"gradient-stops", Severity::Warning, "the stops of this gradient are read otherwise", "write stops with attributes into it", "gradients", kConvertible}},
    {Rule::GradientGeometry, {"gradient-geometry", Severity::Warning, "this gradient lies otherwise: defaults, inherited attributes, units and boxes count less", "use gradientUnits=\"userSpaceOnUse\" with all coordinates", "gradients", kConvertible}},
    {Rule::GradientSpread, {"gradient-spread", Severity::Warning, "spreadMethod is ignored", "repeat the stops", "gradients", kConvertible}},
    {Rule::ClipPath, {"clip-path", Severity::Warning, "this clip path is read otherwise", "put one shape with all its transforms into it", "clipping", kConvertible}},
    {Rule::ClipRule, {"clip-rule", Severity::Warning, "the shapes in a clip path form one outline under the nonzero rule", "use one path, or outlines of the same direction", "clipping", kConvertible}},
    {Rule::ClipShape, {"clip-shape", Severity::Warning, "this value of clip-path is ignored", "write a clipPath element", "clipping", kRefused}},
    {Rule::ViewportSize, {"viewport-size", Severity::Note, "the size is a share of the page's and is taken as that of the viewBox", "write plain numbers, or leave out both", "sizes-and-coordinates", kConvertible}},
    {Rule::NoNamespace, {"no-namespace", Severity::Note, "the svg element has no namespace, so browsers show it within HTML only", "add xmlns=\"http://www.w3.org/2000/svg\"", "files", kConvertible}},
};

constexpr bool IsInOrder() {
    for (size_t i = 0; i < std::size(kTable); ++i) {
        if (static_cast<size_t>(kTable[i].rule) != i) return false;
    }
    return true;
}
static_assert(IsInOrder());

constexpr auto kInfos = [] {
    std::array<RuleInfo, std::size(kTable)> infos{};
    for (size_t i = 0; i < infos.size(); ++i) infos[i] = kTable[i].info;
    return infos;
}();

} // namespace

std::string_view SeverityName(Severity severity) {
    switch (severity) {
    case Severity::Error: return "error";
    case Severity::Warning: return "warning";
    case Severity::Note: break;
    }
    return "note";
}

std::span<const RuleInfo> Rules() { return kInfos; }

const RuleInfo& InfoOf(Rule rule) { return kInfos[static_cast<size_t>(rule)]; }

} // namespace ozm::conform
