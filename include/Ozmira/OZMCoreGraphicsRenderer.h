#pragma once

#include <Ozmira/ozmDocument.h>
#include <Ozmira/ozmReferences.h>
#include <Ozmira/ozmRenderingStack.h>
#include <Ozmira/ozmRenderingState.h>

#include <CoreGraphics/CoreGraphics.h>

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#ifdef __OBJC__
@class NSError;
#else
class NSError;
#endif

namespace ozm {

/// Draws one `Document` through CoreGraphics. Borrows the document, which must not change or move while it is
/// bound, and keeps the clipping paths and gradients built for it, so that drawing again is cheap. Throws
/// nothing but `std::bad_alloc`. Not for use by two threads at once.
///
/// `use` and `clip-path` references are followed without a guard: a document in which they form a cycle
/// recurses until the stack ends.
class CoreGraphicsRenderer {
public:
    CoreGraphicsRenderer();
    /// Releases the cached paths and gradients.
    ~CoreGraphicsRenderer();
    CoreGraphicsRenderer(const CoreGraphicsRenderer&) = delete;
    CoreGraphicsRenderer& operator=(const CoreGraphicsRenderer&) = delete;

    /// Binds a document; everything below but the debug switch needs one. What was cached for the document
    /// before is forgotten without being released: bind a renderer once.
    void SetDocument(Document* document);

    /// The document's view box, or its whole size at (0, 0) when the view box is empty. User units.
    CGRect ViewBox() const;
    /// Width and height of the document as written, whatever their units.
    CGSize ViewPortSize() const;

    /// Whether `Render` draws a green frame around the drawing and a blue one around the target.
    void SetDebugRendering(bool debugRendering) { m_debugRendering = debugRendering; }
    bool DebugRendering() const { return m_debugRendering; }

    /// Gives a function that is asked before each element that is not hidden, on the thread that draws,
    /// whether to stop there. Once it has answered true, nothing more is drawn, and no image comes of it. It
    /// must not throw and not call the renderer. Empty: draw all.
    void SetStopRequest(std::function<bool()> stopRequest) { m_stopRequest = std::move(stopRequest); }

    /// The largest size with the document's proportions inside `size`, in points. A component that is not
    /// positive sets no limit; without any limit the result is the document's own size.
    CGSize renderSizeFitToSize(CGSize size) const;
    /// As above, each component rounded up to whole pixels at `scale` pixels a point.
    CGSize imageSizeFitToSize(CGSize size, double scale) const;

    /// Draws the document into a new bitmap of `imageSizeFitToSize(size, scale)`. Null when that is no
    /// possible bitmap size, when memory is short and when drawing was stopped. `error` is never written. The
    /// caller owns the result.
    CGImageRef createCGImageFitToSize(CGSize size, double scale, const RenderingState& initialState,
                                      NSError** error) {
        // Inline, because the linker's name for NSError** depends on the language and the memory management
        // of the including file.
        (void)error;
        return createCGImage(size, scale, initialState);
    }

    /// Draws the document, fitted and centred, into `rect` of a context whose y axis points down. `scale`
    /// (pixels a point) sets the width of the debug frames only. Draws nothing when the document has no size
    /// and into a null context.
    void Render(CGRect rect, double scale, const RenderingState& initialState, CGContextRef context);

private:
    bool mustStop();
    CGImageRef createCGImage(CGSize size, double scale, const RenderingState& initialState);

    void renderElement(const Element& element, CGContextRef context);
    void clipElement(const Element& element, CGContextRef context);

    CGPathRef cgPathForElement(const Element& element);
    void addCGPathForElement(const Element& element, CGContextRef context);
    CGMutablePathRef createCGPathForPath(const Path& path);
    void addCGPathForPath(const Path& path, CGContextRef context);

    void setRenderState(const RenderingState& state, CGContextRef context);
    void setStyle(const Style& style, CGContextRef context);
    void applyClipPath(const std::string& name, CGContextRef context);
    void paintShape(const Element& element, CGContextRef context);
    void fillWithGradient(const Gradient& gradient, const Element& element, CGContextRef context);
    CGGradientRef cgGradientForGradient(const Gradient& gradient);

    Document* m_document = nullptr;
    std::unordered_map<Path*, CGPathRef> m_cgPathCache; ///< Never filled.
    std::unordered_map<const Element*, CGPathRef> m_cgElementPathCache;
    std::unordered_map<const Gradient*, CGGradientRef> m_cgGradientCache;
    CGColorSpaceRef m_colorSpace;
    RenderingStack m_renderingState;
    bool m_debugRendering = false;
    std::function<bool()> m_stopRequest;
    bool m_isStopped = false; ///< The drawing at hand, or the last one.
    References m_references;
};

/// A gradient of the stops as they stand: neither sorted nor clamped. Null where CoreGraphics makes none, as
/// for an empty list. The caller owns the result.
CGGradientRef CGGradientCreateWithGradientStopList(const std::vector<Gradient::Stop>& stops,
                                                   CGColorSpaceRef colorSpace);

} // namespace ozm
