// Contexts that draw into memory.
#pragma once

#include <CoreGraphics/CGContext.h>

/// Called with the bitmap's memory when its context is destroyed.
typedef void (*CGBitmapContextReleaseDataCallback)(void* releaseInfo, void* data);

CF_EXTERN_C_BEGIN

/// A context over 8-bit premultiplied RGB pixels with alpha: bytes A R G B (kCGImageAlphaPremultipliedFirst),
/// B G R A (the same with kCGBitmapByteOrder32Little) or R G B A (kCGImageAlphaPremultipliedLast). `data` is
/// the caller's memory, used as it is, or NULL for memory of the context's own, which starts transparent.
/// `bytesPerRow` 0 with NULL data lets the context choose. Row 0 is the top; user space has its origin bottom
/// left, y up, one unit per pixel. NULL for a zero, overflowing or absurd size, any other format, and when
/// memory is short. The caller owns the result.
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo);
/// As above; `releaseCallback` (may be NULL) is called with the memory when the context is destroyed.
CGContextRef CGBitmapContextCreateWithData(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                           size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo,
                                           CGBitmapContextReleaseDataCallback releaseCallback,
                                           void* releaseInfo);
/// The pixels; NULL for NULL. Valid until the context draws or is destroyed.
void* CGBitmapContextGetData(CGContextRef context);
/// Pixels per row; 0 for NULL, as with all numbers below.
size_t CGBitmapContextGetWidth(CGContextRef context);
/// Number of rows.
size_t CGBitmapContextGetHeight(CGContextRef context);
/// Always 8.
size_t CGBitmapContextGetBitsPerComponent(CGContextRef context);
/// Always 32.
size_t CGBitmapContextGetBitsPerPixel(CGContextRef context);
/// Distance of two rows in bytes.
size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
/// The space given at creation, borrowed.
CGColorSpaceRef CGBitmapContextGetColorSpace(CGContextRef context);
/// The alpha part of CGBitmapContextGetBitmapInfo.
CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context);
/// Alpha and byte order as given at creation.
CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context);
/// The pixels as they are now; later drawing does not change the image. NULL for NULL and when memory is or
/// has been short: an image holds all that was drawn, so there is none after an operation on the context, or
/// a path that it drew, had to leave something out, nor when the thread has failed to create a path, a
/// gradient, a colour or a colour space since it last made a bitmap context. NULL, too, when drawing was
/// interrupted (OZMInterrupt.h). The caller owns the result.
CGImageRef CGBitmapContextCreateImage(CGContextRef context);

CF_EXTERN_C_END
