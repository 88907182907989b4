#include "style/computed_style.h"

#include "geometry/text.h"
#include "style/custom_properties.h"
#include "style/style_sheets.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace ozm::conform {
namespace {

const ComputedStyle kInitial;

using Kind = PaintValue::Kind;

std::optional<PaintValue> ReadPlainPaint(std::string_view text) {
    PaintValue paint;
    if (EqualsIgnoringCase(text, "none")) return paint;
    if (EqualsIgnoringCase(text, "currentcolor")) {
        paint.kind = Kind::CurrentColor;
    } else if (EqualsIgnoringCase(text, "context-fill")) {
        paint.kind = Kind::ContextFill;
    } else if (EqualsIgnoringCase(text, "context-stroke")) {
        paint.kind = Kind::ContextStroke;
    } else if (const std::optional<Color> color = ReadColor(text)) {
        paint.kind = Kind::Color;
        paint.color = *color;
    } else {
        return {};
    }
    return paint;
}

std::optional<PaintValue> ReadPaint(std::string_view text) {
    if (!StartsWithIgnoringCase(text, "url(")) return ReadPlainPaint(text);
    std::string_view rest;
    const ReferenceValue reference = ReadReference(text, &rest);
    PaintValue paint;
    if (rest = Trim(rest); !rest.empty()) {
        const std::optional<PaintValue> fallback = ReadPlainPaint(rest);
        if (!fallback) return {};
        paint.fallback = fallback->kind;
        paint.color = fallback->color;
    }
    paint.kind = Kind::Reference;
    paint.id = reference.kind == ReferenceValue::Kind::Local ? reference.id : std::string_view();
    return paint;
}

/// Reads a length that is no percentage into user units; negative ones are invalid.
std::optional<double> ReadFontSize(std::string_view text, double parent, double root) {
    constexpr struct {
        std::string_view name;
        double size;
    } kSizes[] = {{"medium", 16},  {"small", 13},   {"large", 18},   {"x-small", 10},
                  {"x-large", 24}, {"xx-small", 9}, {"xx-large", 32}};
    for (const auto& [name, size] : kSizes) {
        if (EqualsIgnoringCase(text, name)) return size;
    }
    if (EqualsIgnoringCase(text, "smaller")) return parent / 1.2;
    if (EqualsIgnoringCase(text, "larger")) return parent * 1.2;
    const std::optional<CssLength> length = ReadLength(text);
    if (!length || length->value < 0) return {};
    return Resolve(*length, {parent, parent, root});
}

/// Finds the size in the `font` shorthand, where only the family comes after it: not a weight, which has no
/// unit.
std::optional<double> ReadFont(std::string_view text, double parent, double root) {
    for (std::string_view word = NextWord(text); !word.empty(); word = NextWord(text)) {
        word = word.substr(0, word.find('/'));
        if (!ReadPlainNumber(word)) {
            if (const std::optional<double> size = ReadFontSize(word, parent, root)) return size;
        }
    }
    return {};
}

bool IsBlendMode(std::string_view text) {
    constexpr std::string_view kModes[] = {
        "multiply",   "screen",     "overlay",    "darken",       "lighten",    "color-dodge",
        "color-burn", "hard-light", "soft-light", "difference",   "exclusion",  "hue",
        "saturation", "color",      "luminosity", "plus-lighter", "plus-darker"};
    return std::any_of(std::begin(kModes), std::end(kModes),
                       [&](std::string_view mode) { return EqualsIgnoringCase(text, mode); });
}

std::optional<PaintParts> ReadPaintOrder(std::string_view text) {
    PaintParts order{};
    size_t count = 0;
    const auto add = [&](PaintPart part) {
        const bool isNew = std::find(order.begin(), order.begin() + count, part) == order.begin() + count;
        if (isNew) order[count++] = part;
        return isNew;
    };
    if (EqualsIgnoringCase(text, "normal")) text = {};
    for (std::string_view word = NextWord(text); !word.empty(); word = NextWord(text)) {
        bool isKnown = false;
        if (EqualsIgnoringCase(word, "fill")) isKnown = add(PaintPart::Fill);
        if (EqualsIgnoringCase(word, "stroke")) isKnown = add(PaintPart::Stroke);
        if (EqualsIgnoringCase(word, "markers")) isKnown = add(PaintPart::Markers);
        if (!isKnown) return {};
    }
    for (const PaintPart part : {PaintPart::Fill, PaintPart::Stroke, PaintPart::Markers}) add(part);
    return order;
}

/// Puts the values of one element's declarations into its style.
class StyleBuilder {
public:
    StyleBuilder(const ComputedStyle& parent, ComputedStyle& style) : m_parent(parent), m_style(style) {}

