#include "context/context.h"

#include "base/unorm8.h"
#include "context/context_buffers.h"

#include <algorithm>
#include <cstring>
#include <new>

using namespace ozcg;

CGContext::CGContext(const BitmapFormat& bitmapFormat, CGColorSpace* colorSpace, uint8_t* bytes)
    : Object(TypeId::context), format(bitmapFormat), space(Ref<CGColorSpace>::retaining(colorSpace)) {
    const int width = static_cast<int>(format.width), height = static_cast<int>(format.height);
    ContextBuffers buffers = ContextBuffers::take();
    saved = std::move(buffers.saved);
    path = std::move(buffers.path);
    surface = {bytes, format.bytesPerRow, width, height, format.order, format.isOpaque};
    state.ctm = {1, 0, 0, -1, 0, double(height)};
    state.clip = Clip(width, height);
}

CGContext::CGContext(const BitmapFormat& bitmapFormat, CGColorSpace* colorSpace, Ref<PixelStorage> pixels)
    : CGContext(bitmapFormat, colorSpace, pixels->bytes()) {
    storage = std::move(pixels);
}

CGContext::CGContext(const BitmapFormat& bitmapFormat, CGColorSpace* colorSpace, const BorrowedPixels& pixels)
    : CGContext(bitmapFormat, colorSpace, pixels.bytes) {
    m_borrowed = pixels;
}

CGContext::~CGContext() {
    ContextBuffers::leave({std::move(path), std::move(saved)});
    if (m_borrowed.release) m_borrowed.release(m_borrowed.releaseInfo, m_borrowed.bytes);
}

const Surface& CGContext::surfaceForDrawing() {
    if (storage && !storage->isUnique()) {
        Ref<PixelStorage> copy = PixelStorage::create(storage->size());
        if (!copy) throw std::bad_alloc();
        std::memcpy(copy->bytes(), storage->bytes(), storage->size());
        storage = std::move(copy);
        surface.bytes = storage->bytes();
    }
    return surface;
}

uint8_t* CGContext::exposedPixels() {
    uint8_t* const pixels = surfaceForDrawing().bytes;
    m_isExposed = true;
    return pixels;
}

CGImage* CGContext::createImage() {
    CGImageFormat image;
    image.width = format.width;
    image.height = format.height;
    image.bytesPerRow = format.bytesPerRow;
    image.space = space;
    image.bitmapInfo = format.info;
    image.layout = *pixelLayout(8, 32, space.get(), format.info);
    if (storage && !m_isExposed) return ozcg::createImage(image, storage);
    const Ref<PixelStorage> copy = PixelStorage::create(format.bytesPerRow * format.height);
    if (!copy) return nullptr;
    // The caller's memory may end after the last pixel.
    std::memcpy(copy->bytes(), surface.bytes, copy->size() - format.bytesPerRow + 4 * format.width);
    return ozcg::createImage(image, copy);
}

CGAffineTransform CGContext::userToBase() const {
    const CGAffineTransform flip = {1, 0, 0, -1, 0, double(surface.height)};
    return CGAffineTransformConcat(state.ctm, flip);
}

Compositing CGContext::compositing() const {
    return {state.clip, state.alpha, state.blendMode, state.antialias && allowsAntialiasing};
}

CFTypeID CGContextGetTypeID(void) { return static_cast<CFTypeID>(TypeId::context); }

CGContextRef CGContextRetain(CGContextRef c) { return retained(c); }

void CGContextRelease(CGContextRef c) { released(c); }

// Graphics state

void CGContextSaveGState(CGContextRef c) {
    if (!c) return;
    // States are restored in reverse order, so after one that memory did not suffice for none is saved.
    if (c->unsaved == 0 && c->complete([&] { c->saved.push_back(c->state); })) return;
    if (c->unsaved++ == 0) c->lastSaved = c->state;
}

void CGContextRestoreGState(CGContextRef c) {
    if (!c) return;
    if (c->unsaved > 0) {
        if (--c->unsaved == 0) c->state = std::move(c->lastSaved);
        return;
    }
    if (c->saved.empty()) return;
    c->state = std::move(c->saved.back());
    c->saved.pop_back();
}

