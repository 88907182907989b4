#pragma once

#include "resolve/context.h"
#include "style/style_sheets.h"

#include <optional>

namespace ozm::conform {

/// What a shape element draws along, in its own coordinates.
struct Geometry {
    Path path;
    Primitive primitive;
};

/// The value of a geometry attribute, for which a style sheet or `style` may stand in.
std::optional<Length> GeometryLength(const Node& node, Attr attr, StyleSheets& sheets);

/// The outline of a shape; empty when it draws nothing.
Geometry GeometryOf(const Node& node, const Context& context, StyleSheets& sheets);

} // namespace ozm::conform
