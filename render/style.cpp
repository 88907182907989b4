// How an element's style changes the rendering state and the context.

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include <array>

namespace ozm {
namespace {

/// The fields of a rendering state that the context must be told about.
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

/// Returns true if the value changed.
template <typename T>
bool assign(T& field, const T& value) {
    if (field == value) return false;
    field = value;
    return true;
}

/// Applies every property but `ClipPathURL`, which does not change the rendering state.
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
    // Unlike in `setRenderState`, the phase is passed on even if the line is solid.
    sendState(state, changes, state.dashOffset, context);
}

} // namespace ozm
