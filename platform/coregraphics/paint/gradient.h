// Gradients as pieces between which the colour changes evenly.
#pragma once

#include "raster/color_ramp.h"
#include "values/color.h"

#include <CoreGraphics/CGGradient.h>

#include <span>
#include <vector>

namespace ozcg {

/// A colour at a location of a gradient.
struct GradientStop {
    double location; // 0...1
    Rgba color;
};

/// Whether a list of positions only rises, or only falls.
enum class PositionOrder { sorted, any };

} // namespace ozcg

/// A gradient: pieces that cover all positions, from the least to the greatest. Each reaches to where the
/// next begins.
///
/// The first piece lies before position 0, the last one after position 1. They have the colours of the first
/// and the last stop, whatever the locations of these. At the location of several stops the last one counts,
/// but at position 0 the first one.
struct CGGradient final : ozcg::Object {
    /// Sorts the stops by location; stops at the same location keep their order. There must be at least one.
    /// Throws std::bad_alloc.
    explicit CGGradient(std::vector<ozcg::GradientStop> stops);

    /// Writes the premultiplied colours (bytes R, G, B, A in memory) at positions; transparent at NaN, and
    /// beyond the ends except where the options say so.
    void colorsAt(std::span<const double> positions, ozcg::PositionOrder order,
                  CGGradientDrawingOptions options, uint32_t* rgba) const noexcept;

private:
    void appendConstant(double begin, const ozcg::Rgba& color);
    void append(double begin, const ozcg::Rgba& from, const ozcg::Rgba& to, double length);

    std::vector<ozcg::ColorRamp> m_pieces;
};
