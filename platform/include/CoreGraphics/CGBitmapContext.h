// Contexts that draw into memory.
#pragma once

#include <CoreGraphics/CGContext.h>

/// Called with the bitmap's memory when its context is destroyed.
typedef void (*CGBitmapContextReleaseDataCallback)(void* releaseInfo, void* data);

CF_EXTERN_C_BEGIN

/// A context over 8-bit premultiplied RGB pixels with alpha: bytes A R G B (kCGImageAlphaPremultipliedFirst),
/// B G R A (the same with kCGBitmapByteOrder32Little) or R G B A (kCGImageAlphaPremultipliedLast); or over
/// opaque ones, with kCGImageAlphaNoneSkipFirst and kCGImageAlphaNoneSkipLast in place of these, where the
/// byte for alpha has no meaning. There are no gray and no alpha-only contexts. `data` is the caller's
/// memory, whose pixels are drawn over, or NULL, in which case the context allocates transparent pixels
/// itself, and a `bytesPerRow` of 0 lets it choose the length of rows. Row 0 is the top row. User space has
/// its origin at the bottom left, y pointing up, and one unit per pixel. Returns NULL for a size that is
/// zero, overflows or is absurd, for any other format, and when memory is short. The caller owns the result.
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo);
/// As above; `releaseCallback` (may be NULL) is called with the memory when the context is destroyed.
CGContextRef CGBitmapContextCreateWithData(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                           size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo,
                                           CGBitmapContextReleaseDataCallback releaseCallback,
                                           void* releaseInfo);
/// The pixels, which the caller may read and write as long as the context lives; NULL for NULL and when
/// memory is short.
void* CGBitmapContextGetData(CGContextRef context);
/// Pixels per row; 0 for NULL, as for all numbers below.
size_t CGBitmapContextGetWidth(CGContextRef context);
/// Number of rows.
size_t CGBitmapContextGetHeight(CGContextRef context);
/// Always 8.
size_t CGBitmapContextGetBitsPerComponent(CGContextRef context);
/// Always 32.
size_t CGBitmapContextGetBitsPerPixel(CGContextRef context);
/// Bytes from the start of one row to the start of the next.
size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
/// The space given at creation, borrowed.
CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef context);
/// The alpha part of CGBitmapContextGetBitmapInfo.
CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context);
/// Alpha and byte order as given at creation.
CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context);
/// An image of the pixels as they are now; later drawing does not change it. Returns NULL for NULL and when
/// memory is short. An image always holds everything that was drawn, so the result is also NULL if memory was
/// short earlier: if an operation on the context, or a path that it drew, had to leave something out, or if
/// the context was given NULL in place of an object that the thread had failed to create. The result is NULL
/// as well after drawing was interrupted (OZMInterrupt.h). The caller owns the result.
CGImageRef CGBitmapContextCreateImage(CGContextRef context);

CF_EXTERN_C_END
