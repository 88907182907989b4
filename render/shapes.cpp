// Elements as CoreGraphics paths.

#include "shapes.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>

namespace ozm {
namespace {

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

} // namespace

void AddEllipse(const Element& element, CGContextRef context) {
    CGContextAddEllipseInRect(context, ellipseBox(element));
}

void AddRect(const Element& element, CGContextRef context) {
    const CGPathRef path = createRectPath(element);
    CGContextAddPath(context, path);
    CGPathRelease(path);
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
    case Element::Type::Rect: AddRect(element, context); break;
    case Element::Type::Ellipse: AddEllipse(element, context); break;
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
