// What `fill` and `stroke` stand for.
#include "resolve/walker.h"

namespace ozm::conform {

Paint Walker::PlainPaint(PaintValue::Kind kind, const Color& color, double alpha,
                         const Context& context) const {
    const ComputedStyle& style = context.style;
    Paint paint;
    if (kind == PaintValue::Kind::Color) {
        paint = Paint::Of(color);
    } else if (kind == PaintValue::Kind::CurrentColor) {
        paint = Paint::Of(style.color);
        paint.isTintable = !style.isColorSet;
    } else {
        return {};
    }
    if (context.colorMatrix) paint = Paint::Of(context.Recolored(paint.color));
    paint.color.alpha *= alpha;
    return paint.color.alpha > 0 ? paint : Paint{};
}

const Node* Walker::FindPattern(const PaintValue& value, const Path& path, const Context& context) {
    if (value.kind == PaintValue::Kind::ContextFill) return context.contextPaints.fillPattern;
    if (value.kind == PaintValue::Kind::ContextStroke) return context.contextPaints.strokePattern;
    if (value.kind != PaintValue::Kind::Reference) return nullptr;
    const Node* const target = m_document.FindById(value.id);
    return target && target->tag == Tag::Pattern && HasTiles(*target, path, context) ? target : nullptr;
}

Paint Walker::PaintOf(const PaintValue& value, double alpha, const Path& path, const Context& context) {
    if (value.kind == PaintValue::Kind::Color) {
        Paint paint = PlainPaint(value.kind, value.color, alpha, context);
        const bool isDefault = &value == &context.style.fill && !context.style.SourceOf(Attr::Fill);
        if (paint && isDefault && !context.colorMatrix) paint.isTintable = true;
        return paint;
    }
    if (value.kind == PaintValue::Kind::ContextFill || value.kind == PaintValue::Kind::ContextStroke) {
        const bool isFill = value.kind == PaintValue::Kind::ContextFill;
        Paint paint = isFill ? context.contextPaints.fill : context.contextPaints.stroke;
        paint.color.alpha *= alpha;
        return paint;
    }
    if (value.kind != PaintValue::Kind::Reference) return PlainPaint(value.kind, {}, alpha, context);
    const Node* const target = m_document.FindById(value.id);
    if (target && (target->tag == Tag::LinearGradient || target->tag == Tag::RadialGradient)) {
        const std::optional<Paint> paint = PlaceGradient(*target, alpha, path, context);
        return paint ? *paint : PlainPaint(value.fallback, value.color, alpha, context);
    }
    if (target && target->tag == Tag::Pattern && HasTiles(*target, path, context)) return {};
    return PlainPaint(value.fallback, value.color, alpha, context);
}

} // namespace ozm::conform
