#include "split/splitter.h"

#include "base/limits.h"
#include "geometry/area.h"
#include "geometry/dash.h"
#include "geometry/winding.h"
#include "split/areas.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace ozm::conform {
namespace {

bool HasEmptyDash(const std::vector<double>& dashes) {
    for (size_t i = 0; i < dashes.size(); i += 2) {
        if (dashes[i] == 0) return true;
    }
    return false;
}

/// Compares each box with those that a line sweeping over the picture meets at the same time.
bool AnyOverlap(std::vector<Box> boxes) {
    Box whole;
    double widths = 0, heights = 0;
    for (const Box& box : boxes) {
        whole.Add(box);
        widths += box.Width();
        heights += box.Height();
    }
    // The line sweeps along the direction in which the boxes are smaller.
    const bool isAcross = widths * whole.Height() < heights * whole.Width();
    if (!isAcross) {
        for (Box& box : boxes) box = {box.top, box.left, box.bottom, box.right};
    }
    std::sort(boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.left < b.left; });
    std::vector<Box> met;
    for (const Box& box : boxes) {
        std::erase_if(met, [&](const Box& other) { return other.right <= box.left; });
        for (const Box& other : met) {
            if (other.Overlaps(box)) return true;
        }
        met.push_back(box);
    }
    return false;
}

} // namespace

std::vector<Shape> Splitter::Split(Group& group) {
    std::vector<Shape> shapes;
    for (Item& item : group.items) {
        if (Shape* const shape = std::get_if<Shape>(&item)) {
            SplitShape(std::move(*shape), shapes);
        } else {
            Group& inner = *std::get<std::unique_ptr<Group>>(item);
            std::vector<Shape> faded = Split(inner);
            if (!inner.mask.empty()) faded = ApplyMask(inner, faded);
            if (inner.opacity < 1) Fade(inner, faded);
            std::move(faded.begin(), faded.end(), std::back_inserter(shapes));
        }
    }
    group.items.clear();
    return shapes;
}

std::vector<Shape> Splitter::ApplyMask(const Group& group, const std::vector<Shape>& shapes) {
    std::vector<Shape> masked;
    for (const MaskLevel& level : group.mask) {
        std::vector<Shape> part = shapes;
        for (Shape& shape : part) {
            shape.clip =
                &m_scene.clips.emplace_back(Clip{level.area, shape.clip, IsUprightRectangle(level.area)});
        }
        Group share;
        share.opacity = level.share;
        share.origin = group.origin;
        if (level.share < 1) Fade(share, part);
        std::move(part.begin(), part.end(), std::back_inserter(masked));
    }
    return masked;
}

void Splitter::SplitShape(Shape shape, std::vector<Shape>& out) {
    const bool isPlain = shape.fill.kind != Paint::Kind::Gradient &&
                         shape.stroke.kind != Paint::Kind::Gradient && shape.dashes.empty() &&
                         !m_outlineStrokes;
    if (!shape.stroke || isPlain) {
        RewindForGradient(shape);
        out.push_back(std::move(shape));
        return;
    }
    if (shape.fill) {
        Shape fill = shape;
        fill.stroke = {};
        RewindForGradient(fill);
        out.push_back(std::move(fill));
    }
    shape.fill = {};
    SplitStroke(shape, out);
}

void Splitter::RewindForGradient(Shape& shape) const {
    if (shape.fill.kind != Paint::Kind::Gradient || shape.fillRule != FillRule::EvenOdd) return;
    const double tolerance = m_scene.Tolerance() / 4 / std::max(1e-9, MeanScale(shape.matrix));
    if (!RulesAgree(shape.path, tolerance)) shape.path = Rewound({shape.path, shape.fillRule}, tolerance);
    shape.fillRule = FillRule::NonZero;
}

