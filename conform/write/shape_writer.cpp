#include "write/shape_writer.h"

#include "base/limits.h"
#include "geometry/number_text.h"
#include "geometry/path_writer.h"
#include "geometry/transform_reader.h"
#include "geometry/winding.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace ozm::conform {
namespace {

std::string Number(double value, int decimals) {
    std::string text;
    WriteNumber(value, decimals, text);
    return text;
}

/// Adds an attribute that counts as 0 when it is left out.
void AddUnlessZero(std::string& out, std::string_view name, double value, int decimals) {
    if (const std::string text = Number(value, decimals); text != "0") AppendAttribute(out, name, text);
}

std::string RectangleElement(const Rectangle& r, const Matrix& m, int decimals) {
    std::string out = "rect";
    AddUnlessZero(out, "x", m.a * r.x + m.e, decimals);
    AddUnlessZero(out, "y", m.d * r.y + m.f, decimals);
    const std::string width = Number(m.a * r.width, decimals), height = Number(m.d * r.height, decimals);
    if (width == "0" || height == "0") return {};
    AppendAttribute(out, "width", width);
    AppendAttribute(out, "height", height);
    if (!(r.rx > 0 && r.ry > 0)) return out;
    const std::string rx = Number(m.a * r.rx, decimals), ry = Number(m.d * r.ry, decimals);
    if (rx == "0" || ry == "0") return out;
    AppendAttribute(out, "rx", rx);
    if (rx != ry) AppendAttribute(out, "ry", ry);
    return out;
}

std::string EllipseElement(const Ellipse& e, const Matrix& m, int decimals) {
    const std::string rx = Number(m.a * e.rx, decimals), ry = Number(m.d * e.ry, decimals);
    if (rx == "0" || ry == "0") return {};
    std::string out = rx == ry ? "circle" : "ellipse";
    AddUnlessZero(out, "cx", m.a * e.cx + m.e, decimals);
    AddUnlessZero(out, "cy", m.d * e.cy + m.f, decimals);
    if (rx == ry) {
        AppendAttribute(out, "r", rx);
    } else {
        AppendAttribute(out, "rx", rx);
        AppendAttribute(out, "ry", ry);
    }
    return out;
}

/// Decimals for coordinates that a transform stretches afterwards.
int DecimalsBefore(const Matrix& matrix, int decimals) {
    const double scale = LargestScale(matrix);
    if (!(scale > 0)) return decimals;
    return std::clamp(decimals + static_cast<int>(std::ceil(std::log10(scale) - 0.1)) + 1, 0, 15);
}

} // namespace

std::string ShapeWriter::PrimitiveElement(const Primitive& primitive, const Matrix& matrix,
                                          int decimals) const {
    if (const auto* const rectangle = std::get_if<Rectangle>(&primitive)) {
        return RectangleElement(*rectangle, matrix, decimals);
    }
    if (const auto* const ellipse = std::get_if<Ellipse>(&primitive)) {
        return EllipseElement(*ellipse, matrix, decimals);
    }
    return {};
}

WrittenShape ShapeWriter::Write(const Shape& shape) {
    WrittenShape out;
    const std::optional<double> scale = SimilarityScale(shape.matrix);
    // The pen has the shape that the transform gives it, so a transform that squeezes it has to be written.
    const bool keepsTransform = shape.stroke && !scale;
    const Matrix kept = keepsTransform ? shape.matrix : Matrix{};
    const Matrix applied = keepsTransform ? Matrix{} : shape.matrix;
    const int decimals = keepsTransform ? DecimalsBefore(kept, m_decimals) : m_decimals;
    Path path = Transformed(shape.path, applied);
    if (!IsWithin(kLargestCoordinate, path, {})) return {};

    const bool hasPrimitive =
        !std::holds_alternative<std::monostate>(shape.primitive) && IsUprightScaling(applied);
    if (hasPrimitive) out.element = PrimitiveElement(shape.primitive, applied, decimals);
    if (out.element.empty()) {
        std::string data;
        WritePath(path, decimals, data);
        if (data.empty()) return {};
        out.element = "path";
        AppendAttribute(out.element, "d", data);
    }
    if (keepsTransform) {
        const Box box = BoxOf(path);
        const double extent =
            std::max({std::abs(box.left), std::abs(box.right), std::abs(box.top), std::abs(box.bottom)});
        std::string transform;
        WriteTransform(kept, m_decimals, extent, transform);
        out.hasTransform = !transform.empty();
        if (out.hasTransform) AppendAttribute(out.element, "transform", transform);
    }
    WriteFill(shape, path, Inverse(kept).value_or(Matrix{}), out);
    if (shape.stroke) WriteStroke(shape, keepsTransform ? 1 : *scale, decimals, out);
    double opacity = shape.opacity;
    if (shape.fill.kind == Paint::Kind::Gradient) opacity *= shape.fill.color.alpha;
    if (opacity < 1) out.style.emplace_back("opacity", Number(opacity, 4));
    return out;
}

void ShapeWriter::WriteFill(const Shape& shape, const Path& path, const Matrix& inverse, WrittenShape& out) {
    const Paint& fill = shape.fill;
    switch (fill.kind) {
    case Paint::Kind::None: out.style.emplace_back("fill", "none"); return;
    case Paint::Kind::Gradient:
        out.style.emplace_back("fill", "url(#" + m_gradients.IdOf(*fill.gradient, inverse) + ")");
        return;
    case Paint::Kind::Color: break;
    }
    if (!fill.isTintable) {
        std::string color;
        WriteColor(fill.color, color);
        out.style.emplace_back("fill", std::move(color));
    }
    if (fill.color.alpha < 1) out.style.emplace_back("fill-opacity", Number(fill.color.alpha, 4));
    if (shape.fillRule == FillRule::EvenOdd && !RulesAgree(path, m_tolerance)) {
        out.style.emplace_back("fill-rule", "evenodd");
    }
}

void ShapeWriter::WriteStroke(const Shape& shape, double scale, int decimals, WrittenShape& out) {
    const Stroke& pen = shape.pen;
    std::string color;
    WriteColor(shape.stroke.color, color);
    out.style.emplace_back("stroke", std::move(color));
    if (shape.stroke.color.alpha < 1) {
        out.style.emplace_back("stroke-opacity", Number(shape.stroke.color.alpha, 4));
    }
    if (const std::string width = Number(pen.width * scale, decimals + 1); width != "1") {
        out.style.emplace_back("stroke-width", width);
    }
    if (pen.cap != LineCap::Butt) {
        out.style.emplace_back("stroke-linecap", pen.cap == LineCap::Round ? "round" : "square");
    }
    if (pen.join != LineJoin::Miter) {
        out.style.emplace_back("stroke-linejoin", pen.join == LineJoin::Round ? "round" : "bevel");
    } else if (pen.miterLimit != 4) {
        out.style.emplace_back("stroke-miterlimit", Number(pen.miterLimit, 4));
    }
}

} // namespace ozm::conform
