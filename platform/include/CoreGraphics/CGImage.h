// Immutable images with 8 bits per component. Row 0 is the top one.
#pragma once

#include <CoreGraphics/CGColorSpace.h>
#include <CoreGraphics/CGDataProvider.h>
#include <CoreGraphics/CGGeometry.h>

typedef struct CGImage* CGImageRef;

/// Where alpha is in a pixel, and whether the colour components are premultiplied by it.
CF_ENUM(uint32_t, CGImageAlphaInfo){
    kCGImageAlphaNone,               // RGB
    kCGImageAlphaPremultipliedLast,  // RGBA, premultiplied
    kCGImageAlphaPremultipliedFirst, // ARGB, premultiplied
    kCGImageAlphaLast,               // RGBA
    kCGImageAlphaFirst,              // ARGB
    kCGImageAlphaNoneSkipLast,       // RGBX
    kCGImageAlphaNoneSkipFirst,      // XRGB
    kCGImageAlphaOnly                // A
};

CF_ENUM(uint32_t,
        CGImageByteOrderInfo){kCGImageByteOrderMask = 0x7000,      kCGImageByteOrderDefault = 0 << 12,
                              kCGImageByteOrder16Little = 1 << 12, kCGImageByteOrder32Little = 2 << 12,
                              kCGImageByteOrder16Big = 3 << 12,    kCGImageByteOrder32Big = 4 << 12};

CF_ENUM(uint32_t, CGImagePixelFormatInfo){
    kCGImagePixelFormatMask = 0xF0000,      kCGImagePixelFormatPacked = 0 << 16,
    kCGImagePixelFormatRGB555 = 1 << 16,    kCGImagePixelFormatRGB565 = 2 << 16,
    kCGImagePixelFormatRGB101010 = 3 << 16, kCGImagePixelFormatRGBCIF10 = 4 << 16};

/// A CGImageAlphaInfo, a CGImageByteOrderInfo and flags in one number.
CF_OPTIONS(uint32_t, CGBitmapInfo){kCGBitmapAlphaInfoMask = 0x1F,        kCGBitmapFloatInfoMask = 0xF00,
                                   kCGBitmapFloatComponents = (1 << 8),  kCGBitmapByteOrderMask = 0x7000,
                                   kCGBitmapByteOrderDefault = 0 << 12,  kCGBitmapByteOrder16Little = 1 << 12,
                                   kCGBitmapByteOrder32Little = 2 << 12, kCGBitmapByteOrder16Big = 3 << 12,
                                   kCGBitmapByteOrder32Big = 4 << 12};

// The byte order of this machine.
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
#define kCGBitmapByteOrder16Host kCGBitmapByteOrder16Big
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Big
#else
#define kCGBitmapByteOrder16Host kCGBitmapByteOrder16Little
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Little
#endif

CF_EXTERN_C_BEGIN

/// Type id of images.
CFTypeID CGImageGetTypeID(void);
/// An image over a provider's bytes, which are not copied. Formats: 8 bits per component; 32-bit RGB in every
/// alpha layout and both byte orders, 24-bit RGB, 16-bit gray with alpha, 8-bit gray, 8-bit alpha (space
/// NULL). `decode` must be NULL. NULL for anything else, a zero size, rows shorter than their pixels, a
/// provider with too few bytes, and when memory is short. The caller owns the result, as for every Create
/// function below.
CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                         size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
                         CGDataProviderRef provider, const CGFloat* decode, bool shouldInterpolate,
                         CGColorRenderingIntent intent);
/// An image that shares the bytes; NULL for NULL.
CGImageRef CGImageCreateCopy(CGImageRef image);
/// A copy whose components are taken as those of another space, which must have the same number of them;
/// otherwise NULL.
CGImageRef CGImageCreateCopyWithColorSpace(CGImageRef image, CGColorSpaceRef space);
/// The part inside `rect`, sharing the bytes; NULL if nothing is left. `rect` is in pixels, y pointing down
/// from row 0; it is enlarged to whole pixels, then clipped to the image.
CGImageRef CGImageCreateWithImageInRect(CGImageRef image, CGRect rect);
/// Adds a reference and returns the argument, which may be NULL.
CGImageRef CGImageRetain(CGImageRef image);
/// Releases a reference. NULL is ignored.
void CGImageRelease(CGImageRef image);

/// Pixels per row; 0 for NULL, as for all numbers below.
size_t CGImageGetWidth(CGImageRef image);
/// Number of rows.
size_t CGImageGetHeight(CGImageRef image);
/// Always 8.
size_t CGImageGetBitsPerComponent(CGImageRef image);
/// 8, 16, 24 or 32.
size_t CGImageGetBitsPerPixel(CGImageRef image);
/// Bytes from the start of one row to the start of the next.
size_t CGImageGetBytesPerRow(CGImageRef image);
/// The space, borrowed; NULL for alpha-only images.
CGColorSpaceRef CGImageGetColorSpace(CGImageRef image);
/// The alpha part of CGImageGetBitmapInfo.
CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image);
/// A provider of the image's bytes, borrowed; the first byte is the first of row 0.
CGDataProviderRef CGImageGetDataProvider(CGImageRef image);
/// The flag given at creation.
bool CGImageGetShouldInterpolate(CGImageRef image);
/// The intent given at creation.
CGColorRenderingIntent CGImageGetRenderingIntent(CGImageRef image);
/// Alpha, byte order and flags.
CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image);
/// The byte order part of CGImageGetBitmapInfo.
CGImageByteOrderInfo CGImageGetByteOrderInfo(CGImageRef image);
/// The pixel format part of CGImageGetBitmapInfo: always packed.
CGImagePixelFormatInfo CGImageGetPixelFormatInfo(CGImageRef image);

CF_EXTERN_C_END
