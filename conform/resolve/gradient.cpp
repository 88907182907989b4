// Gradients, from their elements to where they lie in the drawing.
#include "geometry/text.h"
#include "resolve/template_chain.h"
#include "resolve/walker.h"

#include <algorithm>

namespace ozm::conform {
namespace {

/// Reads the coordinates of one gradient.
class GradientReader {
public:
    /// `style` is the gradient's own.
    GradientReader(const TemplateChain& chain, const ComputedStyle& style, const Context& context)
        : m_chain(chain), m_style(style), m_context(context),
          m_isUserSpace(chain.Get(Attr::GradientUnits) == "userSpaceOnUse") {}

    bool IsUserSpace() const { return m_isUserSpace; }

    void Read(Gradient& gradient) const {
        const CssLength start{0, Unit::Percent}, middle{50, Unit::Percent}, end{100, Unit::Percent};
        if (!gradient.isRadial) {
            gradient.start = {X(Attr::X1, start), Y(Attr::Y1, start)};
            gradient.end = {X(Attr::X2, end), Y(Attr::Y2, start)};
            return;
        }
        gradient.center = {X(Attr::Cx, middle), Y(Attr::Cy, middle)};
        gradient.radius = Get(Attr::R, middle, m_context.Diagonal());
        gradient.focus = {Has(Attr::Fx) ? X(Attr::Fx, middle) : gradient.center.x,
                          Has(Attr::Fy) ? Y(Attr::Fy, middle) : gradient.center.y};
        gradient.focalRadius = Get(Attr::Fr, start, m_context.Diagonal());
    }

private:
    bool Has(Attr attr) const {
        const Attribute* const attribute = m_chain.Find(attr, true);
        return attribute && ReadLength(attribute->value);
    }
    double Get(Attr attr, CssLength otherwise, double whole) const {
        const Attribute* const attribute = m_chain.Find(attr, true);
        std::optional<CssLength> length;
        if (attribute) length = ReadLength(attribute->value);
        return Resolve(length.value_or(otherwise),
                       {m_isUserSpace ? whole : 1, m_style.fontSize, m_style.rootFontSize});
    }
    double X(Attr attr, CssLength otherwise) const { return Get(attr, otherwise, m_context.viewWidth); }
    double Y(Attr attr, CssLength otherwise) const { return Get(attr, otherwise, m_context.viewHeight); }

    const TemplateChain& m_chain;
    const ComputedStyle& m_style;
    const Context& m_context;
    bool m_isUserSpace;
};

GradientSpread ReadSpread(std::string_view text) {
    if (text == "reflect") return GradientSpread::Reflect;
    return text == "repeat" ? GradientSpread::Repeat : GradientSpread::Pad;
}

/// True when the whole plane has the colour of the last stop, or nearly so: the way from the first to the
/// last is no longer than `least` in the drawing.
bool IsDegenerate(const Gradient& gradient, double least) {
    if (gradient.isRadial) return !(gradient.radius * LargestScale(gradient.matrix) > least);
    return !(Distance(gradient.matrix.Map(gradient.start), gradient.matrix.Map(gradient.end)) > least);
}

} // namespace

std::vector<GradientStop> Walker::ReadStops(const Node& node, const Context& context) {
    std::vector<GradientStop> stops;
    const ComputedStyle& parent = StyleInPlace(node);
    for (const Node* child = node.firstChild; child; child = child->nextSibling) {
        if (child->tag != Tag::Stop) continue;
        if (!CountVisit(node)) break;
        const ComputedStyle style = ComputeStyle(parent, *child, m_sheets);
        GradientStop stop;
        stop.offset = ReadShare(child->Get(Attr::Offset)).value_or(0);
        if (!stops.empty()) stop.offset = std::max(stop.offset, stops.back().offset);
        switch (style.stopColor.kind) {
        case PaintValue::Kind::Color: stop.color = style.stopColor.color; break;
        case PaintValue::Kind::CurrentColor: stop.color = style.color; break;
        default: break;
        }
        stop.color.alpha *= style.stopOpacity;
        stop.color = context.Recolored(stop.color);
        stops.push_back(stop);
    }
    return stops;
}

std::optional<Paint> Walker::PlaceGradient(const Node& node, double alpha, const Path& path,
                                           const Context& context) {
    const TemplateChain chain(m_document, node);
    const Node* const withStops = chain.FindWithChild(Tag::Stop);
    if (!withStops) return Paint{};
    Gradient gradient;
    gradient.stops = ReadStops(*withStops, context);
    const auto plain = [&] {
        Paint paint = Paint::Of(gradient.stops.back().color);
        paint.color.alpha *= alpha;
        return paint.color.alpha > 0 ? paint : Paint{};
    };
    if (gradient.stops.size() == 1 || alpha == 0) return plain();
    gradient.isRadial = node.tag == Tag::RadialGradient;
    gradient.spread = ReadSpread(chain.Get(Attr::SpreadMethod));
    const GradientReader reader(chain, StyleInPlace(node), context);
    reader.Read(gradient);
    gradient.matrix = context.matrix;
    if (!reader.IsUserSpace()) {
        const Box box = BoxOf(path);
        if (!(box.Width() > 0 && box.Height() > 0)) return {};
        gradient.matrix = gradient.matrix * Matrix{box.Width(), 0, 0, box.Height(), box.left, box.top};
    }
    gradient.matrix =
        gradient.matrix * TemplateTransform(chain, Attr::GradientTransform, reader.IsUserSpace(), context);
    if (!Inverse(gradient.matrix)) return Paint{};
    if (IsDegenerate(gradient, m_scene->Tolerance() / 20)) return plain();
    const bool hasRing = gradient.isRadial && gradient.focalRadius > 0;
    if (hasRing && (gradient.focus != gradient.center || gradient.spread != GradientSpread::Pad)) {
        m_findings.Add(Rule::FocalRadius, node.offset);
    }
    const bool isVisible = std::any_of(gradient.stops.begin(), gradient.stops.end(),
                                       [](const GradientStop& stop) { return stop.color.alpha > 0; });
    if (!isVisible) return Paint{};
    Paint paint;
    paint.kind = Paint::Kind::Gradient;
    paint.color.alpha = alpha;
    paint.gradient = &m_scene->gradients.emplace_back(std::move(gradient));
    return paint;
}

} // namespace ozm::conform
