// A module that holds the parser, the renderer and the drawing library, as a plug-in of a larger program
// does.
#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/SVG/ozmSVGParser.h>

/// True when the text could be drawn.
extern "C" [[gnu::visibility("default")]] bool ParseAndDraw(const char* text) {
    const auto document = ozm::SVGParser().CreateDocumentWithSVGData(text);
    ozm::CoreGraphicsRenderer renderer;
    renderer.SetDocument(document.get());
    const CGImageRef image = renderer.createCGImageFitToSize({0, 0}, 1, ozm::kRenderingStateDefault, nullptr);
    CGImageRelease(image);
    return image != nullptr;
}
