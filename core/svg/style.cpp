#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/number_reader.h"
#include "svg/element_attributes.h"
#include "svg/style_property_names.h"

#include <cstring>
#include <initializer_list>

namespace ozm {
namespace {

using Declaration = std::pair<StringView, StringView>;

StringView Trim(StringView text) { return text.TrimLeadingWhitespace().TrimTrailingWhitespace(); }

StringView ViewBetween(const char* first, const char* last) {
    return {first, static_cast<uint64_t>(last - first)};
}

/// Returns the first `c` in [first, last), or null.
const char* Find(const char* first, const char* last, char c) {
    if (first == last) return nullptr;
    return static_cast<const char*>(std::memchr(first, c, static_cast<size_t>(last - first)));
}

/// Splits a declaration at its colon. `text` is the declaration, without a semicolon. Returns false for an
/// empty value.
bool SplitDeclaration(StringView text, const char* colon, Declaration& declaration) {
    if (colon + 1 == text.end()) return false;
    declaration = {Trim(ViewBetween(text.begin(), colon)), Trim(ViewBetween(colon + 1, text.end()))};
    return true;
}

// Each of these functions appends at most one property.

void AppendColor(SVGParser& parser, StyleProperty::Type type, StringView value, Style& style) {
    Color color;
    if (parser.ParseCSSColor(value, color)) style.properties.emplace_back(type).color = color;
}

void AppendURL(SVGParser& parser, StyleProperty::Type type, StringView value, Style& style) {
    std::string id;
    if (parser.ParseFunctionalLocalIRI(value, id)) style.properties.emplace_back(type).url = std::move(id);
}

/// Appends the value as a number, 0 if it is none.
void AppendOpacity(StyleProperty::Type type, StringView value, Style& style) {
    style.properties.emplace_back(type).number = value.toDouble();
}

void AppendPositiveNumber(StyleProperty::Type type, StringView value, Style& style) {
    double number;
    if (!ReadPositiveDecimal(value.begin(), value.end(), number)) return;
    style.properties.emplace_back(type).number = number;
}

/// Appends the index of the keyword in the list.
void AppendKeyword(StyleProperty::Type type, StringView value,
                   std::initializer_list<std::string_view> keywords, Style& style) {
    uint32_t keyword = 0;
    for (const std::string_view name : keywords) {
        if (value == name) {
            style.properties.emplace_back(type).keyword = keyword;
            return;
        }
        ++keyword;
    }
}

void ApplyProperty(SVGParser& parser, StylePropertyName name, StringView value, Element& element,
                   Style& style) {
    using Name = StylePropertyName;
    using Type = StyleProperty::Type;
    switch (name) {
    case Name::Fill:
        if (value.HasPrefix("url(")) return AppendURL(parser, Type::FillURL, value, style);
        return AppendColor(parser, Type::FillColor, value, style);
    case Name::Stroke: return AppendColor(parser, Type::StrokeColor, value, style);
    case Name::FillOpacity: return AppendOpacity(Type::FillOpacity, value, style);
    case Name::StrokeOpacity: return AppendOpacity(Type::StrokeOpacity, value, style);
    case Name::Opacity: return AppendOpacity(Type::Opacity, value, style);
    case Name::StrokeWidth: return AppendPositiveNumber(Type::StrokeWidth, value, style);
    case Name::StrokeMiterLimit: return AppendPositiveNumber(Type::StrokeMiterLimit, value, style);
    case Name::StrokeDashOffset: return AppendPositiveNumber(Type::StrokeDashOffset, value, style);
    case Name::FillRule: return AppendKeyword(Type::FillRule, value, {"nonzero", "evenodd"}, style);
    case Name::ClipRule: return AppendKeyword(Type::ClipRule, value, {"nonzero", "evenodd"}, style);
    case Name::StrokeLineCap:
        return AppendKeyword(Type::StrokeLineCap, value, {"butt", "round", "square"}, style);
    case Name::StrokeLineJoin:
        return AppendKeyword(Type::StrokeLineJoin, value, {"miter", "round", "bevel"}, style);
    case Name::ClipPath: return AppendURL(parser, Type::ClipPathURL, value, style);
    case Name::Display:
        if (value == "none") element.hidden = true;
        return;
    case Name::Visibility: // The callers have already shown the element, whatever the value.
    case Name::StrokeDashArray:
    case Name::Href:
    case Name::Unknown: return;
    }
}

} // namespace

void SVGParser::ProcessStyleAttributes(Element& element, const XMLNode& node) {
    ProcessStyleAttributes(element, ElementAttributes(node));
}

void SVGParser::ProcessStyleAttributes(Element& element, const ElementAttributes& attributes) {
    Style style;
    style.properties.reserve(attributes.PresentationAttributeCount());
    attributes.ForEachPresentationAttribute([&](StylePropertyName name, StringView value) {
        if (name == StylePropertyName::Visibility) element.hidden = false;
        ApplyProperty(*this, name, value, element, style);
    });
    if (const auto declarations = attributes.Style()) {
        ProcessCSSStylePropertyDeclarations(*declarations, element, style);
    }
    if (style.properties.empty()) {
        element.styleIndex = -1;
        return;
    }
    element.styleIndex = static_cast<int32_t>(document->styles.size());
    document->styles.push_back(std::move(style));
}

void SVGParser::ProcessStyleProperty(StringView name, StringView value, Element& element, Style& style) {
    if (name.HasPrefix("visibility")) element.hidden = false;
    if (name.HasPrefix("style")) {
        ProcessCSSStylePropertyDeclarations(value, element, style);
        return;
    }
    ApplyProperty(*this, FindStylePropertyName(name), value, element, style);
}

bool SVGParser::ParseCSSStylePropertyDeclaration(StringView text, Declaration& declaration,
                                                 StringView& consumed) {
    const char* const colon = Find(text.begin(), text.end(), ':');
    if (!colon) return false;
    const char* const semicolon = Find(colon, text.end(), ';');
    const char* const end = semicolon ? semicolon : text.end();
    if (!SplitDeclaration(ViewBetween(text.begin(), end), colon, declaration)) return false;
    consumed = ViewBetween(text.begin(), semicolon ? semicolon + 1 : end);
    return true;
}

bool SVGParser::ProcessCSSStylePropertyDeclarations(StringView text, Element& element, Style& style) {
    Declaration declaration;
    StringView consumed;
    while (ParseCSSStylePropertyDeclaration(text, declaration, consumed)) {
        text = text.CutFront(consumed.length);
        // The value of a declaration named "style..." is a declaration list itself. It contains at most one
        // declaration, because a value contains no semicolon. Only the length of the text limits the
        // nesting, so this is a loop instead of a recursion. To avoid quadratic time, it does not search for
        // semicolons again.
        bool isComplete = true;
        while (isComplete && declaration.first.HasPrefix("style")) {
            const StringView value = declaration.second;
            const char* const colon = Find(value.begin(), value.end(), ':');
            isComplete = colon && SplitDeclaration(value, colon, declaration);
        }
        if (isComplete) ProcessStyleProperty(declaration.first, declaration.second, element, style);
    }
    return true;
}

} // namespace ozm