    /// Applies a declaration that sets the font size: of `all`, that part alone.
    void ApplySize(const Declaration& declaration, std::string_view value) {
        if (declaration.property != Attr::All) return Apply(declaration, value);
        ApplyTo(Attr::FontSize, declaration, IsKeyword(value) ? value : std::string_view());
    }

    /// Applies a declaration with this value; one that is not valid changes nothing.
    void Apply(const Declaration& declaration, std::string_view value) {
        const Attr property = declaration.property;
        if (IsPresentation(property)) return ApplyTo(property, declaration, value);
        switch (property) {
        case Attr::Marker:
            for (const Attr marker : {Attr::MarkerStart, Attr::MarkerMid, Attr::MarkerEnd}) {
                ApplyTo(marker, declaration, value);
            }
            break;
        case Attr::All:
            for (size_t at = 0; at <= static_cast<size_t>(kLastPresentation); ++at) {
                if (static_cast<Attr>(at) == Attr::FontSize) continue; // ApplySize() has been there
                ApplyTo(static_cast<Attr>(at), declaration, IsKeyword(value) ? value : std::string_view());
            }
            break;
        case Attr::Font: {
            const std::optional<double> size = ReadFont(value, m_parent.fontSize, RootFontSize());
            if (Assign(m_style.fontSize, size)) Source(Attr::FontSize) = &declaration;
            break;
        }
        case Attr::Background: m_style.background = value; break;
        case Attr::Rotate: SetPartOfTransform(m_style.rotate, declaration, value); break;
        case Attr::Scale: SetPartOfTransform(m_style.scale, declaration, value); break;
        case Attr::Translate: SetPartOfTransform(m_style.translate, declaration, value); break;
        default: break;
        }
    }

    /// Applies a declaration whose value needs a custom property that there is not.
    void ApplyInvalid(const Declaration& declaration) { Apply(declaration, "unset"); }

private:
    static bool IsKeyword(std::string_view value) {
        return EqualsIgnoringCase(value, "inherit") || EqualsIgnoringCase(value, "initial") ||
               EqualsIgnoringCase(value, "unset") || EqualsIgnoringCase(value, "revert");
    }

    double RootFontSize() const { return m_parent.rootFontSize > 0 ? m_parent.rootFontSize : 16; }

    void SetPartOfTransform(std::string_view& part, const Declaration& declaration, std::string_view value) {
        part = EqualsIgnoringCase(value, "none") || IsKeyword(value) ? std::string_view() : value;
        Source(Attr::Transform) = &declaration;
    }

    void ApplyTo(Attr property, const Declaration& declaration, std::string_view value) {
        const bool isInherit = EqualsIgnoringCase(value, "inherit");
        const bool isUnset = EqualsIgnoringCase(value, "unset") || EqualsIgnoringCase(value, "revert");
        if (isInherit || (isUnset && IsInherited(property))) {
            Copy(property, m_parent);
            Source(property) = m_parent.SourceOf(property);
        } else if (isUnset || EqualsIgnoringCase(value, "initial")) {
            Copy(property, kInitial);
            Source(property) = &declaration;
        } else if (!value.empty() && Set(property, value)) {
            Source(property) = &declaration;
            if (property == Attr::Transform) {
                m_style.isTransformAttribute = declaration.origin == Origin::Attribute;
            }
        }
    }

    const Declaration*& Source(Attr property) { return m_style.sources[static_cast<size_t>(property)]; }

    /// Sets a member to a value that may be invalid.
    template <typename Value>
    static bool Assign(Value& member, const std::optional<Value>& value) {
        if (value) member = *value;
        return value.has_value();
    }

