// PNG files (Portable Network Graphics, second edition, ISO/IEC 15948:2004).
#pragma once

#include "picture/pixel_rows.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct libdeflate_compressor;

namespace ozm::tool {

/// Encodes PNG files. Reuses its compressor and memory from file to file. Only one thread at a time may use
/// an encoder.
///
/// A picture of at most 256 distinct pixels is written with a palette, in the fewest bits that its indices
/// need. If they need eight and the picture is small and gray, it is written as gray and alpha instead. Any
/// other picture is written as RGBA. No scanline is filtered, because filters make the files of drawings
/// larger, even of those with gradients.
class PNGEncoder {
public:
    PNGEncoder();
    ~PNGEncoder();

    /// Returns a complete file, which stays valid until the next call. `scale` is the number of pixels per
    /// point (1/72 inch), which becomes the resolution. Throws `std::bad_alloc`.
    std::span<const uint8_t> Encode(const PixelRows& pixels, double scale);

private:
    struct Compressor {
        void operator()(libdeflate_compressor* compressor) const;
    };
    /// Memory that only grows and is not initialised.
    class Buffer {
    public:
        uint8_t* Reserve(size_t size);
        const uint8_t* Data() const { return m_bytes.get(); }

    private:
        std::unique_ptr<uint8_t[]> m_bytes;
        size_t m_capacity = 0;
    };

    std::unique_ptr<libdeflate_compressor, Compressor> m_compressor;
    Buffer m_scanlines;
    Buffer m_file;
};

} // namespace ozm::tool
