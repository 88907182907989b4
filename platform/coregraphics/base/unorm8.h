// Fractions of 1 in eight bits: 0...255.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ozcg {

/// `value` clamped to 0...1; NaN gives 0.
constexpr double clampedToUnit(double value) noexcept { return value > 0 ? (value < 1 ? value : 1) : 0; }

/// The nearest eight-bit fraction of `value`, which must lie in 0...1.
template <class Float>
constexpr uint8_t unorm8(Float value) noexcept {
    return static_cast<uint8_t>(static_cast<int32_t>(value * 255 + Float(0.5)));
}

/// The product of two eight-bit fractions, rounded to nearest.
constexpr uint8_t multiplyUnorm8(unsigned a, unsigned b) noexcept {
    const unsigned v = a * b + 128;
    return static_cast<uint8_t>((v + (v >> 8)) >> 8);
}

} // namespace ozcg