    /// Sets a member to one of the values that words stand for.
    template <typename Value>
    struct Word {
        std::string_view word;
        Value value;
    };
    template <typename Value, size_t Count>
    static bool Choose(Value& member, std::string_view text, const Word<Value> (&words)[Count]) {
        for (const auto& word : words) {
            if (!EqualsIgnoringCase(text, word.word)) continue;
            member = word.value;
            return true;
        }
        return false;
    }

    bool SetLength(CssLength& member, std::string_view text, bool mayBeNegative) {
        std::optional<CssLength> length = ReadLength(text);
        if (!length || (!mayBeNegative && length->value < 0)) return false;
        if (length->unit != Unit::Percent) {
            const double root = m_style.rootFontSize > 0 ? m_style.rootFontSize : m_style.fontSize;
            length = {Resolve(*length, {0, m_style.fontSize, root}), Unit::User};
        }
        member = *length;
        return true;
    }

    static bool SetReference(ReferenceValue& member, std::string_view text) {
        member = ReadReference(text);
        return true;
    }

    bool SetColor(std::string_view text) {
        if (EqualsIgnoringCase(text, "currentcolor")) return true;
        m_style.isColorSet |= ReadColor(text).has_value();
        return Assign(m_style.color, ReadColor(text));
    }

    bool SetOverflow(std::string_view text) {
        if (!Choose(
                m_style.isOverflowVisible, text,
                {{"visible", true}, {"auto", true}, {"hidden", false}, {"scroll", false}, {"clip", false}})) {
            return false;
        }
        m_style.isOverflowSet = true;
        return true;
    }

    bool SetDashes(std::string_view text) {
        m_style.dashes = EqualsIgnoringCase(text, "none") ? std::string_view() : text;
        return true;
    }

    bool SetMiterLimit(std::string_view text) {
        const std::optional<double> limit = ReadPlainNumber(text);
        if (!limit || *limit < 0) return false;
        m_style.miterLimit = *limit;
        return true;
    }

    bool SetRule(FillRule& member, std::string_view text) {
        return Choose(member, text, {{"nonzero", FillRule::NonZero}, {"evenodd", FillRule::EvenOdd}});
    }

    bool Set(Attr property, std::string_view text) {
        switch (property) {
        case Attr::Fill: return Assign(m_style.fill, ReadPaint(text));
        case Attr::Stroke: return Assign(m_style.stroke, ReadPaint(text));
        case Attr::StopColor: return Assign(m_style.stopColor, ReadPlainPaint(text));
        case Attr::Color: return SetColor(text);
        case Attr::FillOpacity: return Assign(m_style.fillOpacity, ReadShare(text));
        case Attr::StrokeOpacity: return Assign(m_style.strokeOpacity, ReadShare(text));
        case Attr::StopOpacity: return Assign(m_style.stopOpacity, ReadShare(text));
        case Attr::Opacity: return Assign(m_style.opacity, ReadShare(text));
        case Attr::FillRule: return SetRule(m_style.fillRule, text);
        case Attr::ClipRule: return SetRule(m_style.clipRule, text);
        case Attr::StrokeWidth: return SetLength(m_style.strokeWidth, text, false);
        case Attr::StrokeDashoffset: return SetLength(m_style.dashOffset, text, true);
        case Attr::StrokeDasharray: return SetDashes(text);
        case Attr::StrokeMiterlimit: return SetMiterLimit(text);
        case Attr::StrokeLinecap:
            return Choose(m_style.lineCap, text,
                          {{"butt", LineCap::Butt}, {"round", LineCap::Round}, {"square", LineCap::Square}});
        case Attr::StrokeLinejoin:
            // The joins that no browser has are drawn as the initial one.
            return Choose(m_style.lineJoin, text,
                          {{"miter", LineJoin::Miter},
                           {"round", LineJoin::Round},
                           {"bevel", LineJoin::Bevel},
                           {"miter-clip", LineJoin::Miter},
                           {"arcs", LineJoin::Miter}});
        case Attr::Visibility:
            return Choose(m_style.isVisible, text,
                          {{"visible", true}, {"hidden", false}, {"collapse", false}});
        case Attr::PaintOrder: return Assign(m_style.paintOrder, ReadPaintOrder(text));
        case Attr::FontSize:
            return Assign(m_style.fontSize, ReadFontSize(text, m_parent.fontSize, RootFontSize()));
        case Attr::MarkerStart: return SetReference(m_style.markerStart, text);
        case Attr::MarkerMid: return SetReference(m_style.markerMid, text);
        case Attr::MarkerEnd: return SetReference(m_style.markerEnd, text);
        case Attr::ClipPath: return SetReference(m_style.clipPath, text);
        case Attr::Mask: return SetReference(m_style.mask, text);
        case Attr::Filter: return SetReference(m_style.filter, text);
        case Attr::Display: m_style.isDisplayed = !EqualsIgnoringCase(text, "none"); return true;
        case Attr::MixBlendMode:
            if (!EqualsIgnoringCase(text, "normal") && !IsBlendMode(text)) return false;
            m_style.blendMode = EqualsIgnoringCase(text, "normal") ? std::string_view() : text;
            return true;
        case Attr::Overflow: return SetOverflow(text);
        case Attr::VectorEffect:
            m_style.hasNonScalingStroke = EqualsIgnoringCase(text, "non-scaling-stroke");
            return true;
        case Attr::MaskType:
            return Choose(m_style.isAlphaMask, text, {{"alpha", true}, {"luminance", false}});
        case Attr::Transform: m_style.transform = text; return true;
        case Attr::TransformOrigin: m_style.transformOrigin = text; return true;
        case Attr::TransformBox:
            return Choose(m_style.isBoxOrigin, text,
                          {{"fill-box", true},
                           {"border-box", true},
                           {"content-box", true},
                           {"stroke-box", true},
                           {"view-box", false}});
        default: return true;
        }
    }

