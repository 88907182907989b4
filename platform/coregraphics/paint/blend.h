// Compositing of rows of premultiplied 8-bit pixels in every blend mode.
#pragma once

#include "image/pixel_order.h"

#include <CoreGraphics/CGContext.h>

namespace ozcg {

/// Blends `src` (bytes R, G, B, A in memory) with `dst` (bytes in the given order), both premultiplied, and
/// writes the result to `dst`, weighted against the old pixels by `coverage` (255: the result alone). Unknown
/// modes count as normal. Alpha is taken to be 1 where `dst` is opaque, whatever it holds. Every component is
/// rounded to nearest and does not exceed alpha. `src` may be overwritten.
void blendRow(uint8_t* dst, uint32_t* src, const uint8_t* coverage, size_t n, CGBlendMode mode,
              PixelOrder order, bool isOpaque) noexcept;

} // namespace ozcg
