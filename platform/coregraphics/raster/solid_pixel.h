#pragma once

#include <cstdint>

namespace ozcg {

/// A premultiplied colour as the bitmap's bytes hold it, and its alpha.
struct SolidPixel {
    uint32_t bytes;
    uint8_t alpha;
};

} // namespace ozcg
