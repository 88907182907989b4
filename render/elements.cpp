// The walk of the element tree, the outlines of clip paths, and elements as CoreGraphics paths.

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include "cg_transform.h"

#include <algorithm>
#include <utility>

namespace ozm {
namespace {

/// Pushes a copy of the top record and saves the graphics state; undoes both at the end of the scope.
class ElementScope {
public:
    ElementScope(RenderingStack& stack, CGContextRef context) : m_stack(stack), m_context(context) {
        m_stack.Save();
        CGContextSaveGState(m_context);
    }
    ~ElementScope() {
        m_stack.Pop();
        CGContextRestoreGState(m_context);
    }
    ElementScope(const ElementScope&) = delete;
    ElementScope& operator=(const ElementScope&) = delete;

private:
    RenderingStack& m_stack;
    CGContextRef m_context;
};

struct ContextSink {
    CGContextRef context;

    void moveTo(TVec2<double> p) const { CGContextMoveToPoint(context, p.x, p.y); }
    void close() const { CGContextClosePath(context); }
    void lineTo(TVec2<double> p) const { CGContextAddLineToPoint(context, p.x, p.y); }
    void curveTo(const BezierCurve& c) const {
        CGContextAddCurveToPoint(context, c.control1.x, c.control1.y, c.control2.x, c.control2.y, c.end.x,
                                 c.end.y);
    }
};

struct PathSink {
    CGMutablePathRef path;

    void moveTo(TVec2<double> p) const { CGPathMoveToPoint(path, nullptr, p.x, p.y); }
    void close() const { CGPathCloseSubpath(path); }
    void lineTo(TVec2<double> p) const { CGPathAddLineToPoint(path, nullptr, p.x, p.y); }
    void curveTo(const BezierCurve& c) const {
        CGPathAddCurveToPoint(path, nullptr, c.control1.x, c.control1.y, c.control2.x, c.control2.y, c.end.x,
                              c.end.y);
    }
};

template <typename Sink>
void sendPath(const Path& path, Sink sink) {
    for (const PathCommand& command : path.commands) {
        switch (command.type) {
        case PathCommand::Type::MoveTo: sink.moveTo(command.point); break;
        case PathCommand::Type::ClosePath: sink.close(); break;
        case PathCommand::Type::LineTo:
            for (const auto& point : command.points) sink.lineTo(point);
            break;
        case PathCommand::Type::HorizontalLineTo:
        case PathCommand::Type::VerticalLineTo: break;
        case PathCommand::Type::CurveTo:
            for (const BezierCurve& curve : command.curves) sink.curveTo(curve);
            break;
        }
    }
}

CGRect ellipseBox(const Element& element) {
    return CGRectOffset(CGRectInset(CGRectZero, -element.radius.x, -element.radius.y), element.center.x,
                        element.center.y);
}

CGPathRef createRectPath(const Element& element) {
    return CGPathCreateWithRoundedRect(CGRectMake(element.x, element.y, element.width, element.height),
                                       element.rx, element.ry, nullptr);
}

// renderElement and clipElement recurse once per level of nesting and per reference, on stacks as small as
// 512 KB: rectangles and matrices stay out of their frames.

[[gnu::noinline]] void addEllipse(const Element& element, CGContextRef context) {
    CGContextAddEllipseInRect(context, ellipseBox(element));
}

[[gnu::noinline]] void addRect(const Element& element, CGContextRef context) {
    const CGPathRef path = createRectPath(element);
    CGContextAddPath(context, path);
    CGPathRelease(path);
}

[[gnu::noinline]] void concat(const Transform& transform, CGContextRef context) {
    CGContextConcatCTM(context, ToCGAffineTransform(transform));
}

[[gnu::noinline]] void concatInverse(const Transform& transform, CGContextRef context) {
    CGContextConcatCTM(context, CGAffineTransformInvert(ToCGAffineTransform(transform)));
}

} // namespace

bool CoreGraphicsRenderer::mustStop() {
    if (m_stopRequest && !m_isStopped) m_isStopped = m_stopRequest();
    return m_isStopped;
}

void CoreGraphicsRenderer::renderElement(const Element& element, CGContextRef context) {
    if (element.hidden || mustStop()) return;
    const ElementScope scope(m_renderingState, context);
    if (element.transform != TransformIdentity) concat(element.transform, context);
    if (element.styleIndex >= 0 && static_cast<size_t>(element.styleIndex) < m_document->styles.size())
        setStyle(m_document->styles[static_cast<size_t>(element.styleIndex)], context);
    if (!(m_renderingState.Top().opacity > 0)) return;

    switch (element.type) {
    case Element::Type::Group:
        for (const uint64_t child : element.children) renderElement(m_document->elements[child], context);
        break;
    case Element::Type::Use:
        CGContextTranslateCTM(context, element.position.x, element.position.y);
        if (const Element* target = m_references.Find(element.href)) renderElement(*target, context);
        break;
    case Element::Type::Path:
    case Element::Type::Ellipse:
    case Element::Type::Rect: paintShape(element, context); break;
    default: break;
    }
}

void CoreGraphicsRenderer::clipElement(const Element& element, CGContextRef context) {
    concat(element.transform, context);
    switch (element.type) {
    case Element::Type::Path: CGContextAddPath(context, cgPathForElement(element)); break;
    case Element::Type::Ellipse: addEllipse(element, context); break;
    case Element::Type::Rect: addRect(element, context); break;
    case Element::Type::Use: {
        const Element* target = m_references.Find(element.href);
        if (target == nullptr) break;
        if (target->type == Element::Type::ClipPath) {
            for (const uint64_t child : target->children) clipElement(m_document->elements[child], context);
        } else {
            CGContextTranslateCTM(context, element.position.x, element.position.y);
            clipElement(*target, context);
            CGContextTranslateCTM(context, -element.position.x, -element.position.y);
        }
        break;
    }
    default: break;
    }
    concatInverse(element.transform, context);
}

CGPathRef CoreGraphicsRenderer::cgPathForElement(const Element& element) {
    const auto [entry, isNew] = m_cgElementPathCache.try_emplace(&element, nullptr);
    if (!isNew) return entry->second;
    switch (element.type) {
    case Element::Type::Rect: entry->second = createRectPath(element); break;
    case Element::Type::Ellipse: {
        const CGMutablePathRef path = CGPathCreateMutable();
        CGPathAddEllipseInRect(path, nullptr, ellipseBox(element));
        entry->second = path;
        break;
    }
    case Element::Type::Path: entry->second = createCGPathForPath(element.path); break;
    default: break;
    }
    return entry->second;
}

void CoreGraphicsRenderer::addCGPathForElement(const Element& element, CGContextRef context) {
    switch (element.type) {
    case Element::Type::Rect: addRect(element, context); break;
    case Element::Type::Ellipse: addEllipse(element, context); break;
    case Element::Type::Path: addCGPathForPath(element.path, context); break;
    default: break;
    }
}

CGMutablePathRef CoreGraphicsRenderer::createCGPathForPath(const Path& path) {
    const CGMutablePathRef result = CGPathCreateMutable();
    sendPath(path, PathSink{result});
    return result;
}

void CoreGraphicsRenderer::addCGPathForPath(const Path& path, CGContextRef context) {
    sendPath(path, ContextSink{context});
}

} // namespace ozm
