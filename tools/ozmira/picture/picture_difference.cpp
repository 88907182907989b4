#include "picture/picture_difference.h"

#include <algorithm>
#include <cstdlib>

namespace ozm::tool {

PictureDifference ComparePixels(const PixelRows& one, const PixelRows& other) {
    PictureDifference difference;
    uint64_t sum = 0;
    for (size_t y = 0; y < one.height; ++y) {
        const uint8_t *a = one.Row(y), *b = other.Row(y);
        for (size_t x = 0; x < one.width; ++x, a += 4, b += 4) {
            if (LoadPixel(a) == LoadPixel(b)) continue;
            ++difference.pixelCount;
            for (size_t c = 0; c < 4; ++c) {
                const auto distance = static_cast<uint8_t>(std::abs(a[c] - b[c]));
                difference.largest = std::max(difference.largest, distance);
                sum += distance;
            }
        }
    }
    if (sum > 0)
        difference.mean = static_cast<double>(sum) / (4.0 * static_cast<double>(one.width * one.height));
    return difference;
}

} // namespace ozm::tool
