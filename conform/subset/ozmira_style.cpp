#include "subset/ozmira_style.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <optional>
#include <utility>

namespace ozm::conform {
namespace {

/// The number at the start of a length that Ozmira reads: digits with a fraction, without a sign.
std::optional<double> ReadLengthPrefix(StringView value) {
    if (std::string_view(value) == "inherit") return {};
    uint64_t length = 0, digits = 0;
    while (length < value.length && isNumericDigit(value.data[length])) ++length, ++digits;
    if (length < value.length && value.data[length] == '.') {
        ++length;
        while (length < value.length && isNumericDigit(value.data[length])) ++length, ++digits;
    }
    if (digits == 0) return {};
    return StringView(value.data, length).toDouble();
}

/// Reads the properties of one element.
class Reader {
public:
    Reader(OzmiraStyle& style, OzmiraElement& element) : m_style(style), m_element(element) {}

    void Apply(Attr property, StringView value, uint32_t offset) {
        if (!IsPresentation(property)) return;
        if (Set(property, value)) m_style.offsets[static_cast<size_t>(property)] = offset;
    }

    void ApplyDeclarations(StringView text, uint32_t offset) {
        std::pair<StringView, StringView> declaration;
        StringView consumed;
        while (m_parser.ParseCSSStylePropertyDeclaration(text, declaration, consumed)) {
            const auto& [name, value] = declaration;
            if (name.HasPrefix("visibility")) m_element.isHidden = false;
            if (name.HasPrefix("style")) {
                ApplyDeclarations(value, offset);
            } else {
                Apply(AttrOf(name), value, offset);
            }
            text = text.CutFront(consumed.length);
        }
    }

private:
    bool SetColor(ozm::Color& color, StringView value) { return m_parser.ParseCSSColor(value, color); }

    bool SetFill(StringView value) {
        if (!value.HasPrefix("url(")) return SetColor(m_style.fill, value);
        std::string id;
        if (!m_parser.ParseFunctionalLocalIRI(value, id)) return false;
        m_style.fillReference = std::string_view(value).substr(5, id.size());
        return true;
    }

    bool SetClip(StringView value) {
        std::string id;
        if (!m_parser.ParseFunctionalLocalIRI(value, id)) return false;
        m_element.clips.push_back(std::string_view(value).substr(5, id.size()));
        return true;
    }

    static bool SetNumber(double& member, double value) {
        member = value;
        return true;
    }

    static bool SetLength(double& member, StringView value) {
        const std::optional<double> length = ReadLengthPrefix(value);
        if (length) member = *length;
        return length.has_value();
    }

    template <typename Value>
    static bool Choose(Value& member, std::string_view text,
                       std::initializer_list<std::pair<std::string_view, Value>> words) {
        for (const auto& [word, value] : words) {
            if (text != word) continue;
            member = value;
            return true;
        }
        return false;
    }

    bool Set(Attr property, StringView value) {
        switch (property) {
        case Attr::Fill: return SetFill(value);
        case Attr::Stroke: return !value.HasPrefix("url(") && SetColor(m_style.stroke, value);
        case Attr::FillOpacity: return SetNumber(m_style.fillOpacity, value.toDouble());
        case Attr::StrokeOpacity: return SetNumber(m_style.strokeOpacity, value.toDouble());
        case Attr::Opacity:
            m_element.opacity *= value.toDouble();
            m_style.opacity *= value.toDouble();
            return true;
        case Attr::StrokeWidth: return SetLength(m_style.strokeWidth, value);
        case Attr::StrokeMiterlimit: return SetLength(m_style.miterLimit, value);
        case Attr::FillRule:
            return Choose<FillRule>(m_style.fillRule, value,
                                    {{"nonzero", FillRule::NonZero}, {"evenodd", FillRule::EvenOdd}});
        case Attr::StrokeLinecap:
            return Choose<LineCap>(
                m_style.lineCap, value,
                {{"butt", LineCap::Butt}, {"round", LineCap::Round}, {"square", LineCap::Square}});
        case Attr::StrokeLinejoin:
            return Choose<LineJoin>(
                m_style.lineJoin, value,
                {{"miter", LineJoin::Miter}, {"round", LineJoin::Round}, {"bevel", LineJoin::Bevel}});
        case Attr::ClipPath: return SetClip(value);
        case Attr::Display:
            if (std::string_view(value) == "none") m_element.isHidden = true;
            return true;
        case Attr::Visibility: m_element.isHidden = false; return true;
        default: return false;
        }
    }

    OzmiraStyle& m_style;
    OzmiraElement& m_element;
    SVGParser m_parser;
};

bool IsWritten(const Attribute& attribute) { return attribute.raw.data() != nullptr; }

} // namespace

OzmiraElement ApplyOzmiraStyle(const Node& node, OzmiraStyle& style) {
    OzmiraElement element;
    Reader reader(style, element);
    const Attribute* visibility = nullptr;
    const Attribute* declarations = nullptr;
    for (const Attribute& attribute : node.attributes) {
        if (!IsWritten(attribute)) continue;
        if (attribute.attr == Attr::Style) {
            declarations = &attribute;
        } else if (attribute.attr == Attr::Visibility) {
            visibility = &attribute; // read after `display`, wherever it stands
        } else {
            reader.Apply(attribute.attr, StringView(attribute.raw), attribute.offset);
        }
    }
    if (visibility) reader.Apply(Attr::Visibility, StringView(visibility->raw), visibility->offset);
    if (declarations) reader.ApplyDeclarations(StringView(declarations->raw), declarations->offset);
    return element;
}

bool ReadsFromStyle(std::string_view styleText, std::string_view property, std::string_view value) {
    SVGParser parser;
    StringView text(styleText), consumed;
    std::pair<StringView, StringView> declaration;
    bool isRead = false;
    while (parser.ParseCSSStylePropertyDeclaration(text, declaration, consumed)) {
        if (std::string_view(declaration.first) == property)
            isRead = std::string_view(declaration.second) == value;
        text = text.CutFront(consumed.length);
    }
    return isRead;
}

} // namespace ozm::conform
