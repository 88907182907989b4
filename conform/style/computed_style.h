#pragma once

#include "geometry/path.h"
#include "geometry/stroke.h"
#include "style/color.h"
#include "style/declarations.h"
#include "style/length.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

namespace ozm::conform {

/// The value of `fill` or `stroke`.
struct PaintValue {
    enum class Kind : uint8_t { None, Color, CurrentColor, Reference, ContextFill, ContextStroke };
    Kind kind = Kind::None;
    /// Of a reference that leads nowhere: what is painted instead.
    Kind fallback = Kind::None;
    Color color; ///< Also the fallback's.
    std::string_view id;
};

/// A reference to an element by its id, or something else than "none".
struct ReferenceValue {
    enum class Kind : uint8_t { None, Local, Other };
    Kind kind = Kind::None;
    std::string_view id;
    std::string_view text; ///< The whole value.
};

/// Which parts of a shape are painted first.
enum class PaintPart : uint8_t { Fill, Stroke, Markers };
using PaintParts = std::array<PaintPart, 3>;

class CustomProperties;
class StyleSheets;

/// The style of an element after cascade and inheritance, with values as browsers read them.
struct ComputedStyle {
    // Inherited.
    PaintValue fill{PaintValue::Kind::Color, PaintValue::Kind::None, {}, {}};
    PaintValue stroke;
    Color color;
    bool isColorSet = false; ///< `color` is given somewhere; else it is the page's.
    double fillOpacity = 1, strokeOpacity = 1;
    FillRule fillRule = FillRule::NonZero, clipRule = FillRule::NonZero;
    CssLength strokeWidth{1, Unit::User}, dashOffset;
    LineCap lineCap = LineCap::Butt;
    LineJoin lineJoin = LineJoin::Miter;
    double miterLimit = 4;
    std::string_view dashes; ///< Empty: none.
    bool isVisible = true;
    ReferenceValue markerStart, markerMid, markerEnd;
    PaintParts paintOrder{PaintPart::Fill, PaintPart::Stroke, PaintPart::Markers};
    double fontSize = 16;
    double rootFontSize = 0;                                  ///< 0 before the root's own is known.
    std::shared_ptr<const CustomProperties> customProperties; ///< Null without any.

    // Not inherited.
    double opacity = 1;
    bool isDisplayed = true;
    ReferenceValue clipPath, mask, filter;
    std::string_view blendMode; ///< Empty: normal.
    bool isOverflowVisible = false, isOverflowSet = false;
    bool hasNonScalingStroke = false;
    bool isAlphaMask = false;
    std::string_view transform, transformOrigin;
    bool isTransformAttribute = false; ///< `transform` has the syntax of attributes.
    std::string_view translate, rotate, scale;
    std::string_view background; ///< The colour, or the shorthand.
    bool isBoxOrigin = false;    ///< `transform-box` is fill-box.
    PaintValue stopColor{PaintValue::Kind::Color, PaintValue::Kind::None, {}, {}};
    double stopOpacity = 1;

    /// What set each property, here or on an ancestor for those that are inherited; null for initial values.
    std::array<const Declaration*, static_cast<size_t>(kLastPresentation) + 1> sources{};

    const Declaration* SourceOf(Attr property) const { return sources[static_cast<size_t>(property)]; }
};

/// The style of an element, as a child of one with the style `parent`.
ComputedStyle ComputeStyle(const ComputedStyle& parent, const Node& node, StyleSheets& sheets);

/// Reads "url(#id)", with or without quotes; `Other` for anything else but "none". The text after it is put
/// into `rest`.
ReferenceValue ReadReference(std::string_view text, std::string_view* rest = nullptr);

} // namespace ozm::conform
