// Random sequences of drawing-library calls on a small bitmap, with extreme numbers among the arguments.
#include <CoreGraphics/CoreGraphics.h>
#include <CoreGraphics/OZMInterrupt.h>

#include "require.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

namespace {

/// Decodes calls and numbers from the fuzzer's bytes. Past the end of the input, every byte is 0.
class Input {
public:
    Input(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
    bool empty() const { return m_size == 0; }
    uint8_t byte() {
        if (m_size == 0) return 0;
        --m_size;
        return *m_data++;
    }
    /// Mostly a coordinate near the bitmap; sometimes one that is far away, tiny, infinite or NaN.
    double number() {
        const uint8_t kind = byte();
        if (kind < 200) return byte() / 4.0 - 16;
        if (kind < 210) return std::numeric_limits<double>::infinity();
        if (kind < 215) return std::numeric_limits<double>::quiet_NaN();
        uint8_t bytes[8];
        for (uint8_t& b : bytes) b = byte();
        double value;
        std::memcpy(&value, bytes, sizeof value);
        return kind < 235 ? value : (kind - 245) * 1e8;
    }
    CGPoint point() { return {number(), number()}; }
    CGRect rect() { return {point(), {number(), number()}}; }

private:
    const uint8_t* m_data;
    size_t m_size;
};

void query(CGContextRef c, CGPoint p, CGPathDrawingMode mode) {
    CGContextPathContainsPoint(c, p, mode);
    CGContextGetPathBoundingBox(c);
    CGContextGetClipBoundingBox(c);
    CGPathRelease(CGContextCopyPath(c));
}

void draw(CGContextRef c, Input& in, CGGradientRef gradient) {
    const CGPoint p = in.point(), q = in.point();
    switch (in.byte() % 30) {
    case 0: return CGContextSaveGState(c);
    case 1: return CGContextRestoreGState(c);
    case 2: return CGContextConcatCTM(c, {in.number(), in.number(), in.number(), in.number(), p.x, p.y});
    case 3: return CGContextRotateCTM(c, p.x);
    case 4: return CGContextSetLineWidth(c, p.x);
    case 5: return CGContextSetLineCap(c, static_cast<CGLineCap>(in.byte() % 4));
    case 6: return CGContextSetLineJoin(c, static_cast<CGLineJoin>(in.byte() % 4));
    case 7: return CGContextSetMiterLimit(c, p.x);
    case 8: {
        const CGFloat dashes[] = {p.x, p.y, q.x};
        return CGContextSetLineDash(c, q.y, dashes, in.byte() % 4);
    }
    case 9: return CGContextSetAlpha(c, p.x);
    case 10: return CGContextSetBlendMode(c, static_cast<CGBlendMode>(in.byte() % 30));
    case 11: return CGContextMoveToPoint(c, p.x, p.y);
    case 12: return CGContextAddLineToPoint(c, p.x, p.y);
    case 13: return CGContextAddCurveToPoint(c, p.x, p.y, q.x, q.y, in.number(), in.number());
    case 14: return CGContextAddQuadCurveToPoint(c, p.x, p.y, q.x, q.y);
    case 15: return CGContextClosePath(c);
    case 16: return CGContextAddEllipseInRect(c, in.rect());
    case 17: return CGContextAddArc(c, p.x, p.y, q.x, q.y, in.number(), in.byte() % 2);
    case 18: return CGContextDrawPath(c, static_cast<CGPathDrawingMode>(in.byte() % 5));
    case 19: return in.byte() % 2 ? CGContextClip(c) : CGContextEOClip(c);
    case 20: return CGContextClipToRect(c, in.rect());
    case 21: return CGContextSetRGBFillColor(c, p.x, p.y, q.x, q.y);
    case 22: return CGContextSetRGBStrokeColor(c, p.x, p.y, q.x, q.y);
    case 23: return CGContextDrawLinearGradient(c, gradient, p, q, in.byte() % 4);
    case 24: return CGContextDrawRadialGradient(c, gradient, p, in.number(), q, in.number(), in.byte() % 4);
    case 25: return CGContextSetShouldAntialias(c, in.byte() % 2);
    case 26: return CGContextSetInterpolationQuality(c, static_cast<CGInterpolationQuality>(in.byte() % 5));
    case 27: return CGContextClearRect(c, in.rect());
    case 28: return query(c, p, static_cast<CGPathDrawingMode>(in.byte() % 5));
    default: break;
    }
    const CGImageRef image = CGBitmapContextCreateImage(c);
    CGContextDrawImage(c, in.rect(), image);
    CGImageRelease(image);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const uint32_t last = kCGImageAlphaPremultipliedLast, first = kCGImageAlphaPremultipliedFirst;
    const uint32_t formats[] = {last, first, first | kCGBitmapByteOrder32Little};
    const uint8_t choice = in.byte();
    const uint32_t format = formats[choice % 3];
    const size_t width = 1 + choice / 3 % 64, height = 24;
    // The block has exactly the bitmap's size, so that AddressSanitizer detects any access outside it.
    const auto pixels = std::make_unique<uint8_t[]>(4 * width * height);
    const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    const CGContextRef c = CGBitmapContextCreate(pixels.get(), width, height, 8, 4 * width, space, format);
    const CGFloat colors[] = {1, 0, 0, 1, 0, 0.5, 1, 0.3}, locations[] = {in.number(), in.number()};
    const CGGradientRef gradient = CGGradientCreateWithColorComponents(space, colors, locations, 2);
    // A quarter of the inputs interrupt every path that takes long.
    OZMSetDrawingInterrupt(
        choice < 192 ? nullptr : [](void*) { return true; }, nullptr);
    for (int calls = 0; calls < 200 && !in.empty(); ++calls) draw(c, in, gradient);
    const size_t alpha = format == first ? 0 : 3;
    for (const uint8_t* p = pixels.get(); p != pixels.get() + 4 * width * height; p += 4)
        for (size_t i = 0; i < 4; ++i) Require(p[i] <= p[alpha]);
    CGGradientRelease(gradient);
    CGContextRelease(c);
    CGColorSpaceRelease(space);
    return 0;
}
