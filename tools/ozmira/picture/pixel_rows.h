#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ozm::tool {

/// A borrowed picture: premultiplied pixels of four bytes, A R G B, the top row first.
struct PixelRows {
    const uint8_t* bytes = nullptr;
    size_t width = 0;
    size_t height = 0;
    size_t bytesPerRow = 0;

    const uint8_t* Row(size_t y) const { return bytes + y * bytesPerRow; }
};

/// The four bytes of a pixel as one value, which is only good for comparing it with others.
inline uint32_t LoadPixel(const uint8_t* pixel) {
    uint32_t value;
    std::memcpy(&value, pixel, sizeof value);
    return value;
}

} // namespace ozm::tool
