// Patterns, as instances of their tiles.
#include "base/limits.h"
#include "geometry/winding.h"
#include "resolve/template_chain.h"
#include "resolve/viewport.h"
#include "resolve/walker.h"

#include <cmath>
#include <optional>

namespace ozm::conform {
namespace {

/// The tiles that touch an area.
struct TileRange {
    double firstX, firstY, lastX, lastY;

    double Count() const { return (lastX - firstX + 1) * (lastY - firstY + 1); }
};

TileRange TilesOver(const Box& area, const Box& tile) {
    // An area that ends where a tile begins does not need that tile.
    constexpr double kEdge = 1e-6;
    return {std::floor((area.left - tile.left) / tile.Width() + kEdge),
            std::floor((area.top - tile.top) / tile.Height() + kEdge),
            std::ceil((area.right - tile.left) / tile.Width() - kEdge) - 1,
            std::ceil((area.bottom - tile.top) / tile.Height() - kEdge) - 1};
}

/// The first tile, in the coordinates of what is painted, which has this box.
Box TileOf(const TemplateChain& chain, const Box& box, const ComputedStyle& style, const Context& context) {
    const bool isUserSpace = chain.Get(Attr::PatternUnits) == "userSpaceOnUse";
    const auto length = [&](Attr attr, double whole) {
        const CssLength read = ReadLength(chain.Get(attr)).value_or(CssLength{});
        return Resolve(read, {isUserSpace ? whole : 1, style.fontSize, style.rootFontSize});
    };
    const Box tile =
        Box::OfSize(length(Attr::X, context.viewWidth), length(Attr::Y, context.viewHeight),
                    length(Attr::Width, context.viewWidth), length(Attr::Height, context.viewHeight));
    if (isUserSpace) return tile;
    return Box::OfSize(box.left + tile.left * box.Width(), box.top + tile.top * box.Height(),
                       tile.Width() * box.Width(), tile.Height() * box.Height());
}

} // namespace

bool Walker::HasTiles(const Node& pattern, const Path& path, const Context& context) {
    const Box tile = TileOf(TemplateChain(m_document, pattern), BoxOf(path), StyleInPlace(pattern), context);
    return tile.Width() > 0 && tile.Height() > 0;
}

void Walker::EmitPattern(const Node& pattern, const Shape& area, double alpha, const Context& context) {
    if (context.IsFollowing(pattern) || alpha == 0) return;
    const TemplateChain chain(m_document, pattern);
    const Node* const source = chain.FindWithContent();
    if (!source) return;
    const Box box = BoxOf(area.path);
    const ComputedStyle& ownStyle = StyleInPlace(pattern);
    const Box tile = TileOf(chain, box, ownStyle, context);
    const Matrix transform = TemplateTransform(chain, Attr::PatternTransform, true, context);
    const std::optional<Matrix> inverse = Inverse(transform);
    if (!(tile.Width() > 0 && tile.Height() > 0) || !inverse) return;
    Path outline;
    for (const Point corner : {Point{box.left, box.top}, Point{box.right, box.top},
                               Point{box.right, box.bottom}, Point{box.left, box.bottom}}) {
        outline.IsEmpty() ? outline.MoveTo(corner) : outline.LineTo(corner);
    }
    const TileRange range = TilesOver(BoxOf(outline, *inverse), tile);
    if (!(range.Count() <= kMaximumTiles)) {
        m_findings.Add(Rule::PatternSize, area.origin->offset);
        return;
    }
    const Reference reference{&pattern, context.references};
    const ContextPointer content = ContentContext(*source, context);
    content->references = &reference;
    Path clip = Rewound({area.path, area.fillRule}, m_scene->Tolerance() / 4);
    clip.Transform(area.matrix);
    content->clip =
        AddClip(std::move(clip), context.clip, IsUprightRectangle(area.path) && area.matrix == Matrix{});
    if (alpha < 1) EnterGroup(*area.origin, alpha, *content);
    const std::optional<Box> viewBox = ReadViewBox(chain.Get(Attr::ViewBox));
    const bool isBoxContent = chain.Get(Attr::PatternContentUnits) == "objectBoundingBox";
    for (double y = range.firstY; y <= range.lastY; ++y) {
        for (double x = range.firstX; x <= range.lastX; ++x) {
            Context instance = *content;
            const Box shown = Box::OfSize(0, 0, tile.Width(), tile.Height());
            instance.matrix = area.matrix * transform *
                              Matrix::Translation(tile.left + x * tile.Width(), tile.top + y * tile.Height());
            if (!instance.style.isOverflowVisible) {
                instance.clip = AddRectangleClip(shown, instance.matrix, instance.clip);
            }
            if (viewBox) {
                const AspectRatio ratio = ReadAspectRatio(chain.Get(Attr::PreserveAspectRatio));
                instance.matrix = instance.matrix * FitViewBox(*viewBox, shown, ratio);
            } else if (isBoxContent) {
                instance.matrix = instance.matrix * Matrix::Scaling(box.Width(), box.Height());
            }
            VisitChildren(*source, instance);
        }
    }
}

} // namespace ozm::conform
