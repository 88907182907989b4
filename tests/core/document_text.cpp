#include "document_text.h"

#include <Ozmira/SVG/ozmSVGParser.h>

#include <charconv>
#include <initializer_list>

namespace ozm::test {
namespace {

using test::Text;

void AppendTo(std::string& list, const char* separator, const std::string& item) {
    if (!list.empty()) list += separator;
    list += item;
}

std::string Text(double number) {
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr};
}

std::string List(std::initializer_list<double> numbers) {
    std::string text;
    for (const double number : numbers) AppendTo(text, ",", Text(number));
    return text;
}

std::string List(TVec2<double> point) { return List({point.x, point.y}); }

std::string Text(const Dimension& dimension) {
    static const char* const suffixes[] = {"?", "em", "px", "pt", "pc", "cm", "mm", "in", "%"};
    return Text(dimension.value) + suffixes[static_cast<int>(dimension.unit)];
}

std::string Text(const Transform& t) { return List({t.a, t.b, t.c, t.d, t.tx, t.ty}); }

std::string Text(const Color& color) { return List({color.r, color.g, color.b, color.a}); }

std::string Text(const PathCommand& command) {
    std::string text;
    switch (command.type) {
    case PathCommand::Type::MoveTo: return text.append("M").append(List(command.point));
    case PathCommand::Type::ClosePath: return "Z";
    case PathCommand::Type::LineTo:
        for (const auto& point : command.points) AppendTo(text, ";", List(point));
        return text.insert(0, 1, 'L');
    case PathCommand::Type::CurveTo:
        for (const auto& [end, c1, c2] : command.curves) {
            AppendTo(text, ";", List({c1.x, c1.y, c2.x, c2.y, end.x, end.y}));
        }
        return text.insert(0, 1, 'C');
    default: return "?";
    }
}

std::string Text(const StyleProperty& property) {
    static const char* const names[] = {
        "StrokeColor",      "StrokeOpacity",   "StrokeWidth",      "StrokeLineCap", "StrokeLineJoin",
        "StrokeMiterLimit", "StrokeDashArray", "StrokeDashOffset", "FillColor",     "FillURL",
        "FillOpacity",      "FillRule",        "ClipPathURL",      "ClipRule",      "Opacity"};
    using Type = StyleProperty::Type;
    const std::string name = names[static_cast<int>(property.type)];
    switch (property.type) {
    case Type::StrokeColor:
    case Type::FillColor: return name + "=" + Text(property.color);
    case Type::FillURL:
    case Type::ClipPathURL: return name + "=#" + property.url;
    case Type::StrokeLineCap:
    case Type::StrokeLineJoin:
    case Type::FillRule: return name + "=" + std::to_string(property.keyword);
    case Type::ClipRule: // Its keyword does not survive a copy.
    case Type::StrokeDashArray: return name;
    default: return name + "=" + Text(property.number);
    }
}

std::string PayloadText(const Element& element) {
    std::string text;
    switch (element.type) {
    case Element::Type::Group: text = "Group"; break;
    case Element::Type::Defs: text = "Defs"; break;
    case Element::Type::ClipPath: text = "ClipPath"; break;
    case Element::Type::Path: return std::string("Path ") + Text(element.path);
    case Element::Type::Ellipse:
        return std::string("Ellipse ") + List(element.center) + " " + List(element.radius);
    case Element::Type::Rect:
        return std::string("Rect ") +
               List({element.x, element.y, element.width, element.height, element.rx, element.ry});
    case Element::Type::Use: return std::string("Use ") + List(element.position) + " #" + element.href;
    case Element::Type::GradientElement: return Text(element.gradient);
    }
    for (const uint64_t child : element.children) text.append(" ").append(std::to_string(child));
    return text;
}

std::string LinesText(const Document& document, size_t first) {
    std::string text;
    for (size_t i = first; i < document.elements.size(); ++i)
        text += Text(document, document.elements[i]) + "\n";
    return text;
}

} // namespace

std::string Text(const Path& path) {
    std::string text;
    for (const PathCommand& command : path.commands) AppendTo(text, " ", Text(command));
    return text;
}

std::string Text(const Style& style) {
    std::string text;
    for (const StyleProperty& property : style.properties) AppendTo(text, " ", Text(property));
    return text;
}

std::string Text(const Gradient& g) {
    static const char* const methods[] = {"Pad", "Reflect", "Repeat"};
    std::string text =
        g.type == Gradient::Type::Linear
            ? std::string("Linear ") + Text(g.x1) + "," + Text(g.y1) + "," + Text(g.x2) + "," + Text(g.y2)
            : std::string("Radial ") + Text(g.cx) + "," + Text(g.cy) + "," + Text(g.r) + "," + Text(g.fx) +
                  "," + Text(g.fy);
    text += g.units == Gradient::Units::UserSpaceOnUse ? " user" : " box";
    text += std::string(" ") + methods[static_cast<int>(g.spreadMethod)];
    if (g.transform != TransformIdentity) text.append(" gradientTransform=").append(Text(g.transform));
    for (const auto& [offset, color] : g.stops) text.append(" @").append(Text(offset) + ":" + Text(color));
    return text;
}

std::string Text(const Document& document, const Element& element) {
    std::string text = PayloadText(element);
    if (!element.id.empty()) text.append(" id=").append(element.id);
    if (element.transform != TransformIdentity) text.append(" transform=").append(Text(element.transform));
    if (element.styleIndex >= 0) {
        text.append(" {").append(Text(document.styles.at(static_cast<size_t>(element.styleIndex))) + "}");
    }
    if (element.hidden) text += " hidden";
    return text;
}

std::string Text(const Document& document) {
    const auto& [origin, size] = document.viewBox;
    std::string text = List({origin.x, origin.y, size.x, size.y}) + " " + Text(document.size.width) + " " +
                       Text(document.size.height);
    for (const auto& [id, index] : document.definitions)
        text.append(" ").append(id + "=" + std::to_string(index));
    return text + "\n" + LinesText(document, 0);
}

std::string ElementsText(const std::string& markup) {
    const std::string svg = "<svg>" + markup + "</svg>";
    return LinesText(*SVGParser().CreateDocumentWithSVGData(svg.c_str()), 1);
}

} // namespace ozm::test