    /// Copies a property from another style.
    void Copy(Attr property, const ComputedStyle& from) {
        switch (property) {
        case Attr::Fill: m_style.fill = from.fill; break;
        case Attr::Stroke: m_style.stroke = from.stroke; break;
        case Attr::StopColor: m_style.stopColor = from.stopColor; break;
        case Attr::Color:
            m_style.color = from.color;
            m_style.isColorSet = from.isColorSet;
            break;
        case Attr::FillOpacity: m_style.fillOpacity = from.fillOpacity; break;
        case Attr::StrokeOpacity: m_style.strokeOpacity = from.strokeOpacity; break;
        case Attr::StopOpacity: m_style.stopOpacity = from.stopOpacity; break;
        case Attr::Opacity: m_style.opacity = from.opacity; break;
        case Attr::FillRule: m_style.fillRule = from.fillRule; break;
        case Attr::ClipRule: m_style.clipRule = from.clipRule; break;
        case Attr::StrokeWidth: m_style.strokeWidth = from.strokeWidth; break;
        case Attr::StrokeDashoffset: m_style.dashOffset = from.dashOffset; break;
        case Attr::StrokeDasharray: m_style.dashes = from.dashes; break;
        case Attr::StrokeMiterlimit: m_style.miterLimit = from.miterLimit; break;
        case Attr::StrokeLinecap: m_style.lineCap = from.lineCap; break;
        case Attr::StrokeLinejoin: m_style.lineJoin = from.lineJoin; break;
        case Attr::Visibility: m_style.isVisible = from.isVisible; break;
        case Attr::PaintOrder: m_style.paintOrder = from.paintOrder; break;
        case Attr::FontSize: m_style.fontSize = from.fontSize; break;
        case Attr::MarkerStart: m_style.markerStart = from.markerStart; break;
        case Attr::MarkerMid: m_style.markerMid = from.markerMid; break;
        case Attr::MarkerEnd: m_style.markerEnd = from.markerEnd; break;
        case Attr::ClipPath: m_style.clipPath = from.clipPath; break;
        case Attr::Mask: m_style.mask = from.mask; break;
        case Attr::Filter: m_style.filter = from.filter; break;
        case Attr::Display: m_style.isDisplayed = from.isDisplayed; break;
        case Attr::MixBlendMode: m_style.blendMode = from.blendMode; break;
        case Attr::Overflow:
            m_style.isOverflowVisible = from.isOverflowVisible || !from.isOverflowSet;
            m_style.isOverflowSet = true;
            break;
        case Attr::VectorEffect: m_style.hasNonScalingStroke = from.hasNonScalingStroke; break;
        case Attr::MaskType: m_style.isAlphaMask = from.isAlphaMask; break;
        case Attr::Transform: m_style.transform = from.transform; break;
        case Attr::TransformOrigin: m_style.transformOrigin = from.transformOrigin; break;
        case Attr::TransformBox: m_style.isBoxOrigin = from.isBoxOrigin; break;
        default: break;
        }
    }

