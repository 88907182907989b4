#include "picture/unpremultiply.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "pixels are handled as little-endian words");

namespace ozm::tool {
namespace {

constexpr unsigned kReciprocalBits = 24;

/// 2^24 / a, rounded up: for dividends below 2^16 and divisors below 2^8 the quotient is then exact (Granlund
/// and Montgomery, Division by Invariant Integers using Multiplication, 1994).
constexpr std::array<uint32_t, 256> kReciprocals = [] {
    std::array<uint32_t, 256> reciprocals{};
    for (uint32_t a = 1; a < 256; ++a) reciprocals[a] = ((1u << kReciprocalBits) + a - 1) / a;
    return reciprocals;
}();

uint32_t Unpremultiply(uint32_t component, uint32_t alpha) {
    const uint64_t dividend = component * 255 + alpha / 2;
    return static_cast<uint32_t>(std::min<uint64_t>(dividend * kReciprocals[alpha] >> kReciprocalBits, 255));
}

/// From A, R, G, B in memory to R, G, B, A.
uint32_t Unpremultiply(uint32_t argb) {
    const uint32_t alpha = argb & 255, rgb = argb >> 8;
    if (alpha == 0) return 0;
    if (alpha == 255) return rgb | alpha << 24;
    return Unpremultiply(rgb & 255, alpha) | Unpremultiply(rgb >> 8 & 255, alpha) << 8 |
           Unpremultiply(rgb >> 16, alpha) << 16 | alpha << 24;
}

} // namespace

void UnpremultiplyToRGBA(const uint8_t* argb, uint8_t* rgba, size_t count) {
    // Most pixels are like the one before, so four are compared with it at once.
    const auto twice = [](uint64_t pixel) { return pixel << 32 | pixel; };
    uint32_t last = 0, result = 0;
    for (size_t i = 0; i < count;) {
        const uint8_t* const in = argb + 4 * i;
        uint8_t* const out = rgba + 4 * i;
        if (i + 4 <= count) {
            uint64_t pixels[2];
            std::memcpy(pixels, in, sizeof(pixels));
            if (((pixels[0] ^ twice(last)) | (pixels[1] ^ twice(last))) == 0) {
                pixels[0] = pixels[1] = twice(result);
                std::memcpy(out, pixels, sizeof(pixels));
                i += 4;
                continue;
            }
        }
        uint32_t pixel;
        std::memcpy(&pixel, in, sizeof(pixel));
        if (pixel != last) result = Unpremultiply(last = pixel);
        std::memcpy(out, &result, sizeof(result));
        ++i;
    }
}

} // namespace ozm::tool
