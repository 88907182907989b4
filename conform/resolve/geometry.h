#pragma once

#include "geometry/path_reader.h"
#include "resolve/context.h"
#include "style/style_sheets.h"

#include <optional>

namespace ozm::conform {

/// What a shape element draws along, in its own coordinates.
struct Geometry {
    Path path;
    Primitive primitive;
    PathData data; ///< Of a `path`: what else is known about its text.
};

/// The value of a geometry attribute, for which a style sheet or `style` may stand in.
std::optional<CssLength> GeometryLength(const Node& node, Attr attr, StyleSheets& sheets);

/// The declaration of a style sheet or `style` that stands in for the path data of an element; null without.
const Declaration* PathDeclaration(const Node& node, StyleSheets& sheets);

/// The outline of a shape; empty when it draws nothing. Arcs stay within the tolerance.
Geometry GeometryOf(const Node& node, const Context& context, StyleSheets& sheets, double arcTolerance = 0);

} // namespace ozm::conform