void Splitter::SplitStroke(const Shape& shape, std::vector<Shape>& out) {
    // Square caps turn a dash without length into a square, whose direction no path can tell.
    const bool hasSquares = shape.pen.cap == LineCap::Square && HasEmptyDash(shape.dashes);
    if (shape.stroke.kind == Paint::Kind::Gradient || m_outlineStrokes || hasSquares) {
        m_hasOutlined |= m_outlineStrokes;
        Path outline = Transformed(StrokeOutline(shape, m_scene.Tolerance() / 4), shape.matrix);
        if (!outline.IsEmpty()) out.push_back(FilledWith(shape, std::move(outline), shape.stroke));
        return;
    }
    Shape stroke = shape;
    if (!shape.dashes.empty()) {
        std::optional<Path> dashes = DashesOf(shape.path, shape.dashes, shape.dashPhase, kMaximumDashes);
        if (dashes) {
            stroke.path = std::move(*dashes);
            stroke.primitive = {};
        } else {
            m_findings.Add(Rule::DashCount, shape.origin->offset);
        }
        stroke.dashes.clear();
    }
    if (!stroke.path.IsEmpty()) out.push_back(std::move(stroke));
}

bool Splitter::Overlapping(const std::vector<Shape>& shapes) {
    std::vector<Box> boxes;
    boxes.reserve(shapes.size());
    for (const Shape& shape : shapes) {
        if (shape.fill && shape.stroke) return true;
        boxes.push_back(PaintedBox(shape));
    }
    return AnyOverlap(std::move(boxes));
}

void Splitter::Fade(const Group& group, std::vector<Shape>& shapes) {
    if (Overlapping(shapes)) {
        const bool isShape = group.origin && IsShape(group.origin->tag);
        std::vector<Shape> kept = shapes;
        if (!CanCombine(shapes) || (!CutHidden(shapes) && !Composite(shapes))) {
            if (group.origin) m_findings.Add(Rule::GroupOverlap, group.origin->offset);
            shapes = std::move(kept);
        } else if (group.isSeen) {
            m_findings.Add(isShape ? Rule::ShapeOpacity : Rule::GroupOpacity, group.origin->offset);
        }
    }
    for (Shape& shape : shapes) shape.opacity *= group.opacity;
}

void Splitter::CutOwn(const Shape& shape, const Path& above, std::vector<Shape>& out) {
    const double tolerance = m_scene.Tolerance() / 4;
    const auto cut = [&](const Path& path, const Path& hidden) {
        return hidden.IsEmpty() ? path : Combine(AreaOperation::Difference, {path}, {hidden}, tolerance);
    };
    const auto add = [&](Path path, const Paint& paint) {
        if (path.IsEmpty()) return;
        out.push_back(FilledWith(shape, std::move(path), paint));
        out.back().clip = nullptr;
    };
    Path hidden = above;
    Path stroke;
    if (shape.stroke) {
        const Path whole = StrokeArea(shape, tolerance);
        stroke = cut(whole, above);
        hidden = above.IsEmpty() ? whole : Combine(AreaOperation::Union, {above}, {whole}, tolerance);
    }
    const auto addFill = [&] {
        if (shape.fill) add(cut(FillArea(shape, tolerance), hidden), shape.fill);
    };
    addFill();
    if (shape.stroke) add(std::move(stroke), shape.stroke);
}

bool Splitter::CutHidden(std::vector<Shape>& shapes) {
    const double tolerance = m_scene.Tolerance() / 4;
    std::vector<Box> boxes;
    std::vector<Path> areas;
    for (const Shape& shape : shapes) {
        boxes.push_back(PaintedBox(shape));
        areas.push_back(PaintedArea(shape, tolerance));
    }
    std::vector<Shape> cut;
    for (size_t i = 0; i < shapes.size(); ++i) {
        Path above;
        for (size_t j = i + 1; j < shapes.size(); ++j) {
            if (!boxes[i].Overlaps(boxes[j]) || !Overlap({areas[i]}, {areas[j]}, m_scene.Tolerance()))
                continue;
            if (!IsOpaque(shapes[j])) return false;
            above =
                above.IsEmpty() ? areas[j] : Combine(AreaOperation::Union, {above}, {areas[j]}, tolerance);
        }
        const Shape& shape = shapes[i];
        const bool isSingle = !(shape.fill && shape.stroke);
        if (!isSingle && shape.stroke.color.alpha < 1) return false;
        if (above.IsEmpty() && isSingle) {
            cut.push_back(shape);
        } else {
            CutOwn(shape, above, cut);
        }
    }
    shapes = std::move(cut);
    return true;
}

} // namespace ozm::conform
