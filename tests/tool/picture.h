#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ozm::test {

/// A PNG file as decoded by libpng.
struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    std::string format; ///< For example "1-bit palette" or "8-bit RGBA".
    uint32_t pixelsPerMetre = 0;
    std::vector<uint32_t> pixels; ///< 0xRRGGBBAA, not premultiplied, top row first.

    /// Width and height as text, for example "4 x 2".
    std::string Size() const;
    uint32_t At(uint32_t x, uint32_t y) const { return pixels.at(y * width + x); }
};

/// Decodes a file. If it is damaged, fails the test and returns a picture without pixels.
Picture DecodePNG(const std::string& file);

} // namespace ozm::test
