#include "report/document_json.h"

#include "report/names.h"

#include <array>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace ozm::tool {
namespace {

/// Has one function for each record of the document model.
class DocumentWriter {
public:
    explicit DocumentWriter(JSONWriter& json) : m_json(json) {}

    void Write(const Dimension& dimension) {
        m_json.Object([&] {
            m_json.Member("unit", NameOf(dimension.unit));
            m_json.Member("value", dimension.value);
        });
    }

    void Write(const Rectf& rectangle) {
        m_json.Value(std::array{rectangle.origin.x, rectangle.origin.y, rectangle.size.x, rectangle.size.y});
    }

    void Write(const Document& document) {
        m_json.Object([&] {
            WriteMember("viewBox", document.viewBox);
            WriteMember("size", document.size);
            WriteList("definitions", document.definitions);
            WriteList("elements", document.elements);
            WriteList("styles", document.styles);
        });
    }

private:
    void Write(TVec2<double> point) { m_json.Value(std::array{point.x, point.y}); }

    void Write(const Color& color) { m_json.Value(std::array{color.r, color.g, color.b, color.a}); }

    void Write(const Transform& t) { m_json.Value(std::array{t.a, t.b, t.c, t.d, t.tx, t.ty}); }

    void WriteMember(std::string_view name, const auto& value) {
        m_json.Key(name);
        Write(value);
    }

    void Write(const BezierCurve& curve) {
        m_json.Object([&] {
            WriteMember("end", curve.end);
            WriteMember("control1", curve.control1);
            WriteMember("control2", curve.control2);
        });
    }

    template <typename T>
    void WriteList(std::string_view name, const std::vector<T>& list) {
        m_json.Key(name);
        m_json.Array([&] {
            for (const T& item : list) Write(item);
        });
    }

    void Write(const PathCommand& command) {
        m_json.Object([&] {
            m_json.Member("type", NameOf(command.type));
            switch (command.type) {
            case PathCommand::Type::MoveTo: WriteMember("point", command.point); break;
            case PathCommand::Type::LineTo: WriteList("points", command.points); break;
            case PathCommand::Type::CurveTo: WriteList("curves", command.curves); break;
            default: break;
            }
        });
    }

    void Write(const Gradient::Stop& stop) {
        m_json.Object([&] {
            m_json.Member("offset", stop.offset);
            WriteMember("color", stop.color);
        });
    }

    void Write(const Gradient& gradient) {
        using NamedCoordinate = std::pair<std::string_view, Dimension Gradient::*>;
        static constexpr NamedCoordinate kCoordinates[] = {
            {"x1", &Gradient::x1}, {"y1", &Gradient::y1}, {"x2", &Gradient::x2},
            {"y2", &Gradient::y2}, {"cx", &Gradient::cx}, {"cy", &Gradient::cy},
            {"fx", &Gradient::fx}, {"fy", &Gradient::fy}, {"r", &Gradient::r}};
        m_json.Object([&] {
            m_json.Member("type", NameOf(gradient.type));
            m_json.Member("units", NameOf(gradient.units));
            m_json.Member("spreadMethod", NameOf(gradient.spreadMethod));
            WriteMember("transform", gradient.transform);
            WriteList("stops", gradient.stops);
            for (const auto& [name, coordinate] : kCoordinates) WriteMember(name, gradient.*coordinate);
        });
    }

    /// Writes the members that only elements of this kind have.
    void WritePayload(const Element& element) {
        switch (element.type) {
        case Element::Type::Group:
        case Element::Type::ClipPath:
        case Element::Type::Defs:
            m_json.Key("children");
            m_json.Array([&] {
                for (const uint64_t child : element.children) m_json.Value(child);
            });
            break;
        case Element::Type::Path: WriteList("commands", element.path.commands); break;
        case Element::Type::Ellipse:
            WriteMember("center", element.center);
            WriteMember("radius", element.radius);
            break;
        case Element::Type::Rect:
            m_json.Member("x", element.x);
            m_json.Member("y", element.y);
            m_json.Member("width", element.width);
            m_json.Member("height", element.height);
            m_json.Member("rx", element.rx);
            m_json.Member("ry", element.ry);
            break;
        case Element::Type::Use:
            WriteMember("position", element.position);
            m_json.Member("href", element.href);
            break;
        case Element::Type::GradientElement: WriteMember("gradient", element.gradient); break;
        }
    }

    void Write(const Element& element) {
        m_json.Object([&] {
            m_json.Member("type", NameOf(element.type));
            m_json.Member("id", element.id);
            WriteMember("transform", element.transform);
            m_json.Member("styleIndex", element.styleIndex);
            m_json.Member("hidden", element.hidden);
            WritePayload(element);
        });
    }

    void Write(const StyleProperty& property) {
        m_json.Object([&] {
            m_json.Member("type", NameOf(property.type));
            using Payload = StyleProperty::Payload;
            switch (StyleProperty::PayloadOf(property.type)) {
            case Payload::Color: WriteMember("color", property.color); break;
            case Payload::Number: m_json.Member("number", property.number); break;
            case Payload::Keyword: m_json.Member("keyword", NameOfKeyword(property)); break;
            case Payload::DashArray: m_json.Member("dashArray", std::span(property.dashArray)); break;
            case Payload::URL: m_json.Member("url", property.url); break;
            case Payload::None: break;
            }
        });
    }

    void Write(const Style& style) {
        m_json.Array([&] {
            for (const StyleProperty& property : style.properties) Write(property);
        });
    }

    void Write(const Definition& definition) {
        m_json.Object([&] {
            m_json.Member("id", definition.id);
            m_json.Member("elementIndex", definition.elementIndex);
        });
    }

    void Write(const DimensionSize& size) {
        m_json.Object([&] {
            WriteMember("width", size.width);
            WriteMember("height", size.height);
        });
    }

    JSONWriter& m_json;
};

} // namespace

void WriteJSON(JSONWriter& json, const Document& document) { DocumentWriter(json).Write(document); }
void WriteJSON(JSONWriter& json, const Dimension& dimension) { DocumentWriter(json).Write(dimension); }
void WriteJSON(JSONWriter& json, const Rectf& rectangle) { DocumentWriter(json).Write(rectangle); }

} // namespace ozm::tool
