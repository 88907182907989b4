#include "files/gzip.h"

#include "base/errors.h"
#include "base/text.h"

#include <algorithm>
#include <memory>
#include <new>

#include <libdeflate.h>

namespace ozm::tool {
namespace {

/// The best that libdeflate has; drawings are small.
constexpr int kCompressionLevel = 12;

struct Release {
    void operator()(libdeflate_decompressor* decompressor) const {
        libdeflate_free_decompressor(decompressor);
    }
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

} // namespace

bool IsGzip(std::string_view bytes) { return bytes.starts_with("\x1F\x8B"); }

std::string UnpackGzip(std::string_view bytes, size_t limit) {
    const std::unique_ptr<libdeflate_decompressor, Release> decompressor(libdeflate_alloc_decompressor());
    if (!decompressor) throw std::bad_alloc();
    // Text rarely shrinks to less than a quarter.
    std::string text(std::min(limit, 4 * bytes.size()) + 1, '\0');
    size_t used = 0;
    while (!bytes.empty()) {
        size_t taken = 0, made = 0;
        const libdeflate_result result =
            libdeflate_gzip_decompress_ex(decompressor.get(), bytes.data(), bytes.size(), text.data() + used,
                                          text.size() - used, &taken, &made);
        if (result == LIBDEFLATE_SUCCESS) {
            used += made;
            bytes.remove_prefix(taken);
        } else if (result != LIBDEFLATE_INSUFFICIENT_SPACE) {
            throw FileError("compressed, and damaged; fetch or export it again");
        }
        if (used > limit || (result != LIBDEFLATE_SUCCESS && text.size() > limit)) {
            throw FileError("larger than " + FormatCount(limit >> 20) +
                            " MB once it is unpacked, the most that is read; split the drawing");
        }
        if (result != LIBDEFLATE_SUCCESS) text.resize(std::min(limit + 1, 2 * text.size()));
    }
    text.resize(used);
    return text;
}

std::vector<uint8_t> PackGzip(std::string_view text) {
    const std::unique_ptr<libdeflate_compressor, Release> compressor(
        libdeflate_alloc_compressor(kCompressionLevel));
    if (!compressor) throw std::bad_alloc();
    std::vector<uint8_t> bytes(libdeflate_gzip_compress_bound(compressor.get(), text.size()));
    bytes.resize(
        libdeflate_gzip_compress(compressor.get(), text.data(), text.size(), bytes.data(), bytes.size()));
    return bytes;
}

} // namespace ozm::tool
