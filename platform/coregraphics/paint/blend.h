// Compositing of rows of premultiplied 8-bit pixels in every blend mode.
#pragma once

#include "image/pixel_order.h"

#include <CoreGraphics/CGContext.h>

namespace ozcg {

/// Mixes `src` (bytes R, G, B, A in memory) into `dst` (bytes in the given order), both premultiplied.
/// `coverage` (255: all) weighs each pixel's result against what was there. Unknown modes count as normal.
/// Every component of the result is the formula's value rounded to the nearest integer, and never greater
/// than its alpha. `src` may be overwritten.
void blendRow(uint8_t* dst, uint32_t* src, const uint8_t* coverage, size_t n, CGBlendMode mode,
              PixelOrder order) noexcept;

} // namespace ozcg
