// The areas that shapes paint, in the drawing's coordinates.
#pragma once

#include "scene/scene.h"

#include <vector>

namespace ozm::conform {

/// True when the areas of so many shapes may be combined with each other in time.
bool CanCombine(const std::vector<Shape>& shapes);

/// The smallest box around what a shape paints, clips aside.
Box PaintedBox(const Shape& shape);

/// True when nothing shows through the shape where it paints.
bool IsOpaque(const Shape& shape);

/// What the fill covers, cut to the clips, under the nonzero rule.
Path FillArea(const Shape& shape, double tolerance);
/// What the stroke covers, likewise.
Path StrokeArea(const Shape& shape, double tolerance);
/// What both cover together.
Path PaintedArea(const Shape& shape, double tolerance);

/// The outline of a shape's stroke in the path's coordinates, dashes included; the findings of a stroke with
/// too many dashes are left to the caller, for which it is solid.
Path StrokeOutline(const Shape& shape, double tolerance);

/// The shape with another path, in the drawing's coordinates, that is filled with one paint.
Shape FilledWith(const Shape& shape, Path path, const Paint& paint);

} // namespace ozm::conform
