#pragma once

#include "picture/pixel_rows.h"

#include <cstddef>
#include <cstdint>

namespace ozm::tool {

/// How far two pictures are apart, in steps of eight-bit components.
struct PictureDifference {
    double mean = 0; ///< Mean absolute difference of all premultiplied components, alpha among them; 0...255.
    uint8_t largest = 0;   ///< Largest difference of a component.
    size_t pixelCount = 0; ///< Number of pixels that differ.
};

/// Compares two pictures of one size.
PictureDifference ComparePixels(const PixelRows& one, const PixelRows& other);

} // namespace ozm::tool
