// Elements that are drawn elsewhere, or in a viewport of their own.
#include "geometry/text.h"
#include "resolve/viewport.h"
#include "resolve/walker.h"

namespace ozm::conform {

void Walker::VisitUse(const Node& node, const Context& parent) {
    if (parent.isSeen && !node.isPlain) m_differences.Report(Rule::Prefix, node.offset, node.localName);
    const std::string_view id = node.LocalReference();
    const Node* const target = m_document.FindById(id);
    const ContextPointer context = Enter(node, parent);
    if (!context) return;
    if (!node.isPlain) context->isSeen = false;
    const auto length = [&](Attr attr, const LengthBase& base) {
        return Resolve(GeometryLength(node, attr, m_sheets).value_or(CssLength{}), base);
    };
    const Point offset{length(Attr::X, context->BaseX()), length(Attr::Y, context->BaseY())};
    if (!target) {
        if (context->isSeen) m_differences.CompareMissingUse(node);
        const std::string_view href = Trim(node.Get(Attr::Href));
        if (id.empty() && !href.empty() && href != "#") m_findings.Add(Rule::External, node.offset, href);
        return;
    }
    bool isCycle = context->IsFollowing(*target);
    for (const Node* at = &node; at; at = at->parent) isCycle |= at == target;
    if (isCycle) {
        m_findings.Add(Rule::ReferenceCycle, node.offset, id);
        return;
    }
    if (context->isSeen) m_differences.CompareUse(node, *context, target, offset);
    if (context->isSeen && (!node.Find(Attr::Href) || !IsInOzmiraTree(*target))) context->isSeen = false;
    if (m_hasContextPaints && !m_isMeasuring) context->contextPaints = ContextPaintsOf(node, *context);
    const Reference reference{target, context->references};
    context->references = &reference;
    context->matrix = context->matrix * Matrix::Translation(offset.x, offset.y);
    if (target->tag == Tag::Symbol || target->tag == Tag::Svg) {
        VisitViewport(*target, &node, *context);
    } else {
        Visit(*target, *context);
    }
}

ContextPaints Walker::ContextPaintsOf(const Node& node, const Context& context) {
    const ComputedStyle& style = context.style;
    Path path;
    if (style.fill.kind == PaintValue::Kind::Reference || style.stroke.kind == PaintValue::Kind::Reference) {
        const Box box = ObjectBox(node, context);
        if (!box.IsEmpty()) path = PathOf(Rectangle{box.left, box.top, box.Width(), box.Height(), 0, 0});
    }
    return {PaintOf(style.fill, 1, path, context), PaintOf(style.stroke, 1, path, context),
            FindPattern(style.fill, path, context), FindPattern(style.stroke, path, context), context.matrix};
}

void Walker::VisitViewport(const Node& node, const Node* use, const Context& parent) {
    if (parent.isSeen) {
        m_differences.Report(node.tag == Tag::Symbol ? Rule::Symbol : Rule::NestedSvg, node.offset);
    }
    const ContextPointer context = Enter(node, parent);
    if (!context) return;
    context->isSeen = false;
    const auto length = [&](const Node& from, Attr attr, const LengthBase& base, CssLength otherwise) {
        return Resolve(GeometryLength(from, attr, m_sheets).value_or(otherwise), base);
    };
    const CssLength whole{100, Unit::Percent};
    const auto size = [&](Attr attr, const LengthBase& base) {
        if (use && GeometryLength(*use, attr, m_sheets)) return length(*use, attr, base, whole);
        return length(node, attr, base, whole);
    };
    const double x = length(node, Attr::X, context->BaseX(), {});
    const double y = length(node, Attr::Y, context->BaseY(), {});
    const double width = size(Attr::Width, context->BaseX()), height = size(Attr::Height, context->BaseY());
    if (!(width > 0 && height > 0) || IsEmptyViewBox(node.Get(Attr::ViewBox))) return;
    const Box viewport = Box::OfSize(x, y, width, height);
    if (!context->style.isOverflowVisible && !m_isMeasuring) {
        context->clip = AddRectangleClip(viewport, context->matrix, context->clip);
    }
    if (const std::optional<Box> viewBox = ReadViewBox(node.Get(Attr::ViewBox))) {
        context->matrix = context->matrix * FitViewBox(*viewBox, viewport,
                                                       ReadAspectRatio(node.Get(Attr::PreserveAspectRatio)));
        context->viewWidth = viewBox->Width();
        context->viewHeight = viewBox->Height();
    } else {
        context->matrix = context->matrix * Matrix::Translation(x, y);
        context->viewWidth = width;
        context->viewHeight = height;
    }
    VisitChildren(node, *context);
}

} // namespace ozm::conform
