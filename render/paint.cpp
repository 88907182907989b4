// Styles, fills, strokes and gradients.

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include "cg_transform.h"

#include <array>
#include <memory>

namespace ozm {
namespace {

/// Lists of stops up to this length are handed over without a heap allocation.
constexpr size_t kStopsOnStack = 16;

struct GradientRelease {
    void operator()(CGGradientRef gradient) const { CGGradientRelease(gradient); }
};

/// What of a record the context has to be told.
struct Changes {
    bool strokeColor = false;
    bool lineWidth = false;
    bool lineCap = false;
    bool lineJoin = false;
    bool miterLimit = false;
    bool lineDash = false;
    bool fillColor = false;
    bool alpha = false;

    static constexpr Changes All() { return {true, true, true, true, true, true, true, true}; }
};

/// True when that makes a difference.
template <typename T>
bool assign(T& field, const T& value) {
    if (field == value) return false;
    field = value;
    return true;
}

/// Everything but `ClipPathURL`, which leaves no trace in the record.
void applyProperty(const StyleProperty& property, RenderingState& state, Changes& changes) {
    using Type = StyleProperty::Type;
    switch (property.type) {
    case Type::StrokeColor: changes.strokeColor |= assign(state.strokeColor, property.color); break;
    case Type::StrokeOpacity: changes.strokeColor |= assign(state.strokeOpacity, property.number); break;
    case Type::StrokeWidth: changes.lineWidth |= assign(state.strokeWidth, property.number); break;
    case Type::StrokeLineCap: changes.lineCap |= assign(state.lineCap, property.keyword); break;
    case Type::StrokeLineJoin: changes.lineJoin |= assign(state.lineJoin, property.keyword); break;
    case Type::StrokeMiterLimit: changes.miterLimit |= assign(state.miterLimit, property.number); break;
    case Type::StrokeDashArray: changes.lineDash |= assign(state.dashArray, property.dashArray); break;
    case Type::StrokeDashOffset: changes.lineDash |= assign(state.dashOffset, property.number); break;
    case Type::FillColor: changes.fillColor |= assign(state.fillColor, property.color); break;
    case Type::FillURL: state.fillReference = property.url; break;
    case Type::FillOpacity: changes.fillColor |= assign(state.fillOpacity, property.number); break;
    case Type::FillRule: state.fillRule = property.keyword; break;
    case Type::Opacity: changes.alpha |= assign(state.opacity, state.opacity * property.number); break;
    case Type::ClipPathURL:
    case Type::ClipRule: break;
    }
}

CGLineCap toCGLineCap(uint32_t cap) {
    switch (static_cast<LineCap>(cap)) {
    case LineCap::Round: return kCGLineCapRound;
    case LineCap::Square: return kCGLineCapSquare;
    default: return kCGLineCapButt;
    }
}

CGLineJoin toCGLineJoin(uint32_t join) {
    switch (static_cast<LineJoin>(join)) {
    case LineJoin::Round: return kCGLineJoinRound;
    case LineJoin::Bevel: return kCGLineJoinBevel;
    default: return kCGLineJoinMiter;
    }
}

std::array<CGFloat, 4> componentsOf(const Color& color, double opacity) {
    return {color.r, color.g, color.b, color.a * opacity};
}

void sendState(const RenderingState& state, const Changes& changes, double dashPhase, CGContextRef context) {
    if (changes.strokeColor)
        CGContextSetStrokeColor(context, componentsOf(state.strokeColor, state.strokeOpacity).data());
    if (changes.lineWidth) CGContextSetLineWidth(context, state.strokeWidth);
    if (changes.lineCap) CGContextSetLineCap(context, toCGLineCap(state.lineCap));
    if (changes.lineJoin) CGContextSetLineJoin(context, toCGLineJoin(state.lineJoin));
    if (changes.miterLimit) CGContextSetMiterLimit(context, state.miterLimit);
    if (changes.lineDash) {
        const std::vector<double>& lengths = state.dashArray;
        CGContextSetLineDash(context, dashPhase, lengths.empty() ? nullptr : lengths.data(), lengths.size());
    }
    if (changes.fillColor)
        CGContextSetFillColor(context, componentsOf(state.fillColor, state.fillOpacity).data());
    if (changes.alpha) CGContextSetAlpha(context, state.opacity);
}

bool isEvenOdd(uint32_t rule) { return rule == static_cast<uint32_t>(WindingRule::EvenOdd); }

/// Where gradient coordinates lie: fractions of a shape's box, or user space.
class GradientSpace {
public:
    GradientSpace(const Gradient& gradient, CGRect box)
        : m_isBoundingBox(gradient.units == Gradient::Units::ObjectBoundingBox), m_box(box) {}

    CGPoint point(const Dimension& x, const Dimension& y) const {
        if (!m_isBoundingBox) return {x.value, y.value};
        return {m_box.origin.x + fraction(x) * m_box.size.width,
                m_box.origin.y + fraction(y) * m_box.size.height};
    }
    double radius(const Dimension& r) const {
        return m_isBoundingBox ? fraction(r) * m_box.size.width : r.value;
    }

private:
    static double fraction(const Dimension& dimension) {
        return dimension.unit == Dimension::Unit::Percent ? dimension.value * 0.01 : dimension.value;
    }

