#pragma once

#include <cstddef>
#include <cstdint>

namespace ozm::tool {

/// Turns premultiplied A R G B pixels into R G B A ones that are not, each component rounded to the nearest.
/// A colour above its alpha, which no drawing makes, becomes 255.
void UnpremultiplyToRGBA(const uint8_t* argb, uint8_t* rgba, size_t count);

} // namespace ozm::tool
