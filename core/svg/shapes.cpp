#include <Ozmira/SVG/ozmSVGParser.h>

#include <algorithm>

namespace ozm {
namespace {

/// Reads an attribute as a number. Returns false, leaving `number` unchanged, if there is no such attribute.
bool ReadNumberAttribute(const XMLNode& node, std::string_view name, double& number) {
    StringView value;
    if (!node.FindAttribute(name, value)) return false;
    number = value.toDouble();
    return true;
}

void AppendLineTo(Path& path, double x, double y) {
    path.commands.emplace_back(std::vector<TVec2<double>>{{x, y}});
}

void AppendMoveTo(Path& path, double x, double y) {
    path.commands.emplace_back(PathCommand::Type::MoveTo).point = {x, y};
}

/// Moves to the first complete pair of numbers, then draws lines to all complete pairs, including the first.
void AppendPolyLine(Path& path, const std::vector<double>& numbers) {
    const size_t end = numbers.size() / 2 * 2; // Past the last complete pair.
    if (end == 0) return;
    path.commands.reserve(end / 2 + 2);
    AppendMoveTo(path, numbers[0], numbers[1]);
    for (size_t i = 0; i < end; i += 2) AppendLineTo(path, numbers[i], numbers[i + 1]);
}

} // namespace

uint64_t SVGParser::ProcessRectNode(const XMLNode& node) {
    const uint64_t index = AddElement(Element::Type::Rect);
    Element& rect = document->elements[index];
    ReadNumberAttribute(node, "x", rect.x);
    ReadNumberAttribute(node, "y", rect.y);
    const bool hasRx = ReadNumberAttribute(node, "rx", rect.rx);
    const bool hasRy = ReadNumberAttribute(node, "ry", rect.ry);
    if (ReadNumberAttribute(node, "width", rect.width) && rect.width == 0) rect.hidden = true;
    if (ReadNumberAttribute(node, "height", rect.height) && rect.height == 0) rect.hidden = true;
    // A radius given for only one direction applies to both. It is copied before it is clamped.
    if (hasRx && !hasRy) rect.ry = rect.rx;
    if (hasRy && !hasRx) rect.rx = rect.ry;
    rect.rx = std::min(rect.rx, rect.width / 2);
    rect.ry = std::min(rect.ry, rect.height / 2);
    ProcessCommonAttributes(index, node);
    return index;
}

uint64_t SVGParser::ProcessCircleNode(const XMLNode& node) {
    const uint64_t index = AddElement(Element::Type::Ellipse);
    Element& circle = document->elements[index];
    ReadNumberAttribute(node, "cx", circle.center.x);
    ReadNumberAttribute(node, "cy", circle.center.y);
    ReadNumberAttribute(node, "r", circle.radius.x);
    circle.radius.y = circle.radius.x;
    ProcessCommonAttributes(index, node);
    return index;
}

uint64_t SVGParser::ProcessEllipseNode(const XMLNode& node) {
    const uint64_t index = AddElement(Element::Type::Ellipse);
    Element& ellipse = document->elements[index];
    ReadNumberAttribute(node, "cx", ellipse.center.x);
    ReadNumberAttribute(node, "cy", ellipse.center.y);
    if (ReadNumberAttribute(node, "rx", ellipse.radius.x) && ellipse.radius.x == 0) ellipse.hidden = true;
    if (ReadNumberAttribute(node, "ry", ellipse.radius.y) && ellipse.radius.y == 0) ellipse.hidden = true;
    ProcessCommonAttributes(index, node);
    return index;
}

uint64_t SVGParser::ProcessLineNode(const XMLNode& node) {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    ReadNumberAttribute(node, "x1", x1);
    ReadNumberAttribute(node, "y1", y1);
    ReadNumberAttribute(node, "x2", x2);
    ReadNumberAttribute(node, "y2", y2);
    const uint64_t index = AddElement(Element::Type::Path);
    Path& path = document->elements[index].path;
    path.commands.reserve(2);
    AppendMoveTo(path, x1, y1);
    AppendLineTo(path, x2, y2);
    ProcessCommonAttributes(index, node);
    return index;
}

uint64_t SVGParser::ProcessPolyLineNode(const XMLNode& node) {
    StringView points;
    if (!node.FindAttribute("points", points)) return kNoElement;
    const std::vector<double> numbers = ParsePathCommandArguments(points);
    if (numbers.size() < 2 || numbers.size() % 2 != 0) return kNoElement;
    const uint64_t index = AddElement(Element::Type::Path);
    AppendPolyLine(document->elements[index].path, numbers);
    ProcessCommonAttributes(index, node);
    return index;
}

uint64_t SVGParser::ProcessPolygonNode(const XMLNode& node) {
    StringView points;
    if (!node.FindAttribute("points", points)) return kNoElement;
    const uint64_t index = AddElement(Element::Type::Path);
    Path& path = document->elements[index].path;
    AppendPolyLine(path, ParsePathCommandArguments(points));
    path.commands.emplace_back(PathCommand::Type::ClosePath);
    ProcessCommonAttributes(index, node);
    return index;
}

} // namespace ozm
