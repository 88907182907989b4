// The walk over the tree of elements.
#include "base/limits.h"
#include "geometry/transform_reader.h"
#include "resolve/viewport.h"
#include "resolve/walker.h"
#include "split/areas.h"
#include "style/text.h"

#include <cmath>

namespace ozm::conform {
namespace {

/// The language that `systemLanguage` is compared with, in a world where pictures look the same everywhere.
constexpr std::string_view kLanguage = "en";

bool HasLanguage(std::string_view list) {
    for (std::string_view tag = NextWord(list); !tag.empty(); tag = NextWord(list)) {
        if (StartsWithIgnoringCase(tag, kLanguage) &&
            (tag.size() == kLanguage.size() || tag[kLanguage.size()] == '-')) {
            return true;
        }
    }
    return false;
}

/// The point that `transform-origin` names: one or two words or lengths.
Point ReadOrigin(std::string_view text, const Box& box, const Context& context) {
    Point origin{box.left, box.top};
    std::string_view words[2] = {NextWord(text), NextWord(text)};
    const auto isVertical = [](std::string_view word) { return word == "top" || word == "bottom"; };
    const auto isHorizontal = [](std::string_view word) { return word == "left" || word == "right"; };
    if (isVertical(words[0]) || isHorizontal(words[1])) std::swap(words[0], words[1]);
    const auto place = [](std::string_view word, double start, double size, const LengthBase& base) {
        if (word.empty() || word == "center") return start + size / 2;
        if (word == "left" || word == "top") return start;
        if (word == "right" || word == "bottom") return start + size;
        return start +
               Resolve(ReadLength(word).value_or(CssLength{}), {size, base.fontSize, base.rootFontSize});
    };
    origin.x = place(words[0], box.left, box.Width(), context.BaseX());
    origin.y = place(words[1], box.top, box.Height(), context.BaseY());
    return origin;
}

Matrix About(Point origin, const Matrix& matrix) {
    return Matrix::Translation(origin.x, origin.y) * matrix * Matrix::Translation(-origin.x, -origin.y);
}

} // namespace

Matrix Walker::AboutOrigin(const Node& node, const Matrix& transform, bool isUserSpace,
                           const Context& context) {
    const std::string_view text = ComputeStyle({}, m_sheets.Of(node)).transformOrigin;
    if (text.empty()) return transform;
    const Box box =
        Box::OfSize(0, 0, isUserSpace ? context.viewWidth : 1, isUserSpace ? context.viewHeight : 1);
    return About(ReadOrigin(text, box, context), transform);
}

Walker::Walker(const Document& document, FindingList& findings)
    : m_document(document), m_sheets(document), m_findings(findings),
      m_differences(document, findings, m_sheets),
      m_hasContextPaints(document.Text().find("context-") != std::string_view::npos) {}

Scene Walker::Walk() {
    Scene scene;
    m_scene = &scene;
    const Node& root = *m_document.Root();
    Context context;
    context.isSeen = true;
    context.out = &scene.root;
    SetUpFrame(scene, context);
    m_differences.SetTolerance(scene.Tolerance());
    context.rootFontSize = ComputeStyle({}, m_sheets.Of(root)).fontSize;
    if (const ContextPointer inner = Enter(root, context)) VisitChildren(root, *inner);
    if (m_isSizeUnknown) FitToContent(scene);
    m_scene = nullptr;
    return scene;
}

void Walker::FitToContent(Scene& scene) {
    Box box;
    std::vector<const Group*> open{&scene.root};
    while (!open.empty()) {
        const Group& group = *open.back();
        open.pop_back();
        for (const Item& item : group.items) {
            if (const Shape* const shape = std::get_if<Shape>(&item)) {
                box.Add(PaintedBox(*shape));
            } else {
                open.push_back(std::get<std::unique_ptr<Group>>(item).get());
            }
        }
    }
    if (!(box.right > 0 && box.bottom > 0)) return;
    scene.width = box.right;
    scene.height = box.bottom;
    scene.viewBox = Box::OfSize(0, 0, box.right, box.bottom);
}

void Walker::SetUpFrame(Scene& scene, Context& context) {
    const Node& root = *m_document.Root();
    std::optional<Box> viewBox = ReadViewBox(root.Get(Attr::ViewBox));
    const double wholeWidth = viewBox ? viewBox->Width() : 100,
                 wholeHeight = viewBox ? viewBox->Height() : 100;
    const auto size = [&](Attr attr, double whole) {
        const std::optional<CssLength> length = GeometryLength(root, attr, m_sheets);
        const double value = length ? Resolve(*length, {whole, 16, 16}) : whole;
        return value > 0 && std::isfinite(value) ? value : whole;
    };
    scene.width = size(Attr::Width, wholeWidth);
    scene.height = size(Attr::Height, wholeHeight);
    scene.hasSize = root.Has(Attr::Width) || root.Has(Attr::Height);
    const auto isAbsolute = [&](Attr attr) {
        const std::optional<CssLength> length = GeometryLength(root, attr, m_sheets);
        return length && length->unit != Unit::Percent && length->value > 0;
    };
    m_isSizeUnknown = !viewBox && !(isAbsolute(Attr::Width) && isAbsolute(Attr::Height));
    if (!viewBox) viewBox = Box::OfSize(0, 0, scene.width, scene.height);
    context.viewWidth = viewBox->Width();
    context.viewHeight = viewBox->Height();

    const AspectRatio ratio = ReadAspectRatio(root.Get(Attr::PreserveAspectRatio));
    const double sx = scene.width / viewBox->Width(), sy = scene.height / viewBox->Height();
    if (std::abs(sx - sy) <= 1e-6 * std::max(sx, sy)) {
        scene.viewBox = *viewBox;
    } else if (ratio.isStretched) {
        const Box viewport = Box::OfSize(0, 0, scene.width, scene.height);
        context.matrix = FitViewBox(*viewBox, viewport, ratio);
        scene.viewBox = viewport;
    } else {
        const double scale = ratio.isSlice ? std::max(sx, sy) : std::min(sx, sy);
        const double width = scene.width / scale, height = scene.height / scale;
        scene.viewBox =
            Box::OfSize(viewBox->left + (viewBox->Width() - width) * ratio.alignX,
                        viewBox->top + (viewBox->Height() - height) * ratio.alignY, width, height);
    }
    m_differences.CompareFrame(root, scene.viewBox, scene.width, scene.height);
}

bool Walker::PassesConditions(const Node& node) const {
    for (const Attribute& attribute : node.attributes) {
        if (attribute.attr == Attr::RequiredExtensions && !Trim(attribute.value).empty()) return false;
        if (attribute.attr == Attr::SystemLanguage && !HasLanguage(attribute.value)) return false;
    }
    return true;
}

bool Walker::EnterTransform(const Node& node, Context& context) {
    const ComputedStyle& style = context.style;
    Matrix local;
    if (!style.transform.empty()) {
        const Declaration* const source = style.SourceOf(Attr::Transform);
        const bool isAttribute = source && source->origin == Origin::Attribute;
        const TransformUnits units{{context.viewWidth, context.viewHeight}, style.fontSize, 16};
        local = ReadTransform(style.transform,
                              isAttribute ? TransformSyntax::Attribute : TransformSyntax::Style, units)
                    .value_or(Matrix{});
        if (!style.transformOrigin.empty() || style.isBoxOrigin) {
            const Box box = style.isBoxOrigin ? ObjectBox(node, context)
                                              : Box::OfSize(0, 0, context.viewWidth, context.viewHeight);
            const std::string_view text = style.transformOrigin.empty() ? "0 0" : style.transformOrigin;
            if (!box.IsEmpty()) {
                local = About(ReadOrigin(text, box, context), local);
            }
        }
    }
    if (context.isSeen) m_differences.CompareTransform(node, context, local);
    context.matrix = context.matrix * local;
    return context.matrix.Determinant() != 0 && IsFinite(context.matrix);
}

bool Walker::CountVisit(const Node& node) {
    if (++m_visits <= kMaximumVisits && m_segments <= kMaximumSegments) return true;
    if (!m_isTooLarge) m_findings.Add(Rule::TooLarge, node.offset);
    m_isTooLarge = true;
    return false;
}

Walker::ContextPointer Walker::Enter(const Node& node, const Context& parent) {
    if (!CountVisit(node)) return {};
    if (parent.depth >= kMaximumWalkDepth) {
        m_findings.Add(Rule::TooDeep, node.offset);
        return {};
    }
    ContextPointer context = std::make_unique<Context>(parent);
    ++context->depth;
    context->style = ComputeStyle(parent.style, m_sheets.Of(node));
    const bool isRoot = !node.parent;
    OzmiraElement element;
    if (context->isSeen && !isRoot) element = ApplyOzmiraStyle(node, context->ozmira);
    if (!PassesConditions(node)) {
        if (context->isSeen && !element.isHidden) {
            m_differences.Report(Rule::Conditional, node.offset,
                                 node.Has(Attr::SystemLanguage) ? "systemLanguage" : "requiredExtensions");
        }
        return {};
    }
    if (context->isSeen) {
        m_differences.CompareDisplay(node, *context, element.isHidden);
        if (element.isHidden) context->isSeen = false;
        if (context->style.isDisplayed) m_differences.CompareOpacity(node, *context, element.opacity);
    }
    if (!context->style.isDisplayed) return {};
    if (!EnterTransform(node, *context)) return {};
    if (m_isMeasuring) return context;
    if (context->style.opacity == 0 && !context->isClipContent) return {};

    const ReferenceValue& clip = context->style.clipPath;
    const Node* clipPath = clip.kind == ReferenceValue::Kind::Local ? m_document.FindById(clip.id) : nullptr;
    if (clipPath && clipPath->tag != Tag::ClipPath) clipPath = nullptr;
    if (context->isSeen) m_differences.CompareClips(node, *context, clipPath, element.clips);
    if (clip.kind == ReferenceValue::Kind::Other && !StartsWithIgnoringCase(clip.text, "url(")) {
        m_findings.Add(Rule::ClipShape, node.offset);
    }
    if (clipPath && !ApplyClip(*clipPath, node, *context, context->isSeen)) return {};
    if (!context->isClipContent && !EnterEffects(node, *context)) return {};
    return context;
}

bool Walker::EnterEffects(const Node& node, Context& context) {
    double opacity = context.style.opacity;
    const ReferenceValue& mask = context.style.mask;
    if (mask.kind == ReferenceValue::Kind::Local) {
        const Node* const target = m_document.FindById(mask.id);
        if (target && target->tag == Tag::Mask) {
            if (context.isSeen) m_differences.Report(Rule::Mask, node.offset);
            const std::optional<double> share = ApplyMask(*target, node, context);
            if (!share) return false;
            opacity *= *share;
        }
    }
    if (context.style.filter.kind != ReferenceValue::Kind::None) {
        if (const ReferenceValue& filter = context.style.filter; filter.kind == ReferenceValue::Kind::Local) {
            const Node* const target = m_document.FindById(filter.id);
            if (!target || target->tag != Tag::Filter) {
                if (context.isSeen) m_differences.Report(Rule::MissingReference, node.offset, "filter");
                return false;
            }
        }
        ApplyFilter(node, context);
    }
    if (!context.style.blendMode.empty()) m_findings.Add(Rule::BlendMode, node.offset);
    if (opacity < 1) EnterGroup(node, opacity, context);
    return true;
}

void Walker::EnterGroup(const Node& node, double opacity, Context& context) {
    auto group = std::make_unique<Group>();
    group->opacity = opacity;
    group->origin = &node;
    group->isSeen = context.isSeen;
    Group* const inner = group.get();
    context.out->items.emplace_back(std::move(group));
    context.out = inner;
}

void Walker::VisitChildren(const Node& node, const Context& context) {
    for (const Node* child = node.firstChild; child; child = child->nextSibling) Visit(*child, context);
}

void Walker::Visit(const Node& node, const Context& parent) {
    if (IsShape(node.tag)) return VisitShape(node, parent);
    switch (node.tag) {
    case Tag::G:
    case Tag::A:
        if (parent.isSeen && !node.isPlain) m_differences.Report(Rule::Prefix, node.offset, node.localName);
        if (const ContextPointer context = Enter(node, parent)) {
            if (!node.isPlain) context->isSeen = false;
            VisitChildren(node, *context);
        }
        break;
    case Tag::Use: VisitUse(node, parent); break;
    case Tag::Svg: VisitViewport(node, nullptr, parent); break;
    case Tag::Switch: VisitSwitch(node, parent); break;
    case Tag::Text:
    case Tag::Image:
    case Tag::ForeignObject: VisitLeftOut(node, parent); break;
    default: break;
    }
}

void Walker::VisitLeftOut(const Node& node, const Context& parent) {
    if (m_isMeasuring || (node.tag == Tag::Text && !node.hasText) || !PassesConditions(node)) return;
    const ComputedStyle style = ComputeStyle(parent.style, m_sheets.Of(node));
    if (!style.isDisplayed || !style.isVisible || style.opacity == 0) return;
    const Rule rule = node.tag == Tag::Text    ? Rule::Text
                      : node.tag == Tag::Image ? Rule::Image
                                               : Rule::ForeignObject;
    if (node.tag == Tag::Image && !node.Has(Attr::Href)) return;
    m_findings.Add(rule, node.offset);
}

void Walker::VisitSwitch(const Node& node, const Context& parent) {
    if (parent.isSeen) m_differences.Report(Rule::Switch, node.offset);
    const ContextPointer context = Enter(node, parent);
    if (!context) return;
    context->isSeen = false;
    for (const Node* child = node.firstChild; child; child = child->nextSibling) {
        switch (child->tag) {
        case Tag::Foreign:
        case Tag::Other:
        case Tag::ForeignObject: continue;
        default: break;
        }
        if (!PassesConditions(*child)) continue;
        Visit(*child, *context);
        return;
    }
}

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
    return {PaintOf(style.fill, 1, path, context), PaintOf(style.stroke, 1, path, context)};
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
    const bool isSvg = node.tag == Tag::Svg;
    const CssLength whole{100, Unit::Percent};
    const auto size = [&](Attr attr, const LengthBase& base) {
        if (use && GeometryLength(*use, attr, m_sheets)) return length(*use, attr, base, whole);
        return length(node, attr, base, whole);
    };
    const double x = isSvg ? length(node, Attr::X, context->BaseX(), {}) : 0;
    const double y = isSvg ? length(node, Attr::Y, context->BaseY(), {}) : 0;
    const double width = size(Attr::Width, context->BaseX()), height = size(Attr::Height, context->BaseY());
    if (!(width > 0 && height > 0)) return;
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
