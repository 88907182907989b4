#include "picture/unpremultiply.h"

#include <algorithm>
#include <array>
#include <cstring>

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

uint8_t Unpremultiply(uint32_t component, uint32_t alpha) {
    const uint64_t dividend = component * 255 + alpha / 2;
    return static_cast<uint8_t>(std::min<uint64_t>(dividend * kReciprocals[alpha] >> kReciprocalBits, 255));
}

} // namespace

void UnpremultiplyToRGBA(const uint8_t* argb, uint8_t* rgba, size_t count) {
    for (const uint8_t* const end = argb + 4 * count; argb != end; argb += 4, rgba += 4) {
        const uint8_t alpha = argb[0];
        if (alpha == 0) {
            std::memset(rgba, 0, 3);
        } else if (alpha == 255) {
            std::memcpy(rgba, argb + 1, 3);
        } else {
            for (size_t i = 0; i < 3; ++i) rgba[i] = Unpremultiply(argb[1 + i], alpha);
        }
        rgba[3] = alpha;
    }
}

} // namespace ozm::tool
