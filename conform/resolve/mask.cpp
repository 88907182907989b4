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
    const bool isUserSpace = mask.Get(Attr::MaskUnits) == "userSpaceOnUse";
    const bool isBoxContent = mask.Get(Attr::MaskContentUnits) == "objectBoundingBox";
    if ((!isUserSpace || isBoxContent) && !(box.Width() > 0 && box.Height() > 0)) return 1;
    const auto length = [&](Attr attr, double percent, double whole) {
        const CssLength read = ReadLength(mask.Get(attr)).value_or(CssLength{percent, Unit::Percent});
        return Resolve(read, {isUserSpace ? whole : 1, context.style.fontSize, 16});
    };
    Box region = Box::OfSize(
        length(Attr::X, -10, context.viewWidth), length(Attr::Y, -10, context.viewHeight),
        length(Attr::Width, 120, context.viewWidth), length(Attr::Height, 120, context.viewHeight));
    const Matrix boxMatrix{box.Width(), 0, 0, box.Height(), box.left, box.top};
    if (!isUserSpace) {
        region = Box::OfSize(box.left + region.left * box.Width(), box.top + region.top * box.Height(),
                             region.Width() * box.Width(), region.Height() * box.Height());
    }
    if (!(region.Width() > 0 && region.Height() > 0)) return {};

    const Reference reference{&mask, context.references};
    const ContextPointer content = ContentContext(mask, context);
    content->references = &reference;
    content->colorMatrix = {};
    double share = 1;
    if (const ReferenceValue& outer = content->style.mask; outer.kind == ReferenceValue::Kind::Local) {
        const Node* const target = m_document.FindById(outer.id);
        if (target && target->tag == Tag::Mask) {
            const Reference* const references = context.references;
            context.references = &reference;
            const std::optional<double> outerShare = ApplyMask(*target, node, context);
            context.references = references;
            if (!outerShare) return {};
            share = *outerShare;
        }
    }
    Group group;
    content->out = &group;
    if (isBoxContent) content->matrix = content->matrix * boxMatrix;
    const bool isAlpha = content->style.isAlphaMask;
    VisitChildren(mask, *content);

    const double tolerance = m_scene->Tolerance() / 4;
    MaskAreas areas(tolerance);
    const std::vector<Shape> shapes = Splitter(*m_scene, m_findings).Split(group);
    if (!CanCombine(shapes)) {
        m_findings.Add(Rule::MaskShading, node.offset);
        return 1;
    }
    for (const Shape& shape : shapes) {
        for (const bool isFill : {true, false}) {
            const Paint& paint = isFill ? shape.fill : shape.stroke;
            if (!paint) continue;
            if (paint.kind == Paint::Kind::Gradient || areas.Levels().size() > kMaximumMaskLevels) {
                m_findings.Add(Rule::MaskShading, node.offset);
                return 1;
            }
            const Path area = isFill ? FillArea(shape, tolerance) : StrokeArea(shape, tolerance);
            areas.Paint(area, isAlpha ? 1 : LuminanceOf(paint.color), paint.color.alpha * shape.opacity);
        }
    }
    if (areas.Levels().empty()) return {};
    const Path outline = Transformed(
        PathOf(Rectangle{region.left, region.top, region.Width(), region.Height(), 0, 0}), context.matrix);
    std::vector<MaskLevel>& levels = areas.Levels();
    for (MaskLevel& level : levels) {
        level.area = Combine(AreaOperation::Intersection, {level.area}, {outline}, tolerance);
    }
    std::erase_if(levels, [](const MaskLevel& level) { return level.area.IsEmpty(); });
    if (levels.empty()) return {};
    if (levels.size() > 1) {
        EnterGroup(node, 1, context);
        context.out->mask = std::move(levels);
        return share;
    }
    Path& shown = levels.front().area;
    const bool isRectangle = IsUprightRectangle(shown);
    context.clip = AddClip(std::move(shown), context.clip, isRectangle);
    return share * levels.front().share;
}

} // namespace ozm::conform
