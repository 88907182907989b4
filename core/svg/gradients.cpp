#include <Ozmira/SVG/ozmSVGParser.h>

#include "numbers/number_reader.h"

namespace ozm {
namespace {

/// Reads a number, which is divided by 100 if a "%" follows directly. Returns false, leaving `number`
/// unchanged, if there is none.
bool ReadFraction(StringView text, double& number) {
    double value;
    const char* const end = ReadScientificNumber(text.begin(), text.end(), value);
    if (!end) return false;
    number = end != text.end() && *end == '%' ? value * 0.01 : value;
    return true;
}

/// Returns false, leaving `out` unchanged, if the attribute is missing or is no length.
bool ReadDimensionAttribute(SVGParser& parser, const XMLNode& node, std::string_view name, Dimension& out) {
    StringView value;
    return node.FindAttribute(name, value) &&
           parser.ParseDimension(value, out, SVGParser::UnitAttributeFormat::CaseSensitive);
}

void ReadLinearGeometry(SVGParser& parser, const XMLNode& node, Gradient& gradient) {
    ReadDimensionAttribute(parser, node, "x1", gradient.x1);
    ReadDimensionAttribute(parser, node, "y1", gradient.y1);
    ReadDimensionAttribute(parser, node, "x2", gradient.x2);
    ReadDimensionAttribute(parser, node, "y2", gradient.y2);
}

void ReadRadialGeometry(SVGParser& parser, const XMLNode& node, Gradient& gradient) {
    ReadDimensionAttribute(parser, node, "cx", gradient.cx);
    ReadDimensionAttribute(parser, node, "cy", gradient.cy);
    ReadDimensionAttribute(parser, node, "r", gradient.r);
    if (!ReadDimensionAttribute(parser, node, "fx", gradient.fx)) gradient.fx = gradient.cx;
    if (!ReadDimensionAttribute(parser, node, "fy", gradient.fy)) gradient.fy = gradient.cy;
}

void ReadUnits(StringView value, Gradient& gradient) {
    if (value == "objectBoundingBox") gradient.units = Gradient::Units::ObjectBoundingBox;
    if (value == "userSpaceOnUse") gradient.units = Gradient::Units::UserSpaceOnUse;
}

/// Unlike in SVG, the keywords are capitalised.
void ReadSpreadMethod(StringView value, Gradient& gradient) {
    if (value == "Pad") gradient.spreadMethod = Gradient::SpreadMethod::Pad;
    if (value == "Reflect") gradient.spreadMethod = Gradient::SpreadMethod::Reflect;
    if (value == "Repeat") gradient.spreadMethod = Gradient::SpreadMethod::Repeat;
}

} // namespace

uint64_t SVGParser::ProcessGradientNode(const XMLNode& node, Gradient::Type type) {
    const uint64_t index = AddElement(Element::Type::GradientElement);
    Element& element = document->elements[index];
    Gradient& gradient = element.gradient;
    gradient.type = type;
    ProcessIDAttribute(element, node);
    if (type == Gradient::Type::Linear) {
        ReadLinearGeometry(*this, node, gradient);
    } else {
        ReadRadialGeometry(*this, node, gradient);
    }
    StringView value;
    if (node.FindAttribute("gradientUnits", value)) ReadUnits(value, gradient);
    if (node.FindAttribute("gradientTransform", value)) ParseTransform(value, gradient.transform);
    if (node.FindAttribute("spreadMethod", value)) ReadSpreadMethod(value, gradient);
    for (XMLNode child = node.FirstChild(); child; child = child.NextSibling()) {
        if (child.Name() == "stop") ProcessStopNode(child, gradient);
    }
    return index;
}

size_t SVGParser::ProcessLinearGradientNode(const XMLNode& node) {
    return ProcessGradientNode(node, Gradient::Type::Linear);
}

size_t SVGParser::ProcessRadialGradientNode(const XMLNode& node) {
    return ProcessGradientNode(node, Gradient::Type::Radial);
}

void SVGParser::ProcessStopNode(const XMLNode& node, Gradient& gradient) {
    Gradient::Stop stop;
    double opacity = 1;
    const auto readColor = [&](StringView value) {
        Color color;
        if (ParseCSSColor(value, color)) stop.color = color;
    };
    StringView value;
    if (node.FindAttribute("stop-color", value)) readColor(value);
    if (node.FindAttribute("stop-opacity", value)) ReadFraction(value, opacity);
    if (node.FindAttribute("offset", value)) ReadFraction(value, stop.offset);
    if (node.FindAttribute("style", value)) {
        std::pair<StringView, StringView> declaration;
        StringView consumed;
        while (ParseCSSStylePropertyDeclaration(value, declaration, consumed)) {
            if (declaration.first == "stop-opacity") ReadFraction(declaration.second, opacity);
            if (declaration.first == "stop-color") readColor(declaration.second);
            value = value.CutFront(consumed.length);
        }
    }
    stop.color.a = opacity;
    gradient.stops.push_back(stop);
}

} // namespace ozm
