#pragma once

#include "picture/pixel_rows.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ozm::tool {

/// The different pixels of a picture, numbered in the order in which they were first seen.
class Palette {
public:
    static constexpr size_t kCapacity = 256;

    /// Writes the number of each of `count` pixels, a byte each. False when there would be more different
    /// pixels than the capacity; `numbers` is then half written.
    bool NumberRow(const uint8_t* pixels, size_t count, uint8_t* numbers);

    size_t Count() const { return m_count; }
    /// The pixel with a number, as `LoadPixel` gave it.
    uint32_t PixelAt(size_t number) const { return m_pixels[number]; }

private:
    // Open addressing with linear probing, at most a quarter full.
    static constexpr size_t kSlotBits = 10;
    static constexpr uint16_t kFree = 0xFFFF;

    struct Slot {
        uint32_t pixel;
        uint16_t number = kFree;
    };

    std::optional<uint8_t> NumberOf(uint32_t pixel);

    std::array<Slot, size_t{1} << kSlotBits> m_slots;
    std::array<uint32_t, kCapacity> m_pixels;
    size_t m_count = 0;
};

} // namespace ozm::tool
