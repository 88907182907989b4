#include "picture/png_decoder.h"

#include "base/errors.h"
#include "base/text.h"
#include "base/tool_limits.h"

#include <spng.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>

namespace ozm::tool {
namespace {

struct ReleaseContext {
    void operator()(spng_ctx* context) const { spng_ctx_free(context); }
};
using Context = std::unique_ptr<spng_ctx, ReleaseContext>;

/// Throws if libspng has met a problem.
void Check(int result) {
    if (result == SPNG_EMEM) throw std::bad_alloc();
    if (result != SPNG_OK)
        throw FileError("not a sound PNG file: " + std::string(spng_strerror(result)) + "; write it anew");
}

Context Open(std::string_view file) {
    Context context(spng_ctx_new(0));
    if (!context) throw std::bad_alloc();
    constexpr auto kSide = static_cast<uint32_t>(kMaximumSide);
    Check(spng_set_image_limits(context.get(), kSide, kSide));
    Check(spng_set_png_buffer(context.get(), file.data(), file.size()));
    return context;
}

PictureSize ReadSize(const Context& context) {
    spng_ihdr header{};
    Check(spng_get_ihdr(context.get(), &header));
    const PictureSize size{header.width, header.height};
    if (size.PixelCount() > kMaximumPixels) {
        throw FileError("has more than " + FormatCount(static_cast<uint64_t>(kMaximumPixels)) +
                        " pixels, the most that are read; compare smaller pictures");
    }
    return size;
}

uint8_t Premultiply(uint8_t component, uint8_t alpha) {
    return static_cast<uint8_t>((component * alpha + 127) / 255);
}

/// Converts R G B A that is not premultiplied, in place.
void ConvertToPremultipliedARGB(std::vector<uint8_t>& bytes) {
    for (size_t i = 0; i < bytes.size(); i += 4) {
        uint8_t* const pixel = &bytes[i];
        const uint8_t alpha = pixel[3];
        for (size_t c = 3; c > 0; --c) pixel[c] = Premultiply(pixel[c - 1], alpha);
        pixel[0] = alpha;
    }
}

} // namespace

PictureSize SizeOfPNG(std::string_view file) { return ReadSize(Open(file)); }

DecodedPicture DecodePNG(std::string_view file) {
    const Context context = Open(file);
    const auto [width, height] = ReadSize(context);
    DecodedPicture picture{width, height, {}};
    size_t size = 0;
    Check(spng_decoded_image_size(context.get(), SPNG_FMT_RGBA8, &size));
    picture.bytes.resize(size);
    Check(spng_decode_image(context.get(), picture.bytes.data(), size, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS));
    ConvertToPremultipliedARGB(picture.bytes);
    return picture;
}

} // namespace ozm::tool
