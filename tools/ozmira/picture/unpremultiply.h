#pragma once

#include <cstddef>
#include <cstdint>

namespace ozm::tool {

/// Converts premultiplied A R G B pixels to R G B A that is not premultiplied, rounding each component to the
/// nearest value. A component above its alpha, which drawing never produces, becomes 255.
void UnpremultiplyToRGBA(const uint8_t* argb, uint8_t* rgba, size_t count);

} // namespace ozm::tool
