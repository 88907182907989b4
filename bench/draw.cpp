#include "draw.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/ozmRenderingState.h>

#include <CoreGraphics/CoreGraphics.h>

#include <cstring>

namespace bench {

bool DrawIntoPixels(ozm::Document& document, unsigned size, void* argb) {
    if (document.elements.empty()) return false;
    const size_t rowBytes = size_t{size} * 4;
    std::memset(argb, 0, rowBytes * size);

    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    CGContextRef context =
        CGBitmapContextCreate(argb, size, size, 8, rowBytes, space, kCGImageAlphaPremultipliedFirst);
    CGColorSpaceRelease(space);
    if (!context) return false;
    // The renderer draws with y growing downwards.
    CGContextTranslateCTM(context, 0, size);
    CGContextScaleCTM(context, 1, -1);

    // A renderer of its own for each drawing, as in an application that draws an icon once and keeps the
    // image.
    ozm::CoreGraphicsRenderer renderer;
    renderer.SetDocument(&document);
    const CGFloat side = size;
    renderer.Render(CGRectMake(0, 0, side, side), 1, ozm::kRenderingStateDefault, context);
    CGContextRelease(context);
    return true;
}

} // namespace bench
