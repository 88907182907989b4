#pragma once

#include "picture/pixel_rows.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ozm::tool {

/// Width and height in pixels.
struct PictureSize {
    size_t width = 0, height = 0;

    bool operator==(const PictureSize&) const = default;
    double PixelCount() const { return static_cast<double>(width) * static_cast<double>(height); }
};

/// A picture that owns its pixels: premultiplied, A R G B, without gaps between rows.
struct DecodedPicture {
    size_t width = 0, height = 0; ///< In pixels.
    std::vector<uint8_t> bytes;

    PixelRows Rows() const { return {bytes.data(), width, height, 4 * width}; }
};

} // namespace ozm::tool
