#pragma once

#include "geometry/matrix.h"
#include "scene/scene.h"
#include "style/color_matrix.h"
#include "style/computed_style.h"
#include "subset/ozmira_style.h"

#include <cstdint>
#include <optional>

namespace ozm::conform {

/// The elements that are being followed through references, the innermost first.
struct Reference {
    const Node* node;
    const Reference* outer;
};

/// What `context-fill` and `context-stroke` stand for: the paints of the element that refers to this one.
struct ContextPaints {
    Paint fill, stroke;
    const Node *fillPattern = nullptr, *strokePattern = nullptr; ///< Instead of the paints.
    Matrix matrix; ///< From that element's coordinates, in which patterns lie, to those of the drawing.
};

/// Everything that an element passes on to its children.
struct Context {
    ComputedStyle style;
    Matrix matrix;                            ///< From the element's coordinates to those of the drawing.
    double viewWidth = 100, viewHeight = 100; ///< What percentages are of.
    const Clip* clip = nullptr;
    Group* out = nullptr; ///< Where shapes go.
    const Reference* references = nullptr;
    uint32_t depth = 0;
    /// Ozmira draws this element too, so that the two can be compared. Not set under what a finding already
    /// tells to be left out.
    bool isSeen = false;
    OzmiraStyle ozmira;
    bool isClipContent = false; ///< Within a clip path, where only outlines count.
    ContextPaints contextPaints;
    std::optional<ColorMatrix> colorMatrix; ///< A filter changes every colour in this way.

    Color Recolored(const Color& color) const;
    /// The base of a percentage in neither direction alone.
    double Diagonal() const;
    LengthBase BaseX() const { return {viewWidth, style.fontSize, style.rootFontSize}; }
    LengthBase BaseY() const { return {viewHeight, style.fontSize, style.rootFontSize}; }
    LengthBase BaseDiagonal() const { return {Diagonal(), style.fontSize, style.rootFontSize}; }

    bool IsFollowing(const Node& node) const;
};

} // namespace ozm::conform
