// What Ozmira draws differently from a browser: one rule for each cause.
#pragma once

#include <OzmiraConform/OzmiraConform.h>

#include <cstdint>

namespace ozm::conform {

/// The rules, in the order of the table.
enum class Rule : uint8_t {
    IllFormed,
    NoSvg,
    TooDeep,
    TooLarge,
    Encoding,
    NoSize,
    Entity,
    Prefix,
    Namespace,
    ReferenceCycle,
    ViewBox,
    Size,
    AspectRatio,
    RootStyle,
    StyleSheet,
    StyleSyntax,
    CurrentColor,
    ColorSyntax,
    OpacitySyntax,
    ValueSyntax,
    InheritedGradient,
    MissingReference,
    Visibility,
    Display,
    TransformSyntax,
    TransformProperty,
    Units,
    GeometryProperty,
    Arc,
    QuadraticCurve,
    RelativeAfterZ,
    PathSyntax,
    PointsSyntax,
    ShapeSyntax,
    Symbol,
    NestedSvg,
    Switch,
    Conditional,
    Href,
    UseTarget,
    UsePosition,
    External,
    Text,
    Image,
    ForeignObject,
    Marker,
    Pattern,
    PatternSize,
    GradientStroke,
    Dashes,
    DashCount,
    PaintOrder,
    VectorEffect,
    Mask,
    MaskShading,
    Filter,
    ColorFilter,
    BlendMode,
    GroupOpacity,
    GroupOverlap,
    ShapeOpacity,
    GradientStrokeBelow,
    GradientOpacity,
    GradientRule,
    GradientStops,
    GradientGeometry,
    GradientSpread,
    ClipPath,
    ClipRule,
    ClipShape,
    ViewportSize,
    NoNamespace,
};

/// What the rule says about itself.
const RuleInfo& InfoOf(Rule rule);

} // namespace ozm::conform
