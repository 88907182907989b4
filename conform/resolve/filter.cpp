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

bool IsPrimitive(const Node& node) {
    return node.tag != Tag::Foreign && node.tag != Tag::Title && node.localName != "desc";
}

/// True for a filter without primitives, whose result is transparent.
bool IsEmpty(const Node& filter) {
    for (const Node* child = filter.firstChild; child; child = child->nextSibling) {
        if (IsPrimitive(*child)) return false;
    }
    return true;
}

/// One of the functions of a `feComponentTransfer`: it multiplies and adds. None for other kinds.
bool ReadTransfer(const Node& function, double& slope, double& intercept) {
    const std::string_view type = function.Get(Attr::Type);
    if (type == "identity") return true;
    if (type != "linear") return false;
    slope = ReadPlainNumber(GetByName(function, "slope")).value_or(1);
    intercept = ReadPlainNumber(GetByName(function, "intercept")).value_or(0);
    return true;
}

std::optional<ColorMatrix> ReadComponentTransfer(const Node& primitive, bool isLinear) {
    ColorMatrix matrix;
    matrix.isLinear = isLinear;
    for (size_t i = 0; i < 4; ++i) matrix.values[i * 6] = 1;
    for (const Node* child = primitive.firstChild; child; child = child->nextSibling) {
        constexpr std::string_view kChannels = "RGBA";
        const std::string_view name = child->localName;
        const size_t row =
            name.size() == 7 && name.starts_with("feFunc") ? kChannels.find(name[6]) : std::string_view::npos;
        if (row == std::string_view::npos) continue;
        if (!ReadTransfer(*child, matrix.values[row * 6], matrix.values[row * 5 + 4])) return {};
    }
    // What is transparent would become visible.
    return matrix.values[19] == 0 ? std::optional(matrix) : std::nullopt;
}

/// The colours that a filter makes, when it does nothing else.
std::optional<ColorMatrix> ColorsOf(const Node& filter) {
    const Node* only = nullptr;
    for (const Node* child = filter.firstChild; child; child = child->nextSibling) {
        if (!IsPrimitive(*child)) continue;
        if (only) return {};
        only = child;
    }
    if (!only) return {};
    const std::string_view in = GetByName(*only, "in");
    if (!in.empty() && in != "SourceGraphic") return {};
    std::string_view space = GetByName(*only, "color-interpolation-filters");
    if (space.empty()) space = GetByName(filter, "color-interpolation-filters");
    if (only->localName == "feComponentTransfer") return ReadComponentTransfer(*only, space != "sRGB");
    if (only->localName != "feColorMatrix") return {};
    return ReadColorMatrix(only->Get(Attr::Type), GetByName(*only, "values"), space != "sRGB");
}

} // namespace

Color Context::Recolored(const Color& color) const { return colorMatrix ? colorMatrix->Apply(color) : color; }

bool Walker::ApplyFilter(const Node& node, const Node* filter, Context& context) {
    if (filter && IsEmpty(*filter)) {
        if (context.isSeen) m_differences.Report(Rule::ColorFilter, node.offset);
        return false;
    }
    const std::optional<ColorMatrix> colors =
        filter ? ColorsOf(*filter) : ReadFilterFunction(context.style.filter.text);
    const bool hasStyle = filter && (filter->Has(Attr::Style) || filter->Has(Attr::Class));
    if (!colors || context.colorMatrix || hasStyle) {
        m_findings.Add(Rule::Filter, node.offset);
        return true;
    }
    m_differences.Report(Rule::ColorFilter, node.offset);
    context.isSeen = false;
    context.colorMatrix = colors;
    if (filter) CutToRegion(node, *filter, context);
    return true;
}

void Walker::CutToRegion(const Node& node, const Node& element, Context& context) {
    // A filter shows nothing outside its region.
    const bool isUserSpace = GetByName(element, "filterUnits") == "userSpaceOnUse";
    const Box box = ObjectBox(node, context);
    if (box.IsEmpty()) return;
    const auto length = [&](Attr attr, double percent, double whole) {
        const CssLength read = ReadLength(element.Get(attr)).value_or(CssLength{percent, Unit::Percent});
        return Resolve(read, {isUserSpace ? whole : 1, context.style.fontSize, context.style.rootFontSize});
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
