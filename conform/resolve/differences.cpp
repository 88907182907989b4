#include "resolve/differences.h"

#include "geometry/text.h"
#include "resolve/viewport.h"

#include <algorithm>
#include <cmath>

namespace ozm::conform {
namespace {

/// True when two numbers differ by more than writing them with a few digits explains.
bool Differ(double a, double b, double scale = 0) {
    return !(std::abs(a - b) <= 1e-4 * std::max({std::abs(a), std::abs(b), scale, 1e-9}));
}

bool Differ(const Matrix& a, const Matrix& b, double extent) {
    const double whole = std::max({std::abs(a.a), std::abs(a.b), std::abs(a.c), std::abs(a.d)});
    return Differ(a.a, b.a, whole) || Differ(a.b, b.b, whole) || Differ(a.c, b.c, whole) ||
           Differ(a.d, b.d, whole) || Differ(a.e, b.e, whole * extent) || Differ(a.f, b.f, whole * extent);
}

} // namespace

void Differences::Report(Rule rule, uint32_t offset, std::string_view detail) {
    if (!m_isMuted) m_findings.Add(rule, offset, detail);
}

void Differences::ReportProperty(Attr property, const Declaration* source, Rule rule, uint32_t otherwise) {
    const std::string_view name = NameOf(property);
    if (!source) return Report(rule, otherwise, name);
    if (source->owner && !source->owner->parent) return Report(Rule::RootStyle, source->offset, name);
    switch (source->origin) {
    case Origin::StyleSheet: return Report(Rule::StyleSheet, source->offset, name);
    case Origin::StyleAttribute: {
        const Attribute* const style = source->owner->Find(Attr::Style);
        if (style && !ReadsFromStyle(style->raw, name, source->value)) {
            return Report(style->raw == style->value ? Rule::StyleSyntax : Rule::Entity, source->offset,
                          name);
        }
        break;
    }
    case Origin::Attribute: {
        const Attribute* const attribute = source->owner->Find(property);
        if (attribute && attribute->raw != attribute->value)
            return Report(Rule::Entity, source->offset, name);
        break;
    }
    }
    if (EqualsIgnoringCase(source->value, "currentcolor"))
        return Report(Rule::CurrentColor, source->offset, name);
    Report(rule, source->offset, name);
}

void Differences::ReportAttribute(const Node& node, Attr attr, Rule rule) {
    const Attribute* const attribute = node.Find(attr);
    if (!attribute) return Report(rule, node.offset, NameOf(attr));
    Report(attribute->raw == attribute->value ? rule : Rule::Entity, attribute->offset, NameOf(attr));
}

void Differences::CompareFrame(const Node& root, const Box& box, double width, double height) {
    const OzmiraFrame frame = ReadOzmiraFrame(root);
    const Attribute* const viewBox = root.Find(Attr::ViewBox);
    if (!(frame.width > 0 && frame.height > 0 && frame.viewWidth > 0 && frame.viewHeight > 0)) {
        return Report(Rule::NoSize, root.offset);
    }
    const double scale = std::min(frame.width / frame.viewWidth, frame.height / frame.viewHeight);
    const Box shown = Box::OfSize(frame.x, frame.y, frame.width / scale, frame.height / scale);
    const double extent = std::max(box.Width(), box.Height());
    const auto differ = [&](double a, double b) { return std::abs(a - b) > 1e-3 * extent; };
    if (!differ(shown.left, box.left) && !differ(shown.top, box.top) && !differ(shown.right, box.right) &&
        !differ(shown.bottom, box.bottom)) {
        return;
    }
    const bool isFallback = frame.viewWidth == 128 && frame.viewHeight == 128 && Differ(width, 128);
    if (viewBox && (isFallback || !ReadViewBox(viewBox->value))) {
        return Report(Rule::ViewBox, viewBox->offset);
    }
    if (Differ(frame.width * height, frame.height * width)) {
        const Attribute* attribute = root.Find(Attr::Width);
        if (!attribute) attribute = root.Find(Attr::Height);
        return Report(Rule::Size, attribute ? attribute->offset : root.offset);
    }
    const Attribute* const ratio = root.Find(Attr::PreserveAspectRatio);
    const Attribute* const place = ratio ? ratio : viewBox;
    Report(Rule::AspectRatio, place ? place->offset : root.offset);
}

void Differences::CompareUnknownFrame(const Node& root) {
    const OzmiraFrame frame = ReadOzmiraFrame(root);
    if (!(frame.width > 0 && frame.height > 0)) return Report(Rule::NoSize, root.offset);
    for (const Attr attr : {Attr::ViewBox, Attr::Width, Attr::Height}) {
        const Attribute* const attribute = root.Find(attr);
        if (attribute) return Report(attr == Attr::ViewBox ? Rule::ViewBox : Rule::Size, attribute->offset);
    }
}

void Differences::CompareDisplay(const Node& node, const Context& context, bool isHiddenForOzmira) {
    const bool isHidden = !context.style.isDisplayed;
    if (isHidden == isHiddenForOzmira) return;
    const Declaration* const source = context.style.SourceOf(Attr::Display);
    ReportProperty(Attr::Display, source, node.Has(Attr::Visibility) ? Rule::Visibility : Rule::Display,
                   node.offset);
}

void Differences::CompareOpacity(const Node& node, const Context& context, double opacityForOzmira) {
    const double opacity = context.style.opacity;
    if (std::abs(opacity - opacityForOzmira) < 1e-4 || (opacity == 0 && opacityForOzmira <= 0)) return;
    ReportProperty(Attr::Opacity, context.style.SourceOf(Attr::Opacity), Rule::OpacitySyntax, node.offset);
}

void Differences::CompareTransform(const Node& node, const Context& context, const Matrix& local) {
    const Attribute* const attribute = node.Find(Attr::Transform);
    const Matrix own =
        node.parent && attribute && attribute->raw.data() ? OzmiraTransform(attribute->raw) : Matrix{};
    if (!Differ(own, local, std::max(context.viewWidth, context.viewHeight))) return;
    const Declaration* const source = context.style.SourceOf(Attr::Transform);
    if (!node.parent) return Report(Rule::RootStyle, source ? source->offset : node.offset, "transform");
    if (const Declaration* const origin = context.style.SourceOf(Attr::TransformOrigin)) {
        return Report(Rule::TransformProperty, origin->offset, "transform-origin");
    }
    if (source && source->origin != Origin::Attribute) {
        return Report(Rule::TransformProperty, source->offset, "transform");
    }
    ReportAttribute(node, Attr::Transform, Rule::TransformSyntax);
}

void Differences::CompareUse(const Node& node, const Context& context, const Node* target, Point offset) {
    const Attribute* href = nullptr;
    for (const Attribute& attribute : node.attributes) {
        if (attribute.name == "xlink:href") href = &attribute;
    }
    if (!href || href->raw.substr(0, 1) != "#" || href->raw.substr(1) != node.LocalReference()) {
        const Attribute* const written = node.Find(Attr::Href);
        return Report(Rule::Href, written ? written->offset : node.offset);
    }
    if (target->tag == Tag::Symbol) return Report(Rule::Symbol, target->offset);
    if (target->tag == Tag::Svg) return Report(Rule::NestedSvg, target->offset);
    if (!IsInOzmiraTree(*target)) return Report(Rule::UseTarget, href->offset, node.LocalReference());
    if (Differ(OzmiraNumber(node, Attr::X), offset.x, context.viewWidth)) {
        ReportAttribute(node, Attr::X, Rule::UsePosition);
    }
    if (Differ(OzmiraNumber(node, Attr::Y), offset.y, context.viewHeight)) {
        ReportAttribute(node, Attr::Y, Rule::UsePosition);
    }
}

void Differences::CompareMissingUse(const Node& node) {
    // Ozmira takes the prefix of `xlink:href` for what it usually means.
    for (const Attribute& attribute : node.attributes) {
        if (attribute.name != "xlink:href" || attribute.raw.substr(0, 1) != "#") continue;
        const Node* const target = m_document.FindById(attribute.raw.substr(1));
        if (target && IsInOzmiraTree(*target)) Report(Rule::Href, attribute.offset);
    }
}

void Differences::CompareClips(const Node& node, const Context& context, const Node* clipPath,
                               const std::vector<std::string_view>& clipsForOzmira) {
    if (!clipPath && clipsForOzmira.empty()) return;
    const Declaration* const source = context.style.SourceOf(Attr::ClipPath);
    if (!clipPath) {
        // A name that leads nowhere, or to something else, has no effect in either.
        return;
    }
    const bool isSame = clipsForOzmira.size() == 1 && clipsForOzmira[0] == clipPath->Get(Attr::Id);
    if (!isSame) return ReportProperty(Attr::ClipPath, source, Rule::ValueSyntax, node.offset);
    if (!IsInOzmiraTree(*clipPath)) Report(Rule::UseTarget, source->offset, clipPath->Get(Attr::Id));
}

} // namespace ozm::conform
