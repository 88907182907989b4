// Clip paths.
#include "base/limits.h"
#include "geometry/winding.h"
#include "resolve/walker.h"

#include <utility>

namespace ozm::conform {

const Clip* Walker::AddClip(Path path, const Clip* outer, bool isRectangle) {
    return &m_scene->clips.emplace_back(Clip{std::move(path), outer, isRectangle});
}

const Clip* Walker::AddRectangleClip(const Box& box, const Matrix& matrix, const Clip* outer) {
    Path path = PathOf(Rectangle{box.left, box.top, box.Width(), box.Height(), 0, 0});
    path.Transform(matrix);
    const bool isUpright = IsUprightRectangle(path);
    return AddClip(std::move(path), outer, isUpright);
}

const ComputedStyle& Walker::StyleInPlace(const Node& node) {
    std::vector<const Node*> unknown;
    const Node* at = &node;
    for (; at && !m_stylesInPlace.contains(at); at = at->parent) unknown.push_back(at);
    const ComputedStyle initial;
    const ComputedStyle* style = at ? &m_stylesInPlace.at(at) : &initial;
    for (auto next = unknown.rbegin(); next != unknown.rend(); ++next) {
        style = &m_stylesInPlace.emplace(*next, ComputeStyle(*style, **next, m_sheets)).first->second;
    }
    return m_stylesInPlace.at(&node);
}

Walker::ContextPointer Walker::ContentContext(const Node& node, const Context& user) {
    ContextPointer context = std::make_unique<Context>();
    context->style = StyleInPlace(node);
    context->matrix = user.matrix;
    context->viewWidth = user.viewWidth;
    context->viewHeight = user.viewHeight;
    context->out = user.out;
    context->references = user.references;
    context->depth = user.depth + 1;
    context->colorMatrix = user.colorMatrix;
    return context;
}

void Walker::CollectClipParts(const Node& node, const Context& parent, std::vector<ClipPart>& parts) {
    const ContextPointer context = Enter(node, parent);
    if (!context) return;
    if (node.tag == Tag::Use) return CollectClipUse(node, *context, parts);
    if (!context->style.isVisible) return;
    Path path = GeometryOf(node, *context, m_sheets, ArcTolerance(*context)).path;
    if (path.IsEmpty()) return;
    path.Transform(context->matrix);
    parts.push_back({std::move(path), context->style.clipRule, context->clip});
}

void Walker::CollectClipUse(const Node& node, const Context& context, std::vector<ClipPart>& parts) {
    const Node* const target = m_document.FindById(node.LocalReference());
    if (!target || context.IsFollowing(*target) || !IsShape(target->tag)) return;
    const auto length = [&](Attr attr, const LengthBase& base) {
        return Resolve(GeometryLength(node, attr, m_sheets).value_or(CssLength{}), base);
    };
    Context inner = context;
    const Reference reference{target, context.references};
    inner.references = &reference;
    inner.matrix = inner.matrix *
                   Matrix::Translation(length(Attr::X, context.BaseX()), length(Attr::Y, context.BaseY()));
    CollectClipParts(*target, inner, parts);
}

Path Walker::UnionOf(std::vector<ClipPart>& parts) {
    const double tolerance = m_scene->Tolerance() / 4;
    Path whole;
    for (ClipPart& part : parts) {
        Path path = parts.size() == 1 && part.rule == FillRule::NonZero && !part.clip
                        ? std::move(part.path)
                        : Rewound({part.path, part.rule}, tolerance);
        for (const Clip* clip = part.clip; clip; clip = clip->outer) {
            path = Combine(AreaOperation::Intersection, {path}, {clip->path}, tolerance);
        }
        whole.Append(path);
    }
    return whole;
}

bool Walker::ApplyClip(const Node& clipPath, const Node& node, Context& context, bool isCompared) {
    if (context.IsFollowing(clipPath)) {
        m_findings.Add(Rule::ReferenceCycle, node.offset, clipPath.Get(Attr::Id));
        return false;
    }
    const Reference reference{&clipPath, context.references};
    Context user = context;
    user.references = &reference;
    const ContextPointer content = ContentContext(clipPath, user);
    content->colorMatrix = {};
    content->isClipContent = true;
    if (!EnterTransform(clipPath, *content)) {
        if (isCompared) m_differences.Report(Rule::ClipPath, clipPath.offset);
        return false;
    }
    if (clipPath.Get(Attr::ClipPathUnits) == "objectBoundingBox") {
        const Box box = ObjectBox(node, context);
        if (box.IsEmpty()) return false;
        content->matrix = content->matrix * Matrix{box.Width(), 0, 0, box.Height(), box.left, box.top};
    }
    // What the clip path itself is clipped by cuts whatever it clips as well.
    if (const ReferenceValue& outer = content->style.clipPath; outer.kind == ReferenceValue::Kind::Local) {
        const Node* const target = m_document.FindById(outer.id);
        if (target && target->tag == Tag::ClipPath) {
            if (isCompared) m_differences.Report(Rule::ClipPath, clipPath.offset);
            Context around = user;
            if (!ApplyClip(*target, node, around, false)) return false;
            context.clip = around.clip;
        }
    }
    std::vector<ClipPart> parts;
    for (const Node* child = clipPath.firstChild; child; child = child->nextSibling) {
        if (IsShape(child->tag) || child->tag == Tag::Use) CollectClipParts(*child, *content, parts);
        if (child->tag == Tag::Text && child->hasText) m_findings.Add(Rule::Text, child->offset);
    }
    if (isCompared) m_differences.CompareClipParts(clipPath, context, parts);
    Path path = UnionOf(parts);
    if (path.IsEmpty()) return false;
    if (!IsWithin(kLargestCoordinate, path, {})) {
        m_findings.Add(Rule::CoordinateRange, clipPath.offset);
        return false;
    }
    const bool isRectangle = IsUprightRectangle(path);
    context.clip = AddClip(std::move(path), context.clip, isRectangle);
    return true;
}

} // namespace ozm::conform
