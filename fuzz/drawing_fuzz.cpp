// A random sequence of drawing-library calls with wild numbers, on a small bitmap.
#include <CoreGraphics/CoreGraphics.h>

#include "require.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

/// Takes calls and numbers from the input.
class Input {
public:
    Input(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
    bool empty() const { return m_size == 0; }
    uint8_t byte() {
        if (m_size == 0) return 0;
        --m_size;
        return *m_data++;
    }
    /// Mostly near the bitmap, at times far away, tiny or not finite.
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

void draw(CGContextRef c, Input& in, CGGradientRef gradient) {
    const CGPoint p = in.point(), q = in.point();
    switch (in.byte() % 26) {
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
    default: break;
    }
    const CGImageRef image = CGBitmapContextCreateImage(c);
    CGContextDrawImage(c, in.rect(), image);
    CGImageRelease(image);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input in(data, size);
    const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    const CGContextRef c =
        CGBitmapContextCreate(nullptr, 24, 24, 8, 0, space, kCGImageAlphaPremultipliedFirst);
    const CGFloat colors[] = {1, 0, 0, 1, 0, 0.5, 1, 0.3}, locations[] = {in.number(), in.number()};
    const CGGradientRef gradient = CGGradientCreateWithColorComponents(space, colors, locations, 2);
    for (int calls = 0; calls < 200 && !in.empty(); ++calls) draw(c, in, gradient);
    const auto* p = static_cast<const uint8_t*>(CGBitmapContextGetData(c));
    for (size_t i = 0; i < size_t{24} * 24 * 4; i += 4)
        Require(p[i + 1] <= p[i] && p[i + 2] <= p[i] && p[i + 3] <= p[i]);
    CGGradientRelease(gradient);
    CGContextRelease(c);
    CGColorSpaceRelease(space);
    return 0;
}
