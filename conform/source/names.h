// The names of elements and attributes that mean something to conforming.
#pragma once

#include <cstdint>
#include <string_view>

namespace ozm::conform {

/// Elements.
enum class Tag : uint8_t {
    Other,   ///< An element of SVG without a meaning here, such as `desc` or `animate`.
    Foreign, ///< An element of another namespace.
    A,
    Circle,
    ClipPath,
    Defs,
    Ellipse,
    Filter,
    ForeignObject,
    G,
    Image,
    Line,
    LinearGradient,
    Marker,
    Mask,
    Path,
    Pattern,
    Polygon,
    Polyline,
    RadialGradient,
    Rect,
    Stop,
    Style,
    Svg,
    Switch,
    Symbol,
    Text,
    Title,
    Use,
};

/// The element of this name in the namespace of SVG.
Tag TagOf(std::string_view name);

/// True for the elements that draw a path of their own.
bool IsShape(Tag tag);
/// True for the elements that Ozmira gives a meaning of their own, `stop` and the root aside.
bool IsKnownToOzmira(Tag tag);

/// Attributes. The first of them, up to `kLastProperty`, are also properties of style sheets.
enum class Attr : uint8_t {
    // Presentation attributes that are inherited.
    ClipRule,
    Color,
    Fill,
    FillOpacity,
    FillRule,
    FontSize,
    MarkerEnd,
    MarkerMid,
    MarkerStart,
    PaintOrder,
    Stroke,
    StrokeDasharray,
    StrokeDashoffset,
    StrokeLinecap,
    StrokeLinejoin,
    StrokeMiterlimit,
    StrokeOpacity,
    StrokeWidth,
    Visibility,
    // Presentation attributes that are not.
    ClipPath,
    Display,
    Filter,
    Isolation,
    Mask,
    MaskType,
    MixBlendMode,
    Opacity,
    Overflow,
    StopColor,
    StopOpacity,
    Transform,
    TransformBox,
    TransformOrigin,
    VectorEffect,
    // Properties that are attributes of some elements.
    Cx,
    Cy,
    D,
    Height,
    R,
    Rx,
    Ry,
    Width,
    X,
    Y,
    // In style sheets alone: shorthands and other properties.
    Marker,
    All,
    Background,
    Custom, ///< A property of any name that begins with "--".
    Font,
    Rotate,
    Scale,
    Translate,
    // Other attributes.
    Class,
    ClipPathUnits,
    Fr,
    Fx,
    Fy,
    GradientTransform,
    GradientUnits,
    Href,
    Id,
    MarkerHeight,
    MarkerUnits,
    MarkerWidth,
    MaskContentUnits,
    MaskUnits,
    Media,
    Offset,
    Orient,
    PathLength,
    PatternContentUnits,
    PatternTransform,
    PatternUnits,
    Points,
    PreserveAspectRatio,
    RefX,
    RefY,
    RequiredExtensions,
    RequiredFeatures,
    SpreadMethod,
    Style,
    SystemLanguage,
    Type,
    ViewBox,
    X1,
    X2,
    Y1,
    Y2,
    Other,
};
inline constexpr Attr kLastInherited = Attr::Visibility;
inline constexpr Attr kLastPresentation = Attr::VectorEffect;
inline constexpr Attr kLastProperty = Attr::Translate;

constexpr bool IsProperty(Attr attr) { return attr <= kLastProperty; }
constexpr bool IsPresentation(Attr attr) { return attr <= kLastPresentation; }
constexpr bool IsInherited(Attr attr) { return attr <= kLastInherited; }
/// True for properties that only the elements of some names have as attributes, which geometry reads.
constexpr bool IsGeometry(Attr attr) { return attr > kLastPresentation && attr < Attr::Marker; }

/// The attribute or property of this name; `Other` for all others.
Attr AttrOf(std::string_view name);
/// Its name.
std::string_view NameOf(Attr attr);

} // namespace ozm::conform
