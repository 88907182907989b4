// How Ozmira paints shapes.
#include "geometry/winding.h"
#include "resolve/differences.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {
namespace {

/// Half a step of 8-bit alpha.
constexpr double kUnseenAlpha = 1.0 / 512;

bool IsSameColor(const ozm::Color& own, const Color& color) {
    const auto isNear = [](double a, uint8_t b) {
        return std::abs(std::clamp(a, 0.0, 1.0) * 255 - b) < 0.51;
    };
    return isNear(own.r, color.r) && isNear(own.g, color.g) && isNear(own.b, color.b);
}

bool IsSameAlpha(double own, double alpha) {
    return std::abs(std::clamp(own, 0.0, 1.0) - alpha) < kUnseenAlpha;
}

/// The smallest box around all points of a path, control points included.
Box ControlBoxOf(const Path& path) {
    Box box;
    for (const Point point : path.Points()) box.Add(point);
    return box;
}

/// A gradient in the drawing's coordinates, comparable with others that look the same.
struct PlacedGradient {
    Point a, b;           ///< The ends of a linear one; centre and focus of a radial one.
    double shape[3] = {}; ///< Of a radial one: what its matrix makes of the circle, squared.
};

PlacedGradient PlaceLinear(const Matrix& matrix, Point start, Point end) {
    const LinearVector vector = MapLinearGradient(matrix, {start, end});
    return {vector.start, vector.end, {}};
}

PlacedGradient PlaceRadial(const Matrix& m, Point center, Point focus, double radius) {
    const double k = radius * radius;
    return {m.Map(center),
            m.Map(focus),
            {k * (m.a * m.a + m.c * m.c), k * (m.a * m.b + m.c * m.d), k * (m.b * m.b + m.d * m.d)}};
}

bool IsSamePlace(const PlacedGradient& a, const PlacedGradient& b, bool isRadial) {
    const double size = isRadial ? std::sqrt(std::max(a.shape[0], a.shape[2])) : Distance(a.a, a.b);
    const double tolerance = 2e-3 * size;
    if (Distance(a.a, b.a) > tolerance || Distance(a.b, b.b) > tolerance) return false;
    const double whole = std::max(a.shape[0], a.shape[2]);
    for (size_t i = 0; i < 3; ++i) {
        if (std::abs(a.shape[i] - b.shape[i]) > 4e-3 * whole) return false;
    }
    return true;
}

} // namespace

void Differences::ComparePaints(const Node& node, const Context& context, const Shape& shape) {
    CompareFill(node, context, shape);
    CompareStroke(node, context, shape);
}

void Differences::CompareFill(const Node& node, const Context& context, const Shape& shape) {
    if (node.tag == Tag::Line) return;
    const ComputedStyle& style = context.style;
    const OzmiraStyle& own = context.ozmira;
    const Declaration* const source = style.SourceOf(Attr::Fill);
    const Node* const referred = own.fillReference.empty() ? nullptr : m_document.FindById(own.fillReference);
    const bool isGradient =
        referred && (referred->tag == Tag::LinearGradient || referred->tag == Tag::RadialGradient);
    const Rule colorRule =
        style.fill.kind == PaintValue::Kind::Reference ? Rule::MissingReference : Rule::ColorSyntax;
    const uint32_t ownPlace = own.OffsetOf(Attr::Fill) ? own.OffsetOf(Attr::Fill) : node.offset;
    switch (shape.fill.kind) {
    case Paint::Kind::None: {
        if (style.fill.kind == PaintValue::Kind::Reference && !isGradient && !own.fillReference.empty())
            return;
        const bool isFilled = own.fillReference.empty() ? own.HasFill() : isGradient;
        if (!isFilled) return;
        if (isGradient && style.fill.kind != PaintValue::Kind::Reference) {
            return ReportProperty(Attr::Fill, source, Rule::InheritedGradient, ownPlace);
        }
        if (style.fillOpacity == 0) {
            return ReportProperty(Attr::FillOpacity, style.SourceOf(Attr::FillOpacity), Rule::OpacitySyntax,
                                  node.offset);
        }
        return ReportProperty(Attr::Fill, source, colorRule, ownPlace);
    }
    case Paint::Kind::Color:
        if (!own.fillReference.empty()) {
            const bool isOwn = style.fill.kind == PaintValue::Kind::Reference;
            if (isOwn && isGradient) return Report(Rule::GradientStops, referred->offset);
            return ReportProperty(Attr::Fill, source,
                                  isOwn ? Rule::MissingReference : Rule::InheritedGradient, ownPlace);
        }
        if (!IsSameColor(own.fill, shape.fill.color)) ReportProperty(Attr::Fill, source, colorRule, ownPlace);
        if (!IsSameAlpha(own.fill.a * own.fillOpacity, shape.fill.color.alpha)) {
            if (IsSameAlpha(own.fillOpacity, style.fillOpacity)) {
                ReportProperty(Attr::Fill, source, colorRule, ownPlace);
            } else {
                ReportProperty(Attr::FillOpacity, style.SourceOf(Attr::FillOpacity), Rule::OpacitySyntax,
                               node.offset);
            }
        }
        break;
    case Paint::Kind::Gradient:
        if (!isGradient || own.fillReference != style.fill.id || !IsInOzmiraTree(*referred)) {
            return ReportProperty(Attr::Fill, source, isGradient ? Rule::UseTarget : Rule::ValueSyntax,
                                  ownPlace);
        }
        CompareGradient(node, context, shape, *referred);
        break;
    }
    if (shape.fill.kind != Paint::Kind::Color || style.fillRule == own.fillRule) return;
    if (RulesAgree(shape.path, m_tolerance)) return;
    ReportProperty(Attr::FillRule, style.SourceOf(Attr::FillRule), Rule::ValueSyntax, node.offset);
}

