// The size of a drawing, and what of it is shown.
#include "geometry/text.h"
#include "resolve/viewport.h"
#include "resolve/walker.h"
#include "split/areas.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace ozm::conform {

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

void Walker::EmitBackground(const Node& root, const Context& context) {
    std::string_view text = context.style.background;
    if (text.empty() || m_isSizeUnknown) return;
    std::optional<Color> color = ReadColor(text);
    for (std::string_view word = NextWord(text); !word.empty() && !color; word = NextWord(text)) {
        color = ReadColor(word);
    }
    if (!color || !(color->alpha > 0)) return;
    for (const Declaration& declaration : m_sheets.Of(root)) {
        if (declaration.property != Attr::Background) continue;
        m_differences.Report(Rule::RootStyle, declaration.offset, NameOf(Attr::Background));
    }
    const Box& box = m_scene->viewBox;
    Shape shape;
    shape.primitive = Rectangle{box.left, box.top, box.Width(), box.Height(), 0, 0};
    shape.path = PathOf(std::get<Rectangle>(shape.primitive));
    shape.fill = Paint::Of(*color);
    shape.clip = context.clip;
    shape.origin = &root;
    context.out->items.emplace_back(std::move(shape));
}

void Walker::SetUpFrame(Scene& scene, Context& context) {
    const Node& root = *m_document.Root();
    std::optional<Box> viewBox = ReadViewBox(root.Get(Attr::ViewBox));
    const double wholeWidth = viewBox ? viewBox->Width() : 100,
                 wholeHeight = viewBox ? viewBox->Height() : 100;
    const ComputedStyle style = ComputeStyle({}, root, m_sheets);
    const auto size = [&](Attr attr, double whole) {
        const std::optional<CssLength> length = GeometryLength(root, attr, m_sheets);
        const double value = length ? Resolve(*length, {whole, style.fontSize, 16}) : whole;
        return value > 0 && std::isfinite(value) ? value : whole;
    };
    scene.width = size(Attr::Width, wholeWidth);
    scene.height = size(Attr::Height, wholeHeight);
    scene.hasSize = root.Has(Attr::Width) || root.Has(Attr::Height);
    const auto isAbsolute = [&](Attr attr) {
        const std::optional<CssLength> length = GeometryLength(root, attr, m_sheets);
        return length && length->unit != Unit::Percent && length->value > 0;
    };
    if (viewBox && isAbsolute(Attr::Width)) m_unitsPerPixel = viewBox->Width() / scene.width;
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
        m_unitsPerPixel = 1;
        scene.viewBox = viewport;
    } else {
        const double scale = ratio.isSlice ? std::max(sx, sy) : std::min(sx, sy);
        const double width = scene.width / scale, height = scene.height / scale;
        scene.viewBox =
            Box::OfSize(viewBox->left + (viewBox->Width() - width) * ratio.alignX,
                        viewBox->top + (viewBox->Height() - height) * ratio.alignY, width, height);
    }
    for (const Attr attr : {Attr::Width, Attr::Height}) {
        const Attribute* const attribute = root.Find(attr);
        if (attribute && attribute->value.ends_with('%'))
            m_findings.Add(Rule::ViewportSize, attribute->offset);
    }
    if (m_isSizeUnknown) return m_differences.CompareUnknownFrame(root);
    m_differences.CompareFrame(root, scene.viewBox, scene.width, scene.height);
}

} // namespace ozm::conform
