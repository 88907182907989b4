#include "split/areas.h"

#include "base/limits.h"
#include "geometry/area.h"
#include "geometry/dash.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace ozm::conform {
namespace {

bool IsOpaquePaint(const Paint& paint) {
    if (paint.kind == Paint::Kind::None) return true;
    if (paint.color.alpha < 1) return false;
    if (paint.kind != Paint::Kind::Gradient) return true;
    const std::vector<GradientStop>& stops = paint.gradient->stops;
    return std::all_of(stops.begin(), stops.end(),
                       [](const GradientStop& stop) { return stop.color.alpha >= 1; });
}

Path CutToClips(Path path, const Clip* clip, double tolerance) {
    for (; clip && !path.IsEmpty(); clip = clip->outer) {
        path = Combine(AreaOperation::Intersection, {path}, {clip->path}, tolerance);
    }
    return path;
}

} // namespace

bool CanCombine(const std::vector<Shape>& shapes) {
    size_t segments = 0;
    for (const Shape& shape : shapes) segments += shape.path.Verbs().size();
    return shapes.size() <= kMaximumAreas && segments <= kMaximumAreaSegments;
}

Box PaintedBox(const Shape& shape) {
    Box box;
    if (shape.fill) box = BoxOf(shape.path, shape.matrix);
    if (shape.stroke) box.Add(StrokeBoxOf(shape.path, shape.pen, shape.matrix));
    return box;
}

bool IsOpaque(const Shape& shape) {
    return shape.opacity >= 1 && IsOpaquePaint(shape.fill) && IsOpaquePaint(shape.stroke);
}

Path FillArea(const Shape& shape, double tolerance) {
    const Path path = Transformed(shape.path, shape.matrix);
    return CutToClips(Simplified({path, shape.fillRule}, tolerance), shape.clip, tolerance);
}

Path StrokeOutline(const Shape& shape, double tolerance) {
    const double scale = std::max(1e-9, MeanScale(shape.matrix));
    const std::optional<Path> dashes =
        shape.dashes.empty() ? std::nullopt
                             : DashesOf(shape.path, shape.dashes, shape.dashPhase, kMaximumDashes);
    return OutlineOf(dashes ? *dashes : shape.path, shape.pen, tolerance / scale);
}

Path StrokeArea(const Shape& shape, double tolerance) {
    const Path outline = Transformed(StrokeOutline(shape, tolerance), shape.matrix);
    return CutToClips(Simplified({outline}, tolerance), shape.clip, tolerance);
}

Path PaintedArea(const Shape& shape, double tolerance) {
    if (!shape.stroke) return shape.fill ? FillArea(shape, tolerance) : Path{};
    Path stroke = StrokeArea(shape, tolerance);
    if (!shape.fill) return stroke;
    const Path fill = FillArea(shape, tolerance);
    return Combine(AreaOperation::Union, {fill}, {stroke}, tolerance);
}

Shape FilledWith(const Shape& shape, Path path, const Paint& paint) {
    Shape filled;
    filled.path = std::move(path);
    filled.fill = paint;
    filled.opacity = shape.opacity;
    filled.clip = shape.clip;
    filled.origin = shape.origin;
    return filled;
}

} // namespace ozm::conform
