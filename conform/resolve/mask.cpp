// Masks that amount to a clip path and an opacity.
#include "base/limits.h"
#include "geometry/area.h"
#include "resolve/walker.h"
#include "split/areas.h"
#include "split/splitter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace ozm::conform {
namespace {

/// How much a mask lets through in one place: 0...1.
double LuminanceOf(const Color& color) {
    return (0.2125 * color.r + 0.7154 * color.g + 0.0721 * color.b) / 255;
}

/// The areas in which a mask lets the same share through.
class MaskAreas {
public:
    explicit MaskAreas(double tolerance) : m_tolerance(tolerance) {}

    /// Paints over everything under the area: a share of `value` with this alpha.
    void Paint(const Path& area, double value, double alpha) {
        std::vector<MaskLevel> levels;
        Path rest = area;
        for (MaskLevel& level : m_levels) {
            Path both = Combine(AreaOperation::Intersection, {level.area}, {area}, m_tolerance);
            if (both.IsEmpty()) {
                Add(levels, std::move(level.area), level.share);
                continue;
            }
            rest = Combine(AreaOperation::Difference, {rest}, {level.area}, m_tolerance);
            Add(levels, Combine(AreaOperation::Difference, {level.area}, {area}, m_tolerance), level.share);
            Add(levels, std::move(both), value * alpha + level.share * (1 - alpha));
        }
        Add(levels, std::move(rest), value * alpha);
        m_levels = std::move(levels);
    }

    std::vector<MaskLevel>& Levels() { return m_levels; }

private:
    void Add(std::vector<MaskLevel>& levels, Path area, double share) {
        // What is not seen counts as nothing, which is what is where nothing was painted.
        constexpr double kUnseen = 0.002;
        if (area.IsEmpty() || share < kUnseen) return;
        if (share > 1 - kUnseen) share = 1;
        for (MaskLevel& level : levels) {
            if (std::abs(level.share - share) > kUnseen) continue;
            level.area = Combine(AreaOperation::Union, {level.area}, {area}, m_tolerance);
            return;
        }
        levels.push_back({std::move(area), share});
    }

    double m_tolerance;
    std::vector<MaskLevel> m_levels;
};

/// Whether the coordinates of a mask's region, or of its content, are those of the masked element.
bool IsUserSpace(const Node& mask) { return mask.Get(Attr::MaskUnits) == "userSpaceOnUse"; }
bool HasBoxContent(const Node& mask) { return mask.Get(Attr::MaskContentUnits) == "objectBoundingBox"; }

/// The region outside of which a mask hides everything, in the coordinates of the masked element with this
/// box.
Box RegionOf(const Node& mask, const Box& box, const Context& context) {
    const bool isUserSpace = IsUserSpace(mask);
    const auto length = [&](Attr attr, double percent, double whole) {
        const CssLength read = ReadLength(mask.Get(attr)).value_or(CssLength{percent, Unit::Percent});
        return Resolve(read, {isUserSpace ? whole : 1, context.style.fontSize, context.style.rootFontSize});
    };
    const Box region = Box::OfSize(
        length(Attr::X, -10, context.viewWidth), length(Attr::Y, -10, context.viewHeight),
        length(Attr::Width, 120, context.viewWidth), length(Attr::Height, 120, context.viewHeight));
    if (isUserSpace) return region;
    return Box::OfSize(box.left + region.left * box.Width(), box.top + region.top * box.Height(),
                       region.Width() * box.Width(), region.Height() * box.Height());
}

/// Paints the shapes of a mask; false when what they let through cannot be written as areas.
bool PaintMask(const std::vector<Shape>& shapes, bool isAlpha, double tolerance, MaskAreas& areas) {
    if (!CanCombine(shapes)) return false;
    for (const Shape& shape : shapes) {
        for (const bool isFill : {true, false}) {
            const Paint& paint = isFill ? shape.fill : shape.stroke;
            if (!paint) continue;
            if (paint.kind == Paint::Kind::Gradient || areas.Levels().size() > kMaximumMaskLevels)
                return false;
            const Path area = isFill ? FillArea(shape, tolerance) : StrokeArea(shape, tolerance);
            areas.Paint(area, isAlpha ? 1 : LuminanceOf(paint.color), paint.color.alpha * shape.opacity);
        }
    }
    return true;
}

} // namespace

std::optional<double> Walker::ApplyMask(const Node& mask, const Node& node, Context& context) {
    if (context.IsFollowing(mask)) {
        m_findings.Add(Rule::ReferenceCycle, node.offset, mask.Get(Attr::Id));
        return {};
    }
    if (++m_maskCount > kMaximumMasks) {
        m_findings.Add(Rule::TooLarge, node.offset);
        return {};
    }
    const Box box = ObjectBox(node, context);
    const bool needsBox = !IsUserSpace(mask) || HasBoxContent(mask);
    if (needsBox && !(box.Width() > 0 && box.Height() > 0)) return 1;
    const Box region = RegionOf(mask, box, context);
    if (!(region.Width() > 0 && region.Height() > 0)) return {};

    const Reference reference{&mask, context.references};
    const ContextPointer content = ContentContext(mask, context);
    content->references = &reference;
    content->colorMatrix = {};
    const std::optional<double> outerShare = ApplyOuterMask(content->style.mask, node, reference, context);
    if (!outerShare) return {};
    Group group;
    content->out = &group;
    if (HasBoxContent(mask)) {
        content->matrix = content->matrix * Matrix{box.Width(), 0, 0, box.Height(), box.left, box.top};
    }
    VisitChildren(mask, *content);

    const double tolerance = m_scene->Tolerance() / 4;
    MaskAreas areas(tolerance);
    const std::vector<Shape> shapes = Splitter(*m_scene, m_findings).Split(group);
    if (!PaintMask(shapes, content->style.isAlphaMask, tolerance, areas)) {
        m_findings.Add(Rule::MaskShading, node.offset);
        return 1;
    }
    const std::optional<double> share = CutToMask(std::move(areas.Levels()), region, node, context);
    return share ? std::optional(*share * *outerShare) : std::nullopt;
}

std::optional<double> Walker::ApplyOuterMask(const ReferenceValue& outer, const Node& node,
                                             const Reference& reference, Context& context) {
    const Node* const target =
        outer.kind == ReferenceValue::Kind::Local ? m_document.FindById(outer.id) : nullptr;
    if (!target || target->tag != Tag::Mask) return 1;
    const Reference* const references = std::exchange(context.references, &reference);
    const std::optional<double> share = ApplyMask(*target, node, context);
    context.references = references;
    return share;
}

std::optional<double> Walker::CutToMask(std::vector<MaskLevel> levels, const Box& region, const Node& node,
                                        Context& context) {
    const double tolerance = m_scene->Tolerance() / 4;
    const Path outline = Transformed(
        PathOf(Rectangle{region.left, region.top, region.Width(), region.Height(), 0, 0}), context.matrix);
    for (MaskLevel& level : levels) {
        level.area = Combine(AreaOperation::Intersection, {level.area}, {outline}, tolerance);
    }
    std::erase_if(levels, [](const MaskLevel& level) { return level.area.IsEmpty(); });
    if (levels.empty()) return {};
    if (levels.size() > 1) {
        EnterGroup(node, 1, context);
        context.out->mask = std::move(levels);
        return 1;
    }
    Path& shown = levels.front().area;
    const bool isRectangle = IsUprightRectangle(shown);
    context.clip = AddClip(std::move(shown), context.clip, isRectangle);
    return levels.front().share;
}

} // namespace ozm::conform