void Differences::CompareGradient(const Node& node, const Context& context, const Shape& shape,
                                  const Node& element) {
    const Gradient& gradient = *shape.fill.gradient;
    const OzmiraGradient own = ReadOzmiraGradient(element);
    bool isSame = own.stops.size() == gradient.stops.size() &&
                  gradient.isRadial == (element.tag == Tag::RadialGradient);
    for (size_t i = 0; isSame && i < own.stops.size(); ++i) {
        const OzmiraStop& a = own.stops[i];
        const GradientStop& b = gradient.stops[i];
        isSame = std::abs(a.offset - b.offset) < 1e-4 && IsSameColor({a.r, a.g, a.b, 1}, b.color) &&
                 IsSameAlpha(a.alpha, b.color.alpha);
    }
    if (!isSame) Report(Rule::GradientStops, element.offset);
    if (gradient.spread != GradientSpread::Pad)
        ReportAttribute(element, Attr::SpreadMethod, Rule::GradientSpread);

    double at[5];
    std::copy(std::begin(own.coordinates), std::end(own.coordinates), at);
    if (!own.isUserSpace) {
        const Box box = ControlBoxOf(shape.path);
        const auto scale = [&](double& x, double& y) {
            x = box.left + x * box.Width();
            y = box.top + y * box.Height();
        };
        scale(at[0], at[1]);
        if (gradient.isRadial) {
            scale(at[3], at[4]);
            at[2] *= box.Width();
        } else {
            scale(at[2], at[3]);
        }
    }
    const Matrix matrix = context.matrix * own.transform;
    const PlacedGradient wanted =
        gradient.isRadial ? PlaceRadial(gradient.matrix, gradient.center, gradient.focus, gradient.radius)
                          : PlaceLinear(gradient.matrix, gradient.start, gradient.end);
    const PlacedGradient placed = gradient.isRadial
                                      ? PlaceRadial(matrix, {at[0], at[1]}, {at[3], at[4]}, at[2])
                                      : PlaceLinear(matrix, {at[0], at[1]}, {at[2], at[3]});
    if (!IsSamePlace(wanted, placed, gradient.isRadial) || gradient.focalRadius > 0) {
        Report(Rule::GradientGeometry, element.offset);
    }
    if (shape.fill.color.alpha < 1) {
        ReportProperty(Attr::FillOpacity, context.style.SourceOf(Attr::FillOpacity), Rule::GradientOpacity,
                       node.offset);
    }
    if (shape.fillRule == FillRule::EvenOdd && !RulesAgree(shape.path, m_tolerance)) {
        Report(Rule::GradientRule, node.offset);
    }
    if (shape.stroke) Report(Rule::GradientStrokeBelow, node.offset);
}

void Differences::CompareStroke(const Node& node, const Context& context, const Shape& shape) {
    const ComputedStyle& style = context.style;
    const OzmiraStyle& own = context.ozmira;
    const auto report = [&](Attr property, Rule rule) {
        const uint32_t place = own.OffsetOf(property);
        ReportProperty(property, style.SourceOf(property), rule, place ? place : node.offset);
    };
    const bool isStroked = own.HasStroke() && own.strokeWidth > 0;
    if (!shape.stroke) {
        if (style.stroke.kind == PaintValue::Kind::Reference && m_document.FindById(style.stroke.id) &&
            shape.pen.width > 0) {
            return report(Attr::Stroke, Rule::GradientStroke);
        }
        if (!isStroked) return;
        if (style.strokeOpacity == 0) return report(Attr::StrokeOpacity, Rule::OpacitySyntax);
        if (!(shape.pen.width > 0)) return report(Attr::StrokeWidth, Rule::Units);
        return report(Attr::Stroke, Rule::ColorSyntax);
    }
    if (shape.stroke.kind == Paint::Kind::Gradient || style.stroke.kind == PaintValue::Kind::Reference) {
        return report(Attr::Stroke, Rule::GradientStroke);
    }
    const double alpha = shape.stroke.color.alpha;
    if (!own.HasStroke() || !IsSameColor(own.stroke, shape.stroke.color)) {
        report(Attr::Stroke, Rule::ColorSyntax);
    } else if (!IsSameAlpha(own.stroke.a * own.strokeOpacity, alpha)) {
        const bool isColor = IsSameAlpha(own.strokeOpacity, style.strokeOpacity);
        report(isColor ? Attr::Stroke : Attr::StrokeOpacity,
               isColor ? Rule::ColorSyntax : Rule::OpacitySyntax);
    }
    if (std::abs(own.strokeWidth - shape.pen.width) > 1e-3 * shape.pen.width && !style.hasNonScalingStroke) {
        report(Attr::StrokeWidth, Rule::Units);
    }
    if (own.lineCap != style.lineCap) report(Attr::StrokeLinecap, Rule::ValueSyntax);
    if (own.lineJoin != style.lineJoin) report(Attr::StrokeLinejoin, Rule::ValueSyntax);
    if (style.lineJoin == LineJoin::Miter && std::abs(own.miterLimit - shape.pen.miterLimit) > 1e-3) {
        report(Attr::StrokeMiterlimit, Rule::ValueSyntax);
    }
    if (!shape.dashes.empty()) report(Attr::StrokeDasharray, Rule::Dashes);
}

} // namespace ozm::conform