    bool m_isBoundingBox;
    CGRect m_box;
};

} // namespace

void CoreGraphicsRenderer::setRenderState(const RenderingState& state, CGContextRef context) {
    sendState(state, Changes::All(), state.dashArray.empty() ? 0 : state.dashOffset, context);
}

void CoreGraphicsRenderer::setStyle(const Style& style, CGContextRef context) {
    RenderingState& state = m_renderingState.Top();
    Changes changes;
    for (const StyleProperty& property : style.properties) {
        if (property.type == StyleProperty::Type::ClipPathURL)
            applyClipPath(property.url, context);
        else
            applyProperty(property, state, changes);
    }
    // Unlike `setRenderState`, a solid line keeps its phase.
    sendState(state, changes, state.dashOffset, context);
}

void CoreGraphicsRenderer::applyClipPath(const std::string& name, CGContextRef context) {
    const Element* clipPath = m_references.Find(name);
    if (clipPath == nullptr || clipPath->type != Element::Type::ClipPath) return;
    for (const uint64_t child : clipPath->children) clipElement(m_document->elements[child], context);
    if (isEvenOdd(m_renderingState.Top().clipRule))
        CGContextEOClip(context);
    else
        CGContextClip(context);
}

void CoreGraphicsRenderer::paintShape(const Element& element, CGContextRef context) {
    const RenderingState& state = m_renderingState.Top();
    const bool isStroked = state.strokeColor.a > 0 && state.strokeOpacity > 0;
    const bool isFilled = state.fillColor.a > 0 && state.fillOpacity > 0;

    if (state.fillReference.empty()) {
        if (!isStroked && !isFilled) return;
        const bool evenOdd = isEvenOdd(state.fillRule);
        const CGPathDrawingMode fill = evenOdd ? kCGPathEOFill : kCGPathFill;
        const CGPathDrawingMode fillAndStroke = evenOdd ? kCGPathEOFillStroke : kCGPathFillStroke;
        addCGPathForElement(element, context);
        CGContextDrawPath(context, !isFilled ? kCGPathStroke : isStroked ? fillAndStroke : fill);
        return;
    }

    const Element* source = m_references.Find(state.fillReference);
    if (source != nullptr && source->type == Element::Type::GradientElement)
        fillWithGradient(source->gradient, element, context);
    if (isStroked) {
        // Inside the clip and under the transform that the gradient has left.
        addCGPathForElement(element, context);
        CGContextDrawPath(context, kCGPathStroke);
    }
}

void CoreGraphicsRenderer::fillWithGradient(const Gradient& gradient, const Element& element,
                                            CGContextRef context) {
    const bool isLinear = gradient.type == Gradient::Type::Linear;
    if (!isLinear && gradient.type != Gradient::Type::Radial) return;
    const CGGradientRef cgGradient = cgGradientForGradient(gradient);
    if (cgGradient == nullptr) return;

    addCGPathForElement(element, context);
    const GradientSpace space(gradient, CGContextGetPathBoundingBox(context));
    CGContextClip(context);
    CGContextConcatCTM(context, ToCGAffineTransform(gradient.transform));
    const CGGradientDrawingOptions pad =
        kCGGradientDrawsBeforeStartLocation | kCGGradientDrawsAfterEndLocation;
    if (isLinear) {
        CGContextDrawLinearGradient(context, cgGradient, space.point(gradient.x1, gradient.y1),
                                    space.point(gradient.x2, gradient.y2), pad);
    } else {
        CGContextDrawRadialGradient(context, cgGradient, space.point(gradient.fx, gradient.fy), 0,
                                    space.point(gradient.cx, gradient.cy), space.radius(gradient.r), pad);
    }
}

CGGradientRef CoreGraphicsRenderer::cgGradientForGradient(const Gradient& gradient) {
    if (const auto found = m_cgGradientCache.find(&gradient); found != m_cgGradientCache.end())
        return found->second;
    std::unique_ptr<CGGradient, GradientRelease> created(
        CGGradientCreateWithGradientStopList(gradient.stops, m_colorSpace));
    m_cgGradientCache.emplace(&gradient, created.get());
    return created.release();
}

CGGradientRef CGGradientCreateWithGradientStopList(const std::vector<Gradient::Stop>& stops,
                                                   CGColorSpaceRef colorSpace) {
    constexpr size_t componentsPerStop = 4;
    std::array<CGFloat, kStopsOnStack*(componentsPerStop + 1)> few;
    std::vector<CGFloat> many;
    CGFloat* components = few.data();
    if (stops.size() > kStopsOnStack) {
        many.resize(stops.size() * (componentsPerStop + 1));
        components = many.data();
    }
    CGFloat* locations = components + stops.size() * componentsPerStop;
    for (size_t i = 0; i < stops.size(); ++i) {
        const Color& color = stops[i].color;
        CGFloat* component = components + i * componentsPerStop;
        component[0] = color.r;
        component[1] = color.g;
        component[2] = color.b;
        component[3] = color.a;
        locations[i] = stops[i].offset;
    }
    return CGGradientCreateWithColorComponents(colorSpace, components, locations, stops.size());
}

} // namespace ozm
