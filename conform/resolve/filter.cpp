// Filters that only change colours.
#include "resolve/walker.h"

namespace ozm::conform {
namespace {

std::string_view GetByName(const Node& node, std::string_view name) {
    for (const Attribute& attribute : node.attributes) {
        if (attribute.name == name) return attribute.value;
    }
    return {};
}

/// The colours that a filter makes, when it does nothing else.
std::optional<ColorMatrix> ColorsOf(const Node& filter) {
    const Node* only = nullptr;
    for (const Node* child = filter.firstChild; child; child = child->nextSibling) {
        if (child->tag == Tag::Foreign || child->tag == Tag::Title || child->localName == "desc") continue;
        if (only) return {};
        only = child;
    }
    if (!only || only->localName != "feColorMatrix") return {};
    const std::string_view in = GetByName(*only, "in");
    if (!in.empty() && in != "SourceGraphic") return {};
    std::string_view space = GetByName(*only, "color-interpolation-filters");
    if (space.empty()) space = GetByName(filter, "color-interpolation-filters");
    return ReadColorMatrix(only->Get(Attr::Type), GetByName(*only, "values"), space != "sRGB");
}

} // namespace

Color Context::Recolored(const Color& color) const { return colorMatrix ? colorMatrix->Apply(color) : color; }

void Walker::ApplyFilter(const Node& node, const Node* filter, Context& context) {
    const std::optional<ColorMatrix> colors = filter ? ColorsOf(*filter) : std::nullopt;
    const bool hasStyle = filter && (filter->Has(Attr::Style) || filter->Has(Attr::Class));
    if (!colors || context.colorMatrix || hasStyle) {
        m_findings.Add(Rule::Filter, node.offset);
        return;
    }
    m_differences.Report(Rule::ColorFilter, node.offset);
    context.isSeen = false;
    context.colorMatrix = colors;
    // A filter shows nothing outside its region.
    const bool isUserSpace = GetByName(*filter, "filterUnits") == "userSpaceOnUse";
    const Box box = ObjectBox(node, context);
    if (box.IsEmpty()) return;
    const auto length = [&](Attr attr, double percent, double whole) {
        const CssLength read = ReadLength(filter->Get(attr)).value_or(CssLength{percent, Unit::Percent});
        return Resolve(read, {isUserSpace ? whole : 1, context.style.fontSize, context.rootFontSize});
    };
    Box region = Box::OfSize(
        length(Attr::X, -10, context.viewWidth), length(Attr::Y, -10, context.viewHeight),
        length(Attr::Width, 120, context.viewWidth), length(Attr::Height, 120, context.viewHeight));
    if (!isUserSpace) {
        region = Box::OfSize(box.left + region.left * box.Width(), box.top + region.top * box.Height(),
                             region.Width() * box.Width(), region.Height() * box.Height());
    }
    context.clip = AddRectangleClip(region, context.matrix, context.clip);
}

} // namespace ozm::conform
