#pragma once

#include <Ozmira/ozmElement.h>
#include <Ozmira/OzmiraExport.h>
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
/// bound, and caches the clipping paths and gradients created for it, so that drawing again is cheap. Throws
/// only `std::bad_alloc`. Only one thread at a time may use a renderer.
///
/// `use` and `clip-path` references are followed without a check for cycles: a document in which they form
/// one overflows the stack.
class OZM_CXX_EXPORT CoreGraphicsRenderer {
public:
    CoreGraphicsRenderer();
    /// Releases the cached paths and gradients.
    ~CoreGraphicsRenderer();
    CoreGraphicsRenderer(const CoreGraphicsRenderer&) = delete;
    CoreGraphicsRenderer& operator=(const CoreGraphicsRenderer&) = delete;

    /// Binds a document, which everything below except the debug switch requires. Whatever was cached for an
    /// earlier document is dropped without being released, so bind each renderer only once.
    void SetDocument(Document* document);

    /// The document's view box, or its whole size at (0, 0) when the view box is empty. User units.
    CGRect ViewBox() const;
    /// Width and height of the document as written, regardless of their units.
    CGSize ViewPortSize() const;

    /// Whether `Render` draws a green frame around the drawing and a blue one around the target.
    void SetDebugRendering(bool debugRendering) { m_debugRendering = debugRendering; }
    bool DebugRendering() const { return m_debugRendering; }

    /// Sets a function that is called on the drawing thread before each element that is not hidden. Once it
    /// returns true, drawing stops before that element, and no image is created. The function must neither
    /// throw nor call the renderer. An empty function never stops drawing.
    void SetStopRequest(std::function<bool()> stopRequest) { m_stopRequest = std::move(stopRequest); }

    /// The largest size with the document's proportions inside `size`, in points. A component that is not
    /// positive sets no limit; without any limit the result is the document's own size.
    CGSize renderSizeFitToSize(CGSize size) const;
    /// Like `renderSizeFitToSize`, but each component is rounded up to whole pixels at `scale` pixels per
    /// point.
    CGSize imageSizeFitToSize(CGSize size, double scale) const;

    /// Draws the document into a new bitmap of `imageSizeFitToSize(size, scale)`. Null if no bitmap can have
    /// that size, if memory is short, or if drawing was stopped. `error` is never written. The caller owns
    /// the result.
    CGImageRef createCGImageFitToSize(CGSize size, double scale, const RenderingState& initialState,
                                      NSError** error) {
        // Inline, because the mangled name of NSError** depends on the including file's language and memory
        // management.
        (void)error;
        return createCGImage(size, scale, initialState);
    }

    /// Draws the document, fitted and centred, into `rect` of a context whose y axis points down. `scale`, in
    /// pixels per point, only determines the width of the debug frames. Draws nothing if the document has no
    /// size or the context is null.
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
    std::unordered_map<Path*, CGPathRef> m_cgPathCache; ///< Always empty.
    std::unordered_map<const Element*, CGPathRef> m_cgElementPathCache;
    std::unordered_map<const Gradient*, CGGradientRef> m_cgGradientCache;
    CGColorSpaceRef m_colorSpace;
    RenderingStack m_renderingState;
    bool m_debugRendering = false;
    std::function<bool()> m_stopRequest;
    bool m_isStopped = false; ///< Whether the current drawing, or else the last one, was stopped.
    References m_references;
};

/// A gradient of the stops as given, neither sorted nor clamped. Null if CoreGraphics creates none, as for an
/// empty list. The caller owns the result.
OZM_CXX_EXPORT CGGradientRef CGGradientCreateWithGradientStopList(const std::vector<Gradient::Stop>& stops,
                                                                  CGColorSpaceRef colorSpace);

} // namespace ozm
