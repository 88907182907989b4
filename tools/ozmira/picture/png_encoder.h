// PNG files (Portable Network Graphics, second edition, ISO/IEC 15948:2004).
#pragma once

#include "base/lazy_output.h"
#include "picture/pixel_rows.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct libdeflate_compressor;
struct libdeflate_decompressor;

namespace ozm::tool {

/// Encodes PNG files. Reuses its compressor and memory from file to file. Only one thread at a time may use
/// an encoder.
///
/// A picture of at most 256 distinct pixels is written with a palette, in the fewest bits that its indices
/// need. If they need eight and the picture is small and gray, it is written as gray and alpha instead. Any
/// other picture is written as RGBA. No scanline is filtered, because filters make the files of drawings
/// larger, even of those with gradients.
///
/// `Begin` chooses how to write a picture; then a file can be compared with it, which takes a ninth of the
/// instructions of compressing it.
class PNGEncoder {
public:
    PNGEncoder();
    ~PNGEncoder();

    /// Takes a picture. `scale` is the number of pixels per point (1/72 inch), which becomes the resolution.
    /// Throws `std::bad_alloc`.
    void Begin(const PixelRows& pixels, double scale);
    /// True if all pixels of the picture are clear.
    bool IsBlank() const { return m_isBlank; }
    /// The file of the picture, which is compressed only if it has to be written. A file is the same if it is
    /// what `Encode` returns, apart from how the pixels were compressed. Valid until the next picture begins;
    /// its functions throw `std::bad_alloc`.
    LazyOutput Output();
    /// Returns the complete file of the picture, which stays valid until the next picture begins.
    std::span<const uint8_t> Encode();

private:
    struct Release {
        void operator()(libdeflate_compressor* compressor) const;
        void operator()(libdeflate_decompressor* decompressor) const;
    };
    /// Memory that only grows and is not initialised.
    class Buffer {
    public:
        uint8_t* Reserve(size_t size);
        uint8_t* Data() { return m_bytes.get(); }

    private:
        std::unique_ptr<uint8_t[]> m_bytes;
        size_t m_capacity = 0;
    };

    /// Upper bound of the size of the picture's file, in bytes.
    size_t Bound() const { return m_headSize + m_compressedBound + kTailBound; }
    bool IsSame(std::span<const uint8_t> file);

    /// The size of what the chunk of the pixels has around its content, and of the last chunk.
    static constexpr size_t kTailBound = 24;

    std::unique_ptr<libdeflate_compressor, Release> m_compressor;
    std::unique_ptr<libdeflate_decompressor, Release> m_decompressor;
    Buffer m_scanlines;
    Buffer m_otherScanlines; ///< Of a file that is compared.
    Buffer m_file;           ///< Begins with the chunks before the pixels.
    size_t m_scanlineSize = 0;
    size_t m_headSize = 0; ///< Of the chunks before the pixels.
    size_t m_compressedBound = 0;
    bool m_isBlank = false;
};

} // namespace ozm::tool
