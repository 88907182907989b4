// A module that contains the parser, the renderer and the drawing library, like a plug-in of a larger
// program.
#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/SVG/ozmSVGParser.h>

/// Returns whether the text could be drawn.
extern "C" [[gnu::visibility("default")]] bool ParseAndDraw(const char* text) {
    const auto document = ozm::SVGParser().CreateDocumentWithSVGData(text);
    ozm::CoreGraphicsRenderer renderer;
    renderer.SetDocument(document.get());
    const CGImageRef image = renderer.createCGImageFitToSize({0, 0}, 1, ozm::kRenderingStateDefault, nullptr);
    CGImageRelease(image);
    return image != nullptr;
}
