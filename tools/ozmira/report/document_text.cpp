#include "report/document_text.h"

#include "base/text.h"
#include "report/names.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace ozm::tool {
namespace {

std::string Join(std::initializer_list<double> numbers) {
    std::string text;
    for (const double number : numbers) {
        if (!text.empty()) text += ' ';
        text += FormatNumber(number);
    }
    return text;
}

std::string FormatColor(const Color& color) {
    return "rgba(" + Join({color.r, color.g, color.b, color.a}) + ")";
}

std::string FormatPoint(TVec2<double> point) { return Join({point.x, point.y}); }

std::string FormatId(std::string_view id) { return "#" + OnOneLine(ValidUTF8(id)); }

std::string FormatProperty(const StyleProperty& property) {
    std::string text(NameOf(property.type));
    using Payload = StyleProperty::Payload;
    switch (StyleProperty::PayloadOf(property.type)) {
    case Payload::Color: return text + " " + FormatColor(property.color);
    case Payload::Number: return text + " " + FormatNumber(property.number);
    case Payload::Keyword: return text + " " + std::string(NameOfKeyword(property));
    case Payload::URL: return text + " " + FormatId(property.url);
    case Payload::DashArray:
        for (const double length : property.dashArray) text += " " + FormatNumber(length);
        return text;
    case Payload::None: return text;
    }
    return text;
}

std::string FormatTransform(const Transform& t) {
    return "matrix(" + Join({t.a, t.b, t.c, t.d, t.tx, t.ty}) + ")";
}

/// Writes the lines of one document.
class TreeWriter {
public:
    TreeWriter(StandardOutput& output, const Document& document)
        : m_output(output), m_document(document), m_depths(document.elements.size()) {}

    void Write() {
        m_output.Write("document " + FormatDimension(m_document.size.width) + " x " +
                       FormatDimension(m_document.size.height) + ", view box " +
                       FormatRect(m_document.viewBox) + "\n");
        if (m_document.elements.empty()) m_output.Write("(no elements)\n");
        for (size_t i = 0; i < m_document.elements.size(); ++i) {
            const Element& element = m_document.elements[i];
            // Parents precede their children.
            if (IsContainer(element.type)) {
                for (const uint64_t child : element.children) m_depths[child] = m_depths[i] + 1;
            }
            WriteElement(i, element);
        }
    }

private:
    void WriteElement(size_t index, const Element& element) {
        m_indent.assign(size_t{2} * m_depths[index], ' ');
        std::string line = m_indent + std::to_string(index) + " " + std::string(NameOf(element.type));
        if (!element.id.empty()) line += " " + FormatId(element.id);
        if (element.hidden) line += " hidden";
        if (element.transform != TransformIdentity) line += " " + FormatTransform(element.transform);
        line += FormatGeometry(element);
        if (element.styleIndex >= 0) line += FormatStyle(element.styleIndex);
        m_output.Write(line + "\n");
        if (element.type == Element::Type::Path) WriteCommands(element.path);
        if (element.type == Element::Type::GradientElement) WriteGradient(element.gradient);
    }

    static std::string FormatGeometry(const Element& element) {
        switch (element.type) {
        case Element::Type::Ellipse:
            return " center " + FormatPoint(element.center) + " radius " + FormatPoint(element.radius);
        case Element::Type::Rect:
            return " origin " + Join({element.x, element.y}) + " size " +
                   Join({element.width, element.height}) + " corners " + Join({element.rx, element.ry});
        case Element::Type::Use: return " " + FormatId(element.href) + " at " + FormatPoint(element.position);
        default: return {};
        }
    }

    std::string FormatStyle(int32_t styleIndex) const {
        std::string text = " [";
        for (const StyleProperty& property : m_document.styles[static_cast<size_t>(styleIndex)].properties) {
            if (text.size() > 2) text += ", ";
            text += FormatProperty(property);
        }
        return text + "]";
    }

    void WriteCommands(const Path& path) {
        for (const PathCommand& command : path.commands) {
            m_output.Write(m_indent + "    " + std::string(NameOf(command.type)));
            if (command.type == PathCommand::Type::MoveTo) m_output.Write(" " + FormatPoint(command.point));
            if (command.type == PathCommand::Type::LineTo) {
                for (const auto& point : command.points) m_output.Write(" (" + FormatPoint(point) + ")");
            }
            if (command.type == PathCommand::Type::CurveTo) {
                for (const BezierCurve& curve : command.curves) {
                    m_output.Write(" (" + FormatPoint(curve.control1) + ", " + FormatPoint(curve.control2) +
                                   ", " + FormatPoint(curve.end) + ")");
                }
            }
            m_output.Put('\n');
        }
    }

    void WriteGradient(const Gradient& gradient) {
        std::string line = m_indent + "    " + std::string(NameOf(gradient.type));
        const auto append = [&](std::string_view name, const Dimension& dimension) {
            line += " " + std::string(name) + " " + FormatDimension(dimension);
        };
        if (gradient.type == Gradient::Type::Linear) {
            append("x1", gradient.x1);
            append("y1", gradient.y1);
            append("x2", gradient.x2);
            append("y2", gradient.y2);
        } else {
            append("cx", gradient.cx);
            append("cy", gradient.cy);
            append("fx", gradient.fx);
            append("fy", gradient.fy);
            append("r", gradient.r);
        }
        line +=
            ", " + std::string(NameOf(gradient.units)) + ", " + std::string(NameOf(gradient.spreadMethod));
        if (gradient.transform != TransformIdentity) line += ", " + FormatTransform(gradient.transform);
        m_output.Write(line + "\n");
        for (const Gradient::Stop& stop : gradient.stops) {
            m_output.Write(m_indent + "    stop " + FormatNumber(stop.offset) + " " +
                           FormatColor(stop.color) + "\n");
        }
    }

    StandardOutput& m_output;
    const Document& m_document;
    std::vector<uint32_t> m_depths; ///< Levels below the root, indexed by element.
    std::string m_indent;
};

} // namespace

void WriteText(StandardOutput& output, const Document& document) { TreeWriter(output, document).Write(); }

std::string FormatDimension(const Dimension& dimension) {
    const std::string number = FormatNumber(dimension.value);
    return dimension.unit == Dimension::Unit::Percent ? number + "%"
                                                      : number + " " + std::string(NameOf(dimension.unit));
}

std::string FormatRect(const Rectf& rectangle) {
    return Join({rectangle.origin.x, rectangle.origin.y, rectangle.size.x, rectangle.size.y});
}

} // namespace ozm::tool
