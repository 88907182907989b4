#pragma once

#include <cstdint>

namespace ozcg {

/// A premultiplied colour in the order of the bitmap's bytes, and its alpha.
struct SolidPixel {
    uint32_t bytes;
    uint8_t alpha;
};

} // namespace ozcg
