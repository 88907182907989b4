#include "subset/ozmira_values.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <utility>

namespace ozm::conform {
namespace {

double ReadCoordinate(std::string_view raw, bool isUserSpace, double otherwise) {
    Dimension dimension{};
    dimension.value = otherwise;
    if (!SVGParser().ParseDimension(StringView(raw), dimension,
                                    SVGParser::UnitAttributeFormat::CaseSensitive)) {
        return otherwise;
    }
    const bool isShare = dimension.unit == Dimension::Unit::Percent && !isUserSpace;
    return isShare ? dimension.value * 0.01 : dimension.value;
}

/// A number, or a percentage as a share of 1, at the start of a value.
double ReadShareOrNumber(std::string_view raw, double otherwise) {
    const StringView number = ScanScientificNumber(StringView(raw));
    if (number.empty()) return otherwise;
    const bool isPercent = number.length < raw.size() && raw[number.length] == '%';
    return number.toDouble() * (isPercent ? 0.01 : 1);
}

void SetColor(OzmiraStop& stop, std::string_view raw, bool isReset) {
    ozm::Color color{};
    if (!SVGParser().ParseCSSColor(StringView(raw), color) && !isReset) return;
    stop.r = color.r;
    stop.g = color.g;
    stop.b = color.b;
}

OzmiraStop ReadStop(const Node& node) {
    OzmiraStop stop;
    if (const auto raw = OzmiraAttribute(node, Attr::StopColor)) SetColor(stop, *raw, true);
    if (const auto raw = OzmiraAttribute(node, Attr::StopOpacity)) stop.alpha = ReadShareOrNumber(*raw, 1);
    if (const auto raw = OzmiraAttribute(node, Attr::Offset)) stop.offset = ReadShareOrNumber(*raw, 0);
    const auto style = OzmiraAttribute(node, Attr::Style);
    if (!style) return stop;
    StringView text(*style), consumed;
    std::pair<StringView, StringView> declaration;
    SVGParser parser;
    while (parser.ParseCSSStylePropertyDeclaration(text, declaration, consumed)) {
        const std::string_view name = declaration.first;
        if (name == "stop-opacity") stop.alpha = ReadShareOrNumber(declaration.second, stop.alpha);
        if (name == "stop-color") SetColor(stop, declaration.second, false);
        text = text.CutFront(consumed.length);
    }
    return stop;
}

} // namespace

double OzmiraNumber(std::string_view raw) { return StringView(raw).toDouble(); }

std::optional<std::string_view> OzmiraAttribute(const Node& node, Attr attr) {
    const Attribute* const attribute = node.Find(attr);
    if (!attribute || !attribute->raw.data()) return {};
    return attribute->raw;
}

double OzmiraNumber(const Node& node, Attr attr, double otherwise) {
    const auto raw = OzmiraAttribute(node, attr);
    return raw ? OzmiraNumber(*raw) : otherwise;
}

OzmiraFrame ReadOzmiraFrame(const Node& root) {
    OzmiraFrame frame;
    const auto width = OzmiraAttribute(root, Attr::Width), height = OzmiraAttribute(root, Attr::Height);
    if (width && height) {
        frame.width = ReadCoordinate(*width, true, 0);
        frame.height = ReadCoordinate(*height, true, 0);
    }
    Rectf box{};
    if (const auto raw = OzmiraAttribute(root, Attr::ViewBox)) {
        SVGParser().ParseViewBox(StringView(*raw), box);
        if (!width || !height) {
            frame.width = box.size.x;
            frame.height = box.size.y;
        }
    }
    if (!(box.size.x != 0 && box.size.y != 0)) box = {{0, 0}, {frame.width, frame.height}};
    frame.x = box.origin.x;
    frame.y = box.origin.y;
    frame.viewWidth = box.size.x;
    frame.viewHeight = box.size.y;
    return frame;
}

OzmiraGradient ReadOzmiraGradient(const Node& node) {
    OzmiraGradient gradient;
    gradient.isUserSpace = OzmiraAttribute(node, Attr::GradientUnits) == "userSpaceOnUse";
    const auto coordinate = [&](Attr attr, double otherwise) {
        const auto raw = OzmiraAttribute(node, attr);
        return raw ? ReadCoordinate(*raw, gradient.isUserSpace, otherwise) : otherwise;
    };
    double(&at)[5] = gradient.coordinates;
    if (node.tag == Tag::LinearGradient) {
        at[0] = coordinate(Attr::X1, 0);
        at[1] = coordinate(Attr::Y1, 0);
        at[2] = coordinate(Attr::X2, 0);
        at[3] = coordinate(Attr::Y2, 0);
    } else {
        at[0] = coordinate(Attr::Cx, 0);
        at[1] = coordinate(Attr::Cy, 0);
        at[2] = coordinate(Attr::R, 0);
        at[3] = coordinate(Attr::Fx, at[0]);
        at[4] = coordinate(Attr::Fy, at[1]);
    }
    if (const auto raw = OzmiraAttribute(node, Attr::GradientTransform))
        gradient.transform = OzmiraTransform(*raw);
    for (const Node* child = node.firstChild; child; child = child->nextSibling) {
        if (child->tag == Tag::Stop && child->isPlain) gradient.stops.push_back(ReadStop(*child));
    }
    return gradient;
}

bool IsInOzmiraTree(const Node& node) {
    if (!node.isPlain || !node.parent || !IsKnownToOzmira(node.tag)) return false;
    for (const Node* at = node.parent; at->parent; at = at->parent) {
        const bool isContainer =
            at->tag == Tag::G || at->tag == Tag::A || at->tag == Tag::Defs || at->tag == Tag::ClipPath;
        if (!isContainer || !at->isPlain) return false;
    }
    return true;
}

} // namespace ozm::conform
