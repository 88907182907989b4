// The walk over the tree of elements.
#include "base/limits.h"
#include "geometry/text.h"
#include "resolve/viewport.h"
#include "resolve/walker.h"
#include "style/computed_value.h"
#include "style/custom_properties.h"

#include <string>

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

/// True for a value that only browsers compute. Lengths of shapes are read without custom properties.
bool IsComputed(const Declaration& declaration, const ComputedStyle& style) {
    if (!declaration.hasVariable) return IsComputedByBrowsers(declaration.value);
    if (IsGeometry(declaration.property)) return true;
    const std::optional<std::string> value = style.customProperties->WriteOut(declaration.value);
    return value && IsComputedByBrowsers(Trim(*value));
}

} // namespace

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
    if (!m_document.HasNamespace()) m_findings.Add(Rule::NoNamespace, root.offset);
    SetUpFrame(scene, context);
    m_differences.SetTolerance(scene.Tolerance());
    if (const ContextPointer inner = Enter(root, context)) {
        EmitBackground(root, *inner);
        if (IsEmptyViewBox(root.Get(Attr::ViewBox))) {
            m_differences.ReportAttribute(root, Attr::ViewBox, Rule::ViewBox);
        } else {
            VisitChildren(root, *inner);
        }
    }
    if (m_isSizeUnknown) FitToContent(scene);
    m_scene = nullptr;
    return scene;
}

bool Walker::PassesConditions(const Node& node) const {
    for (const Attribute& attribute : node.attributes) {
        if (attribute.attr == Attr::RequiredExtensions && !Trim(attribute.value).empty()) return false;
        if (attribute.attr == Attr::SystemLanguage && !HasLanguage(attribute.value)) return false;
    }
    return true;
}

bool Walker::CountVisit(const Node& node) {
    if (++m_visits <= kMaximumVisits && m_segments <= kMaximumSegments && !m_sheets.IsExhausted())
        return true;
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
    context->style = ComputeStyle(parent.style, node, m_sheets);
    OzmiraElement element; // of the root Ozmira reads no style
    if (context->isSeen && node.parent) element = ApplyOzmiraStyle(node, context->ozmira);
    if (!EnterDisplay(node, element, *context) || !EnterTransform(node, *context)) return {};
    if (m_isMeasuring) return context;
    ReportComputed(node, context->style);
    if (!EnterClipPath(node, element, *context)) return {};
    if (context->isClipContent) return context;
    if (context->style.opacity == 0 || !EnterEffects(node, *context)) return {};
    return context;
}

void Walker::ReportComputed(const Node& node, const ComputedStyle& style) {
    for (const Declaration& declaration : m_sheets.Of(node)) {
        if (IsPresentation(declaration.property) || IsGeometry(declaration.property)) {
            if (!IsComputed(declaration, style)) continue;
            m_findings.Add(Rule::ComputedValue, declaration.offset, NameOf(declaration.property));
        }
    }
    for (const Attribute& attribute : node.attributes) {
        if (!IsGeometry(attribute.attr) || attribute.attr == Attr::D) continue;
        if (IsComputedByBrowsers(attribute.value)) {
            m_findings.Add(Rule::ComputedValue, attribute.offset, NameOf(attribute.attr));
        }
    }
}

bool Walker::EnterDisplay(const Node& node, const OzmiraElement& element, Context& context) {
    if (!PassesConditions(node)) {
        if (context.isSeen && !element.isHidden) {
            m_differences.Report(Rule::Conditional, node.offset,
                                 node.Has(Attr::SystemLanguage) ? "systemLanguage" : "requiredExtensions");
        }
        return false;
    }
    if (context.isSeen) m_differences.CompareDisplay(node, context, element.isHidden);
    if (element.isHidden) context.isSeen = false;
    if (!context.style.isDisplayed) return false;
    if (context.isSeen) m_differences.CompareOpacity(node, context, element.opacity);
    return true;
}

bool Walker::EnterClipPath(const Node& node, const OzmiraElement& element, Context& context) {
    const ReferenceValue& clip = context.style.clipPath;
    const Node* clipPath = clip.kind == ReferenceValue::Kind::Local ? m_document.FindById(clip.id) : nullptr;
    if (clipPath && clipPath->tag != Tag::ClipPath) clipPath = nullptr;
    if (context.isSeen) m_differences.CompareClips(node, context, clipPath, element.clips);
    if (clip.kind == ReferenceValue::Kind::Other && !StartsWithIgnoringCase(clip.text, "url(")) {
        m_findings.Add(Rule::ClipShape, node.offset);
    }
    return !clipPath || ApplyClip(*clipPath, node, context, context.isSeen);
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
        const Node* target = nullptr;
        const ReferenceValue& filter = context.style.filter;
        if (filter.kind == ReferenceValue::Kind::Local) {
            target = m_document.FindById(filter.id);
            if (target && target->tag != Tag::Filter) target = nullptr;
        }
        // A name that leads nowhere filters nothing.
        const bool isMissing = filter.kind == ReferenceValue::Kind::Local && !target;
        if (!isMissing && !ApplyFilter(node, target, context)) return false;
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
    case Tag::Foreign:
        // Ozmira does not read namespaces.
        if (parent.isSeen && node.isPlain && IsKnownToOzmira(TagOf(node.localName))) {
            m_differences.Report(Rule::Namespace, node.offset, node.localName);
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
    const ComputedStyle style = ComputeStyle(parent.style, node, m_sheets);
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

} // namespace ozm::conform
