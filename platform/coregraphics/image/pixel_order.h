// The orders of a pixel's four bytes in memory.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ozcg {

enum class PixelOrder : uint8_t { rgba, bgra, argb };

/// The byte index, 0...3, of each component of a pixel.
struct PixelOffsets {
    uint8_t r;
    uint8_t g;
    uint8_t b;
    uint8_t a;
};

constexpr PixelOffsets offsetsOf(PixelOrder order) noexcept {
    switch (order) {
    case PixelOrder::rgba: return {0, 1, 2, 3};
    case PixelOrder::bgra: return {2, 1, 0, 3};
    case PixelOrder::argb: return {1, 2, 3, 0};
    }
    return {0, 1, 2, 3};
}

/// Reorders a pixel, a little-endian word with the bytes R, G, B, A in memory.
constexpr uint32_t reordered(uint32_t rgba, PixelOrder order) noexcept {
    switch (order) {
    case PixelOrder::rgba: return rgba;
    case PixelOrder::bgra: return (rgba & 0xFF00FF00u) | ((rgba & 0xFFu) << 16) | ((rgba >> 16) & 0xFFu);
    case PixelOrder::argb: return (rgba << 8) | (rgba >> 24);
    }
    return rgba;
}

} // namespace ozcg
