#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ozm::test {

/// A PNG file as libpng reads it.
struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    std::string format; ///< "1-bit palette", "8-bit RGBA".
    uint32_t pixelsPerMetre = 0;
    std::vector<uint32_t> pixels; ///< 0xRRGGBBAA, the top row first.

    /// "4 x 2".
    std::string Size() const;
    uint32_t At(uint32_t x, uint32_t y) const { return pixels.at(y * width + x); }
};

/// Decodes a file; a picture without pixels, and a test failure, when it is damaged.
Picture DecodePNG(const std::string& file);

} // namespace ozm::test
