#include "resolve/walker.h"

namespace ozm::conform {

Box Walker::ObjectBox(const Node& node, const Context& context) {
    const bool wasMeasuring = m_isMeasuring, wasMuted = m_differences.IsMuted();
    m_isMeasuring = true;
    m_differences.SetMuted(true);
    Group group;
    Context inner = context;
    inner.matrix = {};
    inner.clip = nullptr;
    inner.isSeen = false;
    inner.out = &group;
    Box box;
    if (IsShape(node.tag)) {
        box = BoxOf(GeometryOf(node, inner, m_sheets).path);
    } else if (node.tag == Tag::Use) {
        inner.style.transform = {};
        const Node* const target = m_document.FindById(node.LocalReference());
        if (target && !inner.IsFollowing(*target)) {
            const Reference reference{target, inner.references};
            inner.references = &reference;
            inner.matrix = Matrix::Translation(
                Resolve(GeometryLength(node, Attr::X, m_sheets).value_or(CssLength{}), inner.BaseX()),
                Resolve(GeometryLength(node, Attr::Y, m_sheets).value_or(CssLength{}), inner.BaseY()));
            if (target->tag == Tag::Symbol || target->tag == Tag::Svg) {
                VisitViewport(*target, &node, inner);
            } else {
                Visit(*target, inner);
            }
        }
    } else {
        VisitChildren(node, inner);
    }
    for (const Item& item : group.items) {
        if (const Shape* const shape = std::get_if<Shape>(&item)) box.Add(BoxOf(shape->path, shape->matrix));
    }
    m_isMeasuring = wasMeasuring;
    m_differences.SetMuted(wasMuted);
    return box;
}

} // namespace ozm::conform
