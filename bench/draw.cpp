#include "draw.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/ozmRenderingState.h>

#include <cstring>

namespace bench {

CGContextRef CreateContext(unsigned size, void* argb) {
    const size_t rowBytes = size_t{size} * 4;
    std::memset(argb, 0, rowBytes * size);

    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    CGContextRef context =
        CGBitmapContextCreate(argb, size, size, 8, rowBytes, space, kCGImageAlphaPremultipliedFirst);
    CGColorSpaceRelease(space);
    CGContextTranslateCTM(context, 0, size);
    CGContextScaleCTM(context, 1, -1);
    return context;
}

bool DrawIntoPixels(ozm::Document& document, unsigned size, void* argb) {
    if (document.elements.empty()) return false;
    CGContextRef context = CreateContext(size, argb);
    if (!context) return false;

    // Each drawing gets a new renderer, as in an application that draws an icon once and keeps the image.
    ozm::CoreGraphicsRenderer renderer;
    renderer.SetDocument(&document);
    const CGFloat side = size;
    renderer.Render(CGRectMake(0, 0, side, side), 1, ozm::kRenderingStateDefault, context);
    CGContextRelease(context);
    return true;
}

} // namespace bench
