#import <UIKit/UIImage.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <spng.h>

namespace {

constexpr double kPointsPerMetre = 72 / 0.0254;

struct Release {
    void operator()(CGContextRef context) const { CGContextRelease(context); }
    void operator()(spng_ctx* encoder) const { spng_ctx_free(encoder); }
};

/// A context with the image's pixels as premultiplied RGBA in rows without padding; null if there are too
/// many.
std::unique_ptr<CGContext, Release> copyPixels(CGImageRef image) {
    const size_t width = CGImageGetWidth(image);
    const size_t height = CGImageGetHeight(image);
    CGColorSpaceRef rgb = CGColorSpaceCreateDeviceRGB();
    std::unique_ptr<CGContext, Release> context(
        CGBitmapContextCreate(nullptr, width, height, 8, width * 4, rgb, kCGImageAlphaPremultipliedLast));
    CGColorSpaceRelease(rgb);
    CGContextDrawImage(context.get(),
                       CGRectMake(0, 0, static_cast<CGFloat>(width), static_cast<CGFloat>(height)), image);
    return context;
}

void removePremultiplication(uint8_t* pixels, size_t count) {
    for (uint8_t* pixel = pixels; pixel != pixels + count * 4; pixel += 4) {
        const unsigned alpha = pixel[3];
        if (alpha == 0 || alpha == 255) continue;
        for (int i = 0; i < 3; ++i) pixel[i] = static_cast<uint8_t>((pixel[i] * 255u + alpha / 2) / alpha);
    }
}

} // namespace

NSData* UIImagePNGRepresentation(UIImage* image) {
    const auto context = copyPixels(image.CGImage);
    if (!context) return nil;
    const size_t width = CGBitmapContextGetWidth(context.get());
    const size_t height = CGBitmapContextGetHeight(context.get());
    auto* pixels = static_cast<uint8_t*>(CGBitmapContextGetData(context.get()));
    removePremultiplication(pixels, width * height);

    const std::unique_ptr<spng_ctx, Release> encoder(spng_ctx_new(SPNG_CTX_ENCODER));
    if (!encoder) return nil;
    spng_set_option(encoder.get(), SPNG_ENCODE_TO_BUFFER, 1);
    spng_ihdr header{};
    header.width = static_cast<uint32_t>(width);
    header.height = static_cast<uint32_t>(height);
    header.bit_depth = 8;
    header.color_type = SPNG_COLOR_TYPE_TRUECOLOR_ALPHA;
    spng_set_ihdr(encoder.get(), &header);
    const auto pixelsPerMetre =
        static_cast<uint32_t>(std::lround(std::fmin(kPointsPerMetre * image.scale, INT32_MAX)));
    spng_phys resolution{pixelsPerMetre, pixelsPerMetre, 1};
    spng_set_phys(encoder.get(), &resolution);
    if (spng_encode_image(encoder.get(), pixels, width * height * 4, SPNG_FMT_PNG, SPNG_ENCODE_FINALIZE) != 0)
        return nil;

    size_t length = 0;
    int error = 0;
    void* file = spng_get_png_buffer(encoder.get(), &length, &error);
    return file ? [NSData dataWithBytesNoCopy:file length:length freeWhenDone:YES] : nil;
}
