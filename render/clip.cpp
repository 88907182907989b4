// Clip paths: the outlines of a clip path's children form one path, which becomes the clip.

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include "cg_transform.h"
#include "shapes.h"
#include "winding_rule.h"

namespace ozm {
void CoreGraphicsRenderer::applyClipPath(const std::string& name, CGContextRef context) {
    const Element* clipPath = m_references.Find(name);
    if (clipPath == nullptr || clipPath->type != Element::Type::ClipPath) return;
    for (const uint64_t child : clipPath->children) clipElement(m_document->elements[child], context);
    if (IsEvenOdd(m_renderingState.Top().clipRule))
        CGContextEOClip(context);
    else
        CGContextClip(context);
}

void CoreGraphicsRenderer::clipElement(const Element& element, CGContextRef context) {
    concat(element.transform, context);
    switch (element.type) {
    case Element::Type::Path: CGContextAddPath(context, cgPathForElement(element)); break;
    case Element::Type::Ellipse: AddEllipse(element, context); break;
    case Element::Type::Rect: AddRect(element, context); break;
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

} // namespace ozm
