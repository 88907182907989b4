#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include <cstdio>

int main() {
    ozm::SVGParser parser;
    auto document = parser.CreateDocumentWithSVGData(
        "<svg width='4' height='2'><rect width='2' height='2' fill='red'/></svg>");

    ozm::CoreGraphicsRenderer renderer;
    renderer.SetDocument(document.get());
    CGImageRef image = renderer.createCGImageFitToSize({8, 0}, 1, ozm::kRenderingStateDefault, nullptr);

    CFDataRef pixels = CGDataProviderCopyData(CGImageGetDataProvider(image)); // Rows of A R G B bytes.
    std::fwrite(CFDataGetBytePtr(pixels), 1, size_t(CFDataGetLength(pixels)), stdout);
    CFRelease(pixels);
    CGImageRelease(image);
}
