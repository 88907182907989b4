// Random sequences of drawing-library calls on a small bitmap, with extreme numbers among the arguments.
//
// A call takes the numbers that it needs and no more, so that short inputs already hold whole drawings.
#include <CoreGraphics/CoreGraphics.h>
#include <CoreGraphics/OZMInterrupt.h>

#include "require.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <memory>
#include <vector>

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
    /// Mostly a coordinate near the bitmap; sometimes a number from the far ends of what a double can hold.
    double number() {
        static constexpr double kExtremes[] = {
            std::numeric_limits<double>::infinity(),
            std::numeric_limits<double>::quiet_NaN(),
            std::numeric_limits<double>::max(),
            std::numeric_limits<double>::max() / 2,
            1e308,
            1e300,
            1e200,
            1e154, // its square is near the largest
            1e100,
            1e38, // near the largest float
            1e20,
            1e9,
            1e5,
            65535,
            0.5,
            1e-5,
            1e-9,
            1e-20,
            1e-100,
            1e-154,
            1e-308,
            std::numeric_limits<double>::min(),
            std::numeric_limits<double>::denorm_min(),
            0,
        };
        const uint8_t kind = byte();
        if (kind < 170) return byte() / 4.0 - 16;
        if (kind < 180) return byte() / 16.0;
        if (kind < 240) {
            const uint8_t choice = byte();
            const double value = kExtremes[choice / 2 % std::size(kExtremes)];
            return choice % 2 ? -value : value;
        }
        uint8_t bytes[8];
        for (uint8_t& b : bytes) b = byte();
        double value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
    CGPoint point() {
        const double x = number();
        return {x, number()};
    }
    CGRect rect() {
        const CGPoint origin = point();
        const double width = number();
        return {origin, {width, number()}};
    }

private:
    const uint8_t* m_data;
    size_t m_size;
};

void query(CGContextRef c, CGPoint p, CGPathDrawingMode mode) {
    CGContextPathContainsPoint(c, p, mode);
    CGContextGetPathCurrentPoint(c);
    CGContextGetPathBoundingBox(c);
    CGContextGetClipBoundingBox(c);
    CGContextConvertRectToUserSpace(c, CGContextConvertRectToDeviceSpace(c, {p, {p.y, p.x}}));
    CGPathRelease(CGContextCopyPath(c));
}

/// Adds one segment or shape to the path.
void addToPath(CGContextRef c, Input& in) {
    const CGPoint p = in.point();
    switch (in.byte() % 10) {
    case 0: return CGContextMoveToPoint(c, p.x, p.y);
    case 1:
    case 2: return CGContextAddLineToPoint(c, p.x, p.y);
    case 3: {
        const CGPoint q = in.point();
        return CGContextAddQuadCurveToPoint(c, q.x, q.y, p.x, p.y);
    }
    case 4: {
        const CGPoint q = in.point();
        return CGContextAddArcToPoint(c, p.x, p.y, q.x, q.y, in.number());
    }
    case 5: return CGContextAddRect(c, {p, {in.number(), in.number()}});
    case 6: return CGContextAddEllipseInRect(c, {p, {in.number(), in.number()}});
    case 7: {
        const double radius = in.number(), start = in.number(), end = in.number();
        return CGContextAddArc(c, p.x, p.y, radius, start, end, in.byte() % 2);
    }
    default: {
        const CGPoint q = in.point(), end = in.point();
        return CGContextAddCurveToPoint(c, p.x, p.y, q.x, q.y, end.x, end.y);
    }
    }
}

