// The walk of the element tree.

#include <Ozmira/OZMCoreGraphicsRenderer.h>

#include "cg_transform.h"
#include "state_guard.h"

namespace ozm {
bool CoreGraphicsRenderer::mustStop() {
    if (m_stopRequest && !m_isStopped) m_isStopped = m_stopRequest();
    return m_isStopped;
}

void CoreGraphicsRenderer::renderElement(const Element& element, CGContextRef context) {
    if (element.hidden || mustStop()) return;
    const StateGuard saved(context, &m_renderingState);
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

} // namespace ozm
