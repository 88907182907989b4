// PNG files (Portable Network Graphics, second edition, ISO/IEC 15948:2004).
#pragma once

#include "picture/pixel_rows.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct libdeflate_compressor;

namespace ozm::tool {

/// Makes PNG files. Keeps the compressor and the memory from file to file; for one thread at a time.
///
/// A picture of at most 256 different pixels is written with a palette, in the fewest bits that hold its
/// numbers, or, when that would be eight and the picture is small and gray, as gray and alpha; any other as
/// RGBA. All are compressed by libdeflate, and without filters, which make drawings larger, even those with
/// gradients.
class PNGEncoder {
public:
    PNGEncoder();
    ~PNGEncoder();

    /// A whole file; it stays valid until the next call. `scale` is the number of pixels per point (1/72
    /// inch), which becomes the resolution. Throws `std::bad_alloc`.
    std::span<const uint8_t> Encode(const PixelRows& pixels, double scale);

private:
    struct Compressor {
        void operator()(libdeflate_compressor* compressor) const;
    };
    /// Memory that grows and is not cleared.
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