/// Adds the dashes or the outline of a path. Not the outline of dashes: there may be a million.
void addOutline(CGContextRef c, Input& in) {
    const CGMutablePathRef path = CGPathCreateMutable();
    const CGPoint from = in.point(), to = in.point();
    CGPathMoveToPoint(path, nullptr, from.x, from.y);
    CGPathAddLineToPoint(path, nullptr, to.x, to.y);
    const CGRect box = in.rect();
    const CGPoint corner = in.point();
    CGPathAddRoundedRect(path, nullptr, box, corner.x, corner.y);
    const CGAffineTransform matrix = {in.number(), in.number(), in.number(), in.number(), 0, 0};
    const CGAffineTransform* const transform = in.byte() % 2 ? &matrix : nullptr;
    const CGFloat lengths[] = {in.number(), in.number()};
    const uint8_t kind = in.byte();
    const double number = in.number(), miterLimit = in.number();
    const CGPathRef outline =
        kind % 16
            ? CGPathCreateCopyByStrokingPath(path, transform, number, static_cast<CGLineCap>(kind / 16 % 3),
                                             static_cast<CGLineJoin>(kind / 48 % 3), miterLimit)
            : CGPathCreateCopyByDashingPath(path, transform, number, lengths, kind / 16 % 3);
    CGContextAddPath(c, outline);
    CGPathContainsPoint(outline, &matrix, in.point(), kind % 2);
    CGPathRelease(outline);
    CGPathRelease(path);
}

/// Sets up to five dashes, or very many that are alike.
void setDashes(CGContextRef c, Input& in) {
    const double phase = in.number();
    const uint8_t count = in.byte();
    std::vector<CGFloat> lengths(count < 250 ? count % 6 : size_t{1} << (count - 240), in.number());
    for (size_t i = 0; i < lengths.size() && i < count % 6; ++i) lengths[i] = in.number();
    CGContextSetLineDash(c, phase, lengths.data(), lengths.size());
}

/// Draws the bitmap, a part of it, or an image of any size up to 300 pixels into itself.
void drawImage(CGContextRef c, Input& in) {
    const CGRect target = in.rect();
    CGImageRef image = CGBitmapContextCreateImage(c);
    const uint8_t kind = in.byte();
    if (kind % 3 == 1) {
        const CGImageRef part = CGImageCreateWithImageInRect(image, in.rect());
        CGImageRelease(image);
        image = part;
    } else if (kind % 3 == 2) {
        const size_t width = 1 + in.byte() * kind / 212, height = 1 + in.byte() * kind / 212;
        constexpr size_t kLongest = 307, kMostBytes = 4 * kLongest * kLongest; // of such an image
        static constexpr std::array<uint8_t, kMostBytes> kPixels = {};
        const CGDataProviderRef bytes =
            CGDataProviderCreateWithData(nullptr, kPixels.data(), 4 * width * height, nullptr);
        CGImageRelease(image);
        image = CGImageCreate(width, height, 8, 32, 4 * width, CGBitmapContextGetColorSpace(c),
                              kCGImageAlphaPremultipliedLast, bytes, nullptr, kind % 2,
                              kCGRenderingIntentDefault);
        CGDataProviderRelease(bytes);
    }
    CGContextDrawImage(c, target, image);
    CGImageRelease(image);
}

void fillRects(CGContextRef c, Input& in) {
    const CGRect rects[] = {in.rect(), in.byte() % 4 ? in.rect() : CGRectInfinite};
    switch (in.byte() % 4) {
    case 0: return CGContextFillRects(c, rects, 2);
    case 1: return CGContextStrokeRectWithWidth(c, rects[0], in.number());
    case 2: return CGContextClearRect(c, rects[1]);
    default: return CGContextFillEllipseInRect(c, rects[0]);
    }
}

CGGradientRef createGradient(Input& in) {
    CGFloat colors[4 * 5], locations[5];
    const size_t count = 1 + in.byte() % 5;
    for (size_t i = 0; i < 4 * count; ++i) colors[i] = in.byte() < 230 ? in.byte() / 200.0 : in.number();
    for (size_t i = 0; i < count; ++i) locations[i] = in.byte() < 230 ? in.byte() / 200.0 : in.number();
    const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    const CGGradientRef gradient = CGGradientCreateWithColorComponents(space, colors, locations, count);
    CGColorSpaceRelease(space);
    return gradient;
}

