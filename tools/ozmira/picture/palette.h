#pragma once

#include "picture/pixel_rows.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ozm::tool {

/// The distinct pixels of a picture, in the order in which they first occur.
class Palette {
public:
    static constexpr size_t kCapacity = 256;

    /// Writes the palette indices of `count` pixels, one byte each. Returns false if there are more distinct
    /// pixels than the capacity; `indices` is then partly written.
    bool IndexRow(const uint8_t* pixels, size_t count, uint8_t* indices);

    size_t Count() const { return m_count; }
    /// The pixel at an index, as `LoadPixel` returns it.
    uint32_t PixelAt(size_t index) const { return m_pixels[index]; }

private:
    // Open addressing with linear probing, at most a quarter full.
    static constexpr size_t kSlotBits = 10;
    static constexpr uint16_t kFree = 0xFFFF;

    struct Slot {
        uint32_t pixel;
        uint16_t index = kFree;
    };

    std::optional<uint8_t> IndexOf(uint32_t pixel);

    std::array<Slot, size_t{1} << kSlotBits> m_slots;
    std::array<uint32_t, kCapacity> m_pixels;
    size_t m_count = 0;
};

} // namespace ozm::tool
