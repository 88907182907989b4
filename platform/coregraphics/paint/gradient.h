// Gradients, ready to be looked up.
#pragma once

#include "values/color.h"

#include <CoreGraphics/CGGradient.h>

#include <vector>

namespace ozcg {

/// Enough for neighbouring entries to differ by less than a level in nearly all gradients.
inline constexpr size_t kGradientTableSize = 1024;

struct GradientStop {
    double location; // 0...1
    Rgba color;
};

} // namespace ozcg

struct CGGradient final : ozcg::Object {
    /// Sorts the stops by location, equal ones in the given order. There must be one at least.
    explicit CGGradient(std::vector<ozcg::GradientStop> stops) noexcept;

    /// Colours at i / (kGradientTableSize - 1), premultiplied, bytes R, G, B, A in memory. The first and the
    /// last entry are exactly the first and the last stop, whatever their locations.
    alignas(64) uint32_t table[ozcg::kGradientTableSize];
};
