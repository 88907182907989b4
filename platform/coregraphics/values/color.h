// Colours, and their way into pixels.
#pragma once

#include "base/ref.h"
#include "values/color_space.h"

#include <CoreGraphics/CGColor.h>

#include <array>
#include <bit>
#include <cstdint>
#include <span>

namespace ozcg {

/// Device RGB with alpha, not premultiplied. Components may lie outside 0...1; painting clamps them.
struct Rgba {
    double r = 0;
    double g = 0;
    double b = 0;
    double a = 1;
};

/// Converts a space's components, followed by alpha, to device RGB.
Rgba rgbaFromComponents(const CGColorSpace& space, const CGFloat* components) noexcept;

/// The pixel (bytes R, G, B, A in memory) of a colour whose alpha is multiplied by `alpha`: clamped,
/// premultiplied and rounded once.
uint32_t premultipliedPixel(const Rgba& color, double alpha = 1) noexcept;

static_assert(std::endian::native == std::endian::little, "pixels are taken for little-endian words");

/// The pixel whose bytes in memory are r, g, b, a.
constexpr uint32_t pixelOf(uint32_t r, uint32_t g, uint32_t b, uint32_t a) noexcept {
    return r | g << 8 | b << 16 | a << 24;
}

/// The greatest number of components of a colour: three and alpha.
inline constexpr size_t kMaxColorComponents = 4;

} // namespace ozcg

/// A colour: a space and its components, with alpha last.
struct CGColor final : ozcg::Object {
    /// Copies the components of `space` and alpha.
    CGColor(CGColorSpace* colorSpace, const CGFloat* values) noexcept;
    CGColor(const CGColor& other, CGFloat alpha) noexcept;

    size_t count() const noexcept { return space->components() + 1; }
    ozcg::Rgba rgba() const noexcept { return ozcg::rgbaFromComponents(*space, components.data()); }
    bool isEqualTo(const Object& other) const noexcept override;

    const ozcg::Ref<CGColorSpace> space;
    std::array<CGFloat, ozcg::kMaxColorComponents> components{}; // set once, by the constructor
};
