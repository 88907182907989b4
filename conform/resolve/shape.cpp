// Shapes with their paints, in the order in which they are painted.
#include "base/limits.h"
#include "geometry/dash.h"
#include "geometry/text.h"
#include "resolve/walker.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ozm::conform {
namespace {

/// The lengths of a dash array; none where it is not valid or stands for a solid line.
std::vector<double> ReadDashes(std::string_view text, const LengthBase& base) {
    std::vector<double> dashes;
    double sum = 0;
    for (std::string_view word = NextWord(text); !word.empty(); word = NextWord(text)) {
        const std::optional<CssLength> length = ReadLength(word);
        if (!length || length->value < 0) return {};
        dashes.push_back(Resolve(*length, base));
        sum += dashes.back();
    }
    if (!(sum > 0) || !std::isfinite(sum)) return {};
    if (dashes.size() % 2 == 1) dashes.insert(dashes.end(), dashes.begin(), dashes.end());
    return dashes;
}

/// Turns dashes that are measured by the `pathLength` of their element into user units.
void ScaleDashes(const Node& node, Shape& shape) {
    const std::optional<double> length = ReadPlainNumber(node.Get(Attr::PathLength));
    if (!length || *length < 0) return;
    const double scale = LengthOf(shape.path) / *length;
    if (!std::isfinite(scale)) return shape.dashes.clear();
    for (double& dash : shape.dashes) dash *= scale;
    shape.dashPhase *= scale;
}

bool HasMarkers(Tag tag) {
    return tag == Tag::Path || tag == Tag::Line || tag == Tag::Polyline || tag == Tag::Polygon;
}

bool HasPaint(const Node& node, const ComputedStyle& style) {
    const bool hasFill =
        node.tag != Tag::Line && style.fill.kind != PaintValue::Kind::None && style.fillOpacity > 0;
    return hasFill || (style.stroke.kind != PaintValue::Kind::None && style.strokeOpacity > 0);
}

} // namespace

void Walker::SetPen(const Context& context, Shape& shape) {
    const ComputedStyle& style = context.style;
    shape.pen.width = Resolve(style.strokeWidth, context.BaseDiagonal());
    shape.pen.cap = style.lineCap;
    shape.pen.join = style.lineJoin;
    shape.pen.miterLimit = std::max(1.0, style.miterLimit);
    if (!style.dashes.empty()) shape.dashes = ReadDashes(style.dashes, context.BaseDiagonal());
    shape.dashPhase = Resolve(style.dashOffset, context.BaseDiagonal());
    if (!shape.dashes.empty()) ScaleDashes(*shape.origin, shape);
}

Shape Walker::MakeShape(const Node& node, const Context& context, Geometry geometry) {
    Shape shape;
    shape.path = std::move(geometry.path);
    shape.primitive = geometry.primitive;
    shape.matrix = context.matrix;
    shape.fillRule = context.style.fillRule;
    shape.clip = context.clip;
    shape.origin = &node;
    SetPen(context, shape);
    return shape;
}

void Walker::VisitShape(const Node& node, const Context& parent) {
    if (parent.isSeen && !node.isPlain) m_differences.Report(Rule::Prefix, node.offset, node.localName);
    const ContextPointer context = Enter(node, parent);
    if (!context) return;
    if (!node.isPlain) context->isSeen = false;
    const ComputedStyle& style = context->style;
    Geometry geometry = GeometryOf(node, *context, m_sheets, ArcTolerance(*context));
    m_segments += geometry.path.Verbs().size();
    if (m_isMeasuring) {
        Shape shape = MakeShape(node, *context, std::move(geometry));
        if (!shape.path.IsEmpty()) context->out->items.emplace_back(std::move(shape));
        return;
    }
    if (!style.isVisible) {
        if (context->isSeen) {
            const Declaration* const source = style.SourceOf(Attr::Visibility);
            m_differences.ReportProperty(Attr::Visibility, source, Rule::Visibility, node.offset);
        }
        return;
    }
    // Nobody sees where a shape without paint lies.
    if (context->isSeen && (HasPaint(node, style) || geometry.path.IsEmpty())) {
        m_differences.CompareGeometry(node, *context, geometry);
    }
    const std::vector<size_t> arcJoints = std::move(geometry.data.arcJoints);
    Shape shape = MakeShape(node, *context, std::move(geometry));
    if (shape.path.IsEmpty()) return;
    if (!IsWithin(kLargestCoordinate, shape.path, shape.matrix)) {
        if (HasPaint(node, style)) m_findings.Add(Rule::CoordinateRange, node.offset);
        return;
    }
    SetPaints(node, *context, shape);
    if (style.hasNonScalingStroke && style.stroke.kind != PaintValue::Kind::None) {
        if (context->isSeen && (context->matrix != Matrix{} || m_unitsPerPixel != 1)) {
            m_differences.Report(Rule::VectorEffect, node.offset);
        }
        KeepStrokeWidth(shape);
    }
    if (context->isSeen) m_differences.ComparePaints(node, *context, shape);
    EmitShape(node, shape, arcJoints, *context);
}

