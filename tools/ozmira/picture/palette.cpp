#include "picture/palette.h"

namespace ozm::tool {
namespace {

uint64_t LoadPair(const uint8_t* pixels) {
    uint64_t pair;
    std::memcpy(&pair, pixels, sizeof pair);
    return pair;
}

} // namespace

std::optional<uint8_t> Palette::IndexOf(uint32_t pixel) {
    // Multiplicative hashing (Knuth, The Art of Computer Programming, volume 3, section 6.4).
    size_t at = (pixel * uint32_t{2654435761}) >> (32 - kSlotBits);
    while (m_slots[at].index != kFree && m_slots[at].pixel != pixel) at = (at + 1) % m_slots.size();
    Slot& slot = m_slots[at];
    if (slot.index == kFree) {
        if (m_count == kCapacity) return std::nullopt;
        m_pixels[m_count] = pixel;
        slot.pixel = pixel;
        slot.index = static_cast<uint16_t>(m_count++);
    }
    return static_cast<uint8_t>(slot.index);
}

bool Palette::IndexRow(const uint8_t* pixels, size_t count, uint8_t* indices) {
    const uint8_t* const end = pixels + 4 * count;
    while (pixels != end) {
        const uint32_t pixel = LoadPixel(pixels);
        const auto index = IndexOf(pixel);
        if (!index) return false;
        *indices++ = *index;
        pixels += 4;
        // Drawings consist of runs: skip two pixels at a time while a run lasts.
        const uint64_t pair = uint64_t{pixel} << 32 | pixel;
        while (end - pixels >= 8 && LoadPair(pixels) == pair) {
            indices[0] = indices[1] = *index;
            indices += 2;
            pixels += 8;
        }
        if (pixels != end && LoadPixel(pixels) == pixel) {
            *indices++ = *index;
            pixels += 4;
        }
    }
    return true;
}

} // namespace ozm::tool
