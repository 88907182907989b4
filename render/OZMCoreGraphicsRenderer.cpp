// The renderer's lifetime, and everything around the walk of the element tree: fitting, bitmaps, debug
// frames.

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/OZMFitToSize.h>

#include "state_guard.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <unordered_map>

namespace ozm {
namespace {

constexpr size_t kBytesPerPixel = 4;

struct ContextRelease {
    void operator()(CGContextRef context) const { CGContextRelease(context); }
};

/// The integral part, or nullopt if the size in bytes of a row of that many pixels overflows.
std::optional<size_t> toPixelCount(double pixels) {
    constexpr auto limit = static_cast<double>(SIZE_MAX / kBytesPerPixel);
    if (!(pixels >= 0 && pixels < limit)) return std::nullopt;
    return static_cast<size_t>(pixels);
}

/// Whether one of the gradients could not be built, although it has stops, because memory was short.
bool lacksAny(const std::unordered_map<const Gradient*, CGGradientRef>& gradients) {
    return std::any_of(gradients.begin(), gradients.end(), [](const auto& entry) {
        return entry.second == nullptr && !entry.first->stops.empty();
    });
}

/// Strokes a frame one pixel wide just inside a box at the origin.
void strokeDebugFrame(CGContextRef context, CGSize box, double scale, const Color& color) {
    const double t = 1 / scale;
    const StateGuard saved(context);
    CGContextSetRGBStrokeColor(context, color.r, color.g, color.b, color.a);
    CGContextSetLineWidth(context, t);
    CGContextStrokeRect(context, CGRectMake(0.5 * t, 0.5 * t, box.width - t, box.height - t));
}

} // namespace

CoreGraphicsRenderer::CoreGraphicsRenderer() : m_colorSpace(CGColorSpaceCreateDeviceRGB()) {}

CoreGraphicsRenderer::~CoreGraphicsRenderer() {
    CGColorSpaceRelease(m_colorSpace);
    for (const auto& entry : m_cgPathCache) CGPathRelease(entry.second);
    for (const auto& entry : m_cgElementPathCache) CGPathRelease(entry.second);
    for (const auto& entry : m_cgGradientCache) CGGradientRelease(entry.second);
}

void CoreGraphicsRenderer::SetDocument(Document* document) {
    m_document = document;
    m_cgPathCache.clear();
    m_cgElementPathCache.clear();
    m_cgGradientCache.clear();
    m_references = document ? References(*document) : References();
}

CGRect CoreGraphicsRenderer::ViewBox() const {
    const Rectf& viewBox = m_document->viewBox;
    const CGRect rect = CGRectMake(viewBox.origin.x, viewBox.origin.y, viewBox.size.x, viewBox.size.y);
    if (!CGRectIsEmpty(rect)) return rect;
    const CGSize viewPort = ViewPortSize();
    return CGRectMake(0, 0, viewPort.width, viewPort.height);
}

CGSize CoreGraphicsRenderer::ViewPortSize() const {
    return CGSizeMake(m_document->size.width.value, m_document->size.height.value);
}

CGSize CoreGraphicsRenderer::renderSizeFitToSize(CGSize size) const {
    return FitToSize(ViewPortSize(), size);
}

CGSize CoreGraphicsRenderer::imageSizeFitToSize(CGSize size, double scale) const {
    return FitToPixels(ViewPortSize(), size, scale);
}

CGImageRef CoreGraphicsRenderer::createCGImage(CGSize size, double scale,
                                               const RenderingState& initialState) {
    const CGSize imageSize = imageSizeFitToSize(size, scale);
    const auto width = toPixelCount(imageSize.width * scale);
    const auto height = toPixelCount(imageSize.height * scale);
    if (!width || !height) return nullptr;

    const std::unique_ptr<CGContext, ContextRelease> bitmap(CGBitmapContextCreate(
        nullptr, *width, *height, 8, *width * kBytesPerPixel, m_colorSpace, kCGImageAlphaPremultipliedFirst));
    if (!bitmap) return nullptr;
    CGContextTranslateCTM(bitmap.get(), 0, imageSize.height * scale);
    CGContextScaleCTM(bitmap.get(), 1, -1);
    CGContextScaleCTM(bitmap.get(), scale, scale);
    Render(CGRectMake(0, 0, imageSize.width, imageSize.height), scale, initialState, bitmap.get());
    if (m_isStopped || lacksAny(m_cgGradientCache)) return nullptr;
    return CGBitmapContextCreateImage(bitmap.get());
}

void CoreGraphicsRenderer::Render(CGRect rect, double scale, const RenderingState& initialState,
                                  CGContextRef context) {
    m_isStopped = false;
    const CGSize viewPort = ViewPortSize();
    const CGRect viewBox = ViewBox();
    const bool hasSize = viewPort.width != 0 || viewPort.height != 0;
    if (!hasSize || CGRectIsEmpty(viewBox) || context == nullptr) return;

    {
        const StateGuard saved(context);
        CGContextTranslateCTM(context, rect.origin.x, rect.origin.y);
        const CGSize fit = FitToSize(viewPort, rect.size);
        CGContextTranslateCTM(context, (rect.size.width - fit.width) * 0.5,
                              (rect.size.height - fit.height) * 0.5);
        if (m_debugRendering) strokeDebugFrame(context, fit, scale, {0, 1, 0, 1});

        const double fitScale = std::min(fit.width / viewPort.width, fit.height / viewPort.height);
        CGContextScaleCTM(context, fitScale, fitScale);
        CGContextClipToRect(context, CGRectMake(0, 0, viewPort.width, viewPort.height));
        const double viewBoxScale =
            std::min(viewPort.width / viewBox.size.width, viewPort.height / viewBox.size.height);
        CGContextScaleCTM(context, viewBoxScale, viewBoxScale);
        CGContextTranslateCTM(context, -viewBox.origin.x, -viewBox.origin.y);

        CGContextSetStrokeColorSpace(context, m_colorSpace);
        CGContextSetFillColorSpace(context, m_colorSpace);
        m_renderingState.PushState(initialState); // Never popped: every call starts from its own record.
        setRenderState(m_renderingState.Top(), context);
        if (!m_document->elements.empty()) renderElement(m_document->elements.front(), context);
    }
    if (m_debugRendering && !m_isStopped) strokeDebugFrame(context, rect.size, scale, {0, 0, 1, 1});
}

} // namespace ozm
