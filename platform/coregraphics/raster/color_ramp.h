#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ozcg {

/// The positions of a gradient, from `begin` on, along which the colour changes evenly.
struct ColorRamp {
    double begin;
    double fractionPerPosition; ///< Of the change; 0 where the colour is constant.
    std::array<float, 4> color; ///< At `begin`, as R, G, B, A; not premultiplied.
    std::array<float, 4> change;
};

/// Writes the premultiplied colours (bytes R, G, B, A in memory) at positions, which must be finite.
/// Components are limited to 0...1.
void writeRamp(const ColorRamp& ramp, std::span<const double> positions, uint32_t* rgba) noexcept;

} // namespace ozcg
