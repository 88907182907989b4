// Arithmetic on fractions of 255.
#pragma once

#include <cstdint>

namespace ozcg {

/// a * b / 255 to the nearest.
constexpr uint8_t multiply255(unsigned a, unsigned b) {
    const unsigned v = a * b + 128;
    return static_cast<uint8_t>((v + (v >> 8)) >> 8);
}

/// The fraction of 255 nearest to `value`, which must lie in 0...1.
constexpr uint8_t to255(double value) { return static_cast<uint8_t>(value * 255 + 0.5); }

} // namespace ozcg
