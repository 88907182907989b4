// Any text that is cheap enough to draw must yield premultiplied pixels.
#include "require.h"

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/ozmDrawingCost.h>
#include <Ozmira/ozmLimits.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

/// The renderer follows references unguarded, so drawings with cycles, and those that take too long, are
/// skipped.
bool IsCheap(const ozm::Document& document) {
    const ozm::DrawingCost cost = ozm::MeasureDrawing(document);
    return cost.cycle == ozm::kNoElement && cost.elements <= 1'000 && cost.segments <= 20'000 &&
           cost.depth <= ozm::kMaximumNestingDepth;
}

/// No component of a premultiplied pixel exceeds its alpha, which comes first.
void CheckPixels(CGImageRef image) {
    const CFDataRef pixels = CGDataProviderCopyData(CGImageGetDataProvider(image));
    Require(pixels != nullptr);
    const UInt8* const bytes = CFDataGetBytePtr(pixels);
    for (CFIndex i = 0; i + 3 < CFDataGetLength(pixels); i += 4) {
        for (CFIndex component = 1; component <= 3; ++component) Require(bytes[i + component] <= bytes[i]);
    }
    CFRelease(pixels);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto document = ozm::SVGParser().CreateDocumentWithSVGData(text.c_str());
    if (!IsCheap(*document)) return 0;

    ozm::CoreGraphicsRenderer renderer;
    renderer.SetDocument(document.get());
    const CGSize wanted = CGSizeMake(64, 64);
    // A document with a negative side can result in an image of any size.
    const CGSize pixels = renderer.imageSizeFitToSize(wanted, 1);
    if (pixels.width * pixels.height > 1e6) return 0;
    const CGImageRef image = renderer.createCGImageFitToSize(wanted, 1, ozm::kRenderingStateDefault, nullptr);
    if (!image) return 0;
    CheckPixels(image);
    CGImageRelease(image);
    return 0;
}