void CGContextScaleCTM(CGContextRef c, CGFloat sx, CGFloat sy) {
    if (c) c->state.ctm = CGAffineTransformScale(c->state.ctm, sx, sy);
}

void CGContextTranslateCTM(CGContextRef c, CGFloat tx, CGFloat ty) {
    if (c) c->state.ctm = CGAffineTransformTranslate(c->state.ctm, tx, ty);
}

void CGContextRotateCTM(CGContextRef c, CGFloat angle) {
    if (c) c->state.ctm = CGAffineTransformRotate(c->state.ctm, angle);
}

void CGContextConcatCTM(CGContextRef c, CGAffineTransform transform) {
    if (c) c->state.ctm = CGAffineTransformConcat(transform, c->state.ctm);
}

CGAffineTransform CGContextGetCTM(CGContextRef c) { return c ? c->userToBase() : CGAffineTransformIdentity; }

void CGContextSetLineWidth(CGContextRef c, CGFloat width) {
    if (c && width >= 0) c->state.line.width = width;
}

void CGContextSetLineCap(CGContextRef c, CGLineCap cap) {
    if (c) c->state.line.cap = capOf(cap);
}

void CGContextSetLineJoin(CGContextRef c, CGLineJoin join) {
    if (c) c->state.line.join = joinOf(join);
}

void CGContextSetMiterLimit(CGContextRef c, CGFloat limit) {
    if (c) c->state.line.miterLimit = finiteOr(limit, 10);
}

void CGContextSetLineDash(CGContextRef c, CGFloat phase, const CGFloat* lengths, size_t count) {
    if (!c) return;
    c->complete([&] {
        LineStyle& line = c->state.line;
        const bool isSolid = !lengths || count == 0;
        line.dashes =
            isSolid ? nullptr : std::make_shared<const std::vector<double>>(lengths, lengths + count);
        line.dashPhase = phase;
    });
}

void CGContextSetFlatness(CGContextRef, CGFloat) {}

void CGContextSetAlpha(CGContextRef c, CGFloat alpha) {
    if (c) c->state.alpha = clampedToUnit(alpha);
}

void CGContextSetBlendMode(CGContextRef c, CGBlendMode mode) {
    if (c) c->state.blendMode = mode;
}

void CGContextSetShouldAntialias(CGContextRef c, bool shouldAntialias) {
    if (c) c->state.antialias = shouldAntialias;
}

void CGContextSetAllowsAntialiasing(CGContextRef c, bool allowsAntialiasing) {
    if (c) c->allowsAntialiasing = allowsAntialiasing;
}

CGInterpolationQuality CGContextGetInterpolationQuality(CGContextRef c) {
    return c ? c->state.interpolation : kCGInterpolationDefault;
}

void CGContextSetInterpolationQuality(CGContextRef c, CGInterpolationQuality quality) {
    if (c) c->state.interpolation = quality;
}

void CGContextSetRenderingIntent(CGContextRef, CGColorRenderingIntent) {}

void CGContextFlush(CGContextRef) {}

// Conversions

CGAffineTransform CGContextGetUserSpaceToDeviceSpaceTransform(CGContextRef c) { return CGContextGetCTM(c); }

CGPoint CGContextConvertPointToDeviceSpace(CGContextRef c, CGPoint point) {
    return CGPointApplyAffineTransform(point, CGContextGetCTM(c));
}

CGPoint CGContextConvertPointToUserSpace(CGContextRef c, CGPoint point) {
    return CGPointApplyAffineTransform(point, CGAffineTransformInvert(CGContextGetCTM(c)));
}

CGSize CGContextConvertSizeToDeviceSpace(CGContextRef c, CGSize size) {
    return CGSizeApplyAffineTransform(size, CGContextGetCTM(c));
}

CGSize CGContextConvertSizeToUserSpace(CGContextRef c, CGSize size) {
    return CGSizeApplyAffineTransform(size, CGAffineTransformInvert(CGContextGetCTM(c)));
}

CGRect CGContextConvertRectToDeviceSpace(CGContextRef c, CGRect rect) {
    return CGRectApplyAffineTransform(rect, CGContextGetCTM(c));
}

CGRect CGContextConvertRectToUserSpace(CGContextRef c, CGRect rect) {
    return CGRectApplyAffineTransform(rect, CGAffineTransformInvert(CGContextGetCTM(c)));
}
