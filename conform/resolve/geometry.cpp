#include "resolve/geometry.h"

#include "geometry/path_reader.h"
#include "geometry/text.h"

#include <utility>
#include <vector>

namespace ozm::conform {
namespace {

/// The path data in the value of the property `d`; empty for "none".
std::string_view PathDataOf(std::string_view value) {
    const size_t first = value.find_first_of("\"'"), last = value.find_last_of("\"'");
    return first < last && last != std::string_view::npos ? value.substr(first + 1, last - first - 1)
                                                          : std::string_view();
}

/// Reads the lengths of one shape.
class ShapeReader {
public:
    ShapeReader(const Node& node, const Context& context, StyleSheets& sheets, double arcTolerance)
        : m_node(node), m_context(context), m_sheets(sheets), m_arcTolerance(arcTolerance) {}

    Geometry Read() const {
        switch (m_node.tag) {
        case Tag::Path: return ReadPathElement();
        case Tag::Rect: return ReadRectangle();
        case Tag::Circle: return ReadCircle();
        case Tag::Ellipse: return ReadEllipse();
        case Tag::Line: return {LinePath({X(Attr::X1), Y(Attr::Y1)}, {X(Attr::X2), Y(Attr::Y2)}), {}, {}};
        case Tag::Polyline:
        case Tag::Polygon: return ReadPolygon();
        default: return {};
        }
    }

private:
    std::optional<CssLength> Get(Attr attr) const { return GeometryLength(m_node, attr, m_sheets); }
    double X(Attr attr) const { return Resolve(Get(attr).value_or(CssLength{}), m_context.BaseX()); }
    double Y(Attr attr) const { return Resolve(Get(attr).value_or(CssLength{}), m_context.BaseY()); }

    /// A radius, or none where it is not given.
    std::optional<double> Radius(Attr attr, const LengthBase& base) const {
        const std::optional<CssLength> length = Get(attr);
        if (!length || length->value < 0) return {};
        return Resolve(*length, base);
    }

    Geometry ReadPathElement() const {
        Geometry geometry;
        const Declaration* const style = PathDeclaration(m_node, m_sheets);
        geometry.data = ReadPath(style ? PathDataOf(style->value) : m_node.Get(Attr::D), m_arcTolerance);
        geometry.path = std::move(geometry.data.path);
        return geometry;
    }

    Geometry ReadRectangle() const {
        Rectangle rectangle{X(Attr::X), Y(Attr::Y), X(Attr::Width), Y(Attr::Height), 0, 0};
        if (!(rectangle.width > 0 && rectangle.height > 0)) return {};
        ResolveRadii(rectangle, Radius(Attr::Rx, m_context.BaseX()), Radius(Attr::Ry, m_context.BaseY()));
        return {PathOf(rectangle), rectangle, {}};
    }

    Geometry ReadCircle() const {
        const double radius = Radius(Attr::R, m_context.BaseDiagonal()).value_or(0);
        return FromEllipse({X(Attr::Cx), Y(Attr::Cy), radius, radius});
    }

    Geometry ReadEllipse() const {
        const std::optional<double> rx = Radius(Attr::Rx, m_context.BaseX());
        const std::optional<double> ry = Radius(Attr::Ry, m_context.BaseY());
        return FromEllipse(
            {X(Attr::Cx), Y(Attr::Cy), rx.value_or(ry.value_or(0)), ry.value_or(rx.value_or(0))});
    }

    static Geometry FromEllipse(const Ellipse& ellipse) {
        if (!(ellipse.rx > 0 && ellipse.ry > 0)) return {};
        return {PathOf(ellipse), ellipse, {}};
    }

    Geometry ReadPolygon() const {
        const PointList list = ReadPoints(m_node.Get(Attr::Points));
        if (list.points.size() < 2) return {};
        return {PolyPath(list.points, m_node.tag == Tag::Polygon), {}, {}};
    }

    const Node& m_node;
    const Context& m_context;
    StyleSheets& m_sheets;
    const double m_arcTolerance;
};

} // namespace

const Declaration* PathDeclaration(const Node& node, StyleSheets& sheets) {
    const Declaration* found = nullptr;
    for (const Declaration& declaration : sheets.Of(node)) {
        if (declaration.property != Attr::D) continue;
        const bool isPath = StartsWithIgnoringCase(declaration.value, "path(");
        if (isPath || EqualsIgnoringCase(declaration.value, "none")) found = &declaration;
    }
    return found;
}

std::optional<CssLength> GeometryLength(const Node& node, Attr attr, StyleSheets& sheets) {
    std::optional<CssLength> length;
    if (const Attribute* const attribute = node.Find(attr)) length = ReadLength(attribute->value);
    if (!IsGeometry(attr)) return length;
    for (const Declaration& declaration : sheets.Of(node)) {
        if (declaration.property == Attr::All) length = {};
        if (declaration.property != attr) continue;
        if (EqualsIgnoringCase(declaration.value, "auto")) length = {};
        if (const std::optional<CssLength> read = ReadLength(declaration.value)) length = read;
    }
    return length;
}

Geometry GeometryOf(const Node& node, const Context& context, StyleSheets& sheets, double arcTolerance) {
    return ShapeReader(node, context, sheets, arcTolerance).Read();
}

} // namespace ozm::conform
