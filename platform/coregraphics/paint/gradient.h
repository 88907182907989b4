// Gradients as tables of colours.
#pragma once

#include "values/color.h"

#include <CoreGraphics/CGGradient.h>

#include <vector>

namespace ozcg {

/// Large enough that in nearly all gradients neighbouring entries differ by less than 1 of 255.
inline constexpr size_t kGradientTableSize = 1024;

/// A colour at a location of a gradient.
struct GradientStop {
    double location; // 0...1
    Rgba color;
};

} // namespace ozcg

/// A gradient as a table of colours.
struct CGGradient final : ozcg::Object {
    /// Sorts the stops by location; stops at the same location keep their order. There must be at least one.
    explicit CGGradient(std::vector<ozcg::GradientStop> stops) noexcept;

    /// Colours at i / (kGradientTableSize - 1), premultiplied, bytes R, G, B, A in memory. The first and the
    /// last entry are exactly the first and the last stop, whatever their locations.
    alignas(64) uint32_t table[ozcg::kGradientTableSize];
};