    const ComputedStyle& m_parent;
    ComputedStyle& m_style;
};

/// Sets what is not inherited to its initial values.
void ResetUninherited(ComputedStyle& style) {
    style.opacity = 1;
    style.isDisplayed = true;
    style.clipPath = style.mask = style.filter = {};
    style.blendMode = style.transform = style.transformOrigin = {};
    style.translate = style.rotate = style.scale = style.background = {};
    style.isTransformAttribute = false;
    style.isOverflowVisible = style.isOverflowSet = false;
    style.hasNonScalingStroke = style.isAlphaMask = style.isBoxOrigin = false;
    style.stopColor = kInitial.stopColor;
    style.stopOpacity = 1;
    std::fill(style.sources.begin() + static_cast<ptrdiff_t>(kLastInherited) + 1, style.sources.end(),
              nullptr);
}

} // namespace

ComputedStyle ComputeStyle(const ComputedStyle& parent, const Node& node, StyleSheets& sheets) {
    const std::span<const Declaration> declarations = sheets.Of(node);
    ComputedStyle style = parent;
    ResetUninherited(style);
    const bool needsCustom = std::any_of(declarations.begin(), declarations.end(), [](const Declaration& d) {
        return d.hasVariable || d.property == Attr::Custom;
    });
    std::shared_ptr<CustomProperties> custom;
    if (needsCustom) {
        custom =
            std::make_shared<CustomProperties>(parent.customProperties, declarations, sheets.VariableWork());
        style.customProperties = custom;
    }
    StyleBuilder builder(parent, style);
    const auto apply = [&](const Declaration& declaration, auto applyValue) {
        if (!declaration.hasVariable) return (builder.*applyValue)(declaration, declaration.value);
        std::optional<std::string> value = custom->WriteOut(declaration.value);
        if (!value) return builder.ApplyInvalid(declaration);
        (builder.*applyValue)(declaration, Trim(custom->Keep(std::move(*value))));
    };
    // Lengths in other declarations may refer to the font size.
    const auto isFontSize = [](const Declaration& declaration) {
        return declaration.property == Attr::FontSize || declaration.property == Attr::Font;
    };
    for (const Declaration& declaration : declarations) {
        if (isFontSize(declaration) || declaration.property == Attr::All)
            apply(declaration, &StyleBuilder::ApplySize);
    }
    if (!(parent.rootFontSize > 0)) style.rootFontSize = style.fontSize;
    for (const Declaration& declaration : declarations) {
        if (!isFontSize(declaration)) apply(declaration, &StyleBuilder::Apply);
    }
    return style;
}

ReferenceValue ReadReference(std::string_view text, std::string_view* rest) {
    ReferenceValue reference;
    reference.text = text;
    if (rest) *rest = {};
    if (EqualsIgnoringCase(text, "none")) return reference;
    reference.kind = ReferenceValue::Kind::Other;
    if (!StartsWithIgnoringCase(text, "url(")) return reference;
    const size_t end = text.find(')');
    std::string_view name = Trim(text.substr(4, end == std::string_view::npos ? end : end - 4));
    if (rest && end != std::string_view::npos) *rest = text.substr(end + 1);
    if (name.size() >= 2 && (name.front() == '"' || name.front() == '\'') && name.back() == name.front()) {
        name = Trim(name.substr(1, name.size() - 2));
    }
    if (!name.starts_with('#')) return reference;
    reference.kind = ReferenceValue::Kind::Local;
    reference.id = name.substr(1);
    return reference;
}

} // namespace ozm::conform
