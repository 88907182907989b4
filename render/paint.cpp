// Fills, strokes and gradients.

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include "cg_transform.h"
#include "winding_rule.h"

#include <array>
#include <memory>

namespace ozm {
namespace {

/// Up to this many stops are passed on without a heap allocation.
constexpr size_t kStopsOnStack = 16;

struct GradientRelease {
    void operator()(CGGradientRef gradient) const { CGGradientRelease(gradient); }
};

/// The space of gradient coordinates: fractions of a shape's bounding box, or user space.
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

void CoreGraphicsRenderer::paintShape(const Element& element, CGContextRef context) {
    const RenderingState& state = m_renderingState.Top();
    const bool isStroked = state.strokeColor.a > 0 && state.strokeOpacity > 0;
    const bool isFilled = state.fillColor.a > 0 && state.fillOpacity > 0;

    if (state.fillReference.empty()) {
        if (!isStroked && !isFilled) return;
        const bool evenOdd = IsEvenOdd(state.fillRule);
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
        // The clip and the transform of the gradient still apply.
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