void drawGradient(CGContextRef c, Input& in) {
    const CGGradientRef gradient = createGradient(in);
    const CGPoint start = in.point(), end = in.point();
    const CGGradientDrawingOptions options = in.byte() % 4;
    if (in.byte() % 2)
        CGContextDrawLinearGradient(c, gradient, start, end, options);
    else {
        const double startRadius = in.number(), endRadius = in.number();
        CGContextDrawRadialGradient(c, gradient, start, startRadius, end, endRadius, options);
    }
    CGGradientRelease(gradient);
}

void setColor(CGContextRef c, Input& in) {
    const bool isFill = in.byte() % 2;
    const double r = in.number(), g = in.number(), b = in.number(), a = in.byte() % 2 ? 1 : in.number();
    if (isFill)
        CGContextSetRGBFillColor(c, r, g, b, a);
    else
        CGContextSetRGBStrokeColor(c, r, g, b, a);
}

void changeMatrix(CGContextRef c, Input& in) {
    const uint8_t kind = in.byte() % 4;
    if (kind == 2) return CGContextRotateCTM(c, in.number());
    const CGPoint p = in.point();
    if (kind == 0) return CGContextScaleCTM(c, p.x, p.y);
    if (kind == 1) return CGContextTranslateCTM(c, p.x, p.y);
    const CGPoint q = in.point(), moved = in.point();
    CGContextConcatCTM(c, {p.x, p.y, q.x, q.y, moved.x, moved.y});
}

void draw(CGContextRef c, Input& in) {
    switch (in.byte() % 32) {
    case 0: return CGContextSaveGState(c);
    case 1: return CGContextRestoreGState(c);
    case 2: return changeMatrix(c, in);
    case 3:
    case 4: return CGContextSetLineWidth(c, in.number());
    case 5: return CGContextSetLineCap(c, static_cast<CGLineCap>(in.byte() % 4));
    case 6: return CGContextSetLineJoin(c, static_cast<CGLineJoin>(in.byte() % 4));
    case 7: return CGContextSetMiterLimit(c, in.number());
    case 8: return setDashes(c, in);
    case 9: return CGContextSetAlpha(c, in.number());
    case 10: return CGContextSetBlendMode(c, static_cast<CGBlendMode>(in.byte() % 30));
    case 11: return addOutline(c, in);
    case 12: return CGContextClosePath(c);
    case 13:
    case 14:
    case 15: return CGContextDrawPath(c, static_cast<CGPathDrawingMode>(in.byte() % 5));
    case 16: return in.byte() % 2 ? CGContextClip(c) : CGContextEOClip(c);
    case 17: return CGContextClipToRect(c, in.byte() % 8 ? in.rect() : CGRectInfinite);
    case 18: return setColor(c, in);
    case 19: return drawGradient(c, in);
    case 20: return CGContextSetShouldAntialias(c, in.byte() % 2);
    case 21: return CGContextSetInterpolationQuality(c, static_cast<CGInterpolationQuality>(in.byte() % 5));
    case 22: return fillRects(c, in);
    case 23: return query(c, in.point(), static_cast<CGPathDrawingMode>(in.byte() % 5));
    case 24: return drawImage(c, in);
    default: return addToPath(c, in);
    }
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
    // A quarter of the inputs interrupt every path that takes long.
    OZMSetDrawingInterrupt(
        choice < 192 ? nullptr : [](void*) { return true; }, nullptr);
    for (int calls = 0; calls < 200 && !in.empty(); ++calls) draw(c, in);
    const size_t alpha = format == first ? 0 : 3;
    for (const uint8_t* p = pixels.get(); p != pixels.get() + 4 * width * height; p += 4)
        for (size_t i = 0; i < 4; ++i) Require(p[i] <= p[alpha]);
    CGContextRelease(c);
    CGColorSpaceRelease(space);
    return 0;
}