void Walker::KeepStrokeWidth(Shape& shape) const {
    // The stroke is drawn as if the shape had been transformed to the pixels of the drawing's own size first.
    shape.path.Transform(shape.matrix);
    shape.matrix = {};
    shape.primitive = {};
    shape.pen.width *= m_unitsPerPixel;
    shape.dashPhase *= m_unitsPerPixel;
    for (double& dash : shape.dashes) dash *= m_unitsPerPixel;
}

void Walker::SetPaints(const Node& node, const Context& context, Shape& shape) {
    const ComputedStyle& style = context.style;
    if (node.tag != Tag::Line) shape.fill = PaintOf(style.fill, style.fillOpacity, shape.path, context);
    if (shape.pen.width > 0) shape.stroke = PaintOf(style.stroke, style.strokeOpacity, shape.path, context);
}

void Walker::EmitShape(const Node& node, const Shape& shape, std::span<const size_t> arcJoints,
                       const Context& context) {
    const ComputedStyle& style = context.style;
    const Node* const fillPattern =
        node.tag != Tag::Line ? FindPattern(style.fill, shape.path, context) : nullptr;
    const Node* const strokePattern =
        shape.pen.width > 0 ? FindPattern(style.stroke, shape.path, context) : nullptr;
    const PaintParts& order = style.paintOrder;
    const bool isInOrder = order[0] == PaintPart::Fill && order[1] == PaintPart::Stroke;
    if (!fillPattern && !strokePattern && isInOrder) {
        if (shape.fill || shape.stroke) context.out->items.emplace_back(shape);
        if (HasMarkers(node.tag)) EmitMarkers(shape, arcJoints, context);
        return;
    }
    if (context.isSeen) {
        if (fillPattern || strokePattern) m_differences.Report(Rule::Pattern, node.offset);
        if (shape.stroke && order[0] != PaintPart::Fill) m_differences.Report(Rule::PaintOrder, node.offset);
    }
    for (const PaintPart part : order) {
        if (part == PaintPart::Markers) {
            if (HasMarkers(node.tag)) EmitMarkers(shape, arcJoints, context);
        } else if (const Node* const pattern = part == PaintPart::Fill ? fillPattern : strokePattern) {
            EmitPatternPart(part, *pattern, shape, context);
        } else {
            EmitPart(part, shape, context);
        }
    }
}

void Walker::EmitPart(PaintPart part, const Shape& shape, const Context& context) {
    Shape copy = shape;
    (part == PaintPart::Fill ? copy.stroke : copy.fill) = {};
    if (copy.fill || copy.stroke) context.out->items.emplace_back(std::move(copy));
}

void Walker::EmitPatternPart(PaintPart part, const Node& pattern, const Shape& shape,
                             const Context& context) {
    const bool isFill = part == PaintPart::Fill;
    const PaintValue& value = isFill ? context.style.fill : context.style.stroke;
    Shape area = shape;
    if (!isFill) {
        area.path = OutlineOf(shape.path, shape.pen, m_scene->Tolerance());
        area.fillRule = FillRule::NonZero;
    }
    if (value.kind != PaintValue::Kind::Reference) {
        // The pattern lies where the element that lends it has it.
        const Matrix& matrix = context.contextPaints.matrix;
        const std::optional<Matrix> inverse = Inverse(matrix);
        if (!inverse) return;
        area.path.Transform(*inverse * area.matrix);
        area.matrix = matrix;
    }
    EmitPattern(pattern, area, isFill ? context.style.fillOpacity : context.style.strokeOpacity, context);
}

} // namespace ozm::conform
