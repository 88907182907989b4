// A small bitmap to draw on, and access to its pixels.
#pragma once

#include "owned.h"

#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

/// A pixel: premultiplied components from 0 to 255.
struct Rgba8 {
    int r = 0, g = 0, b = 0, a = 0;
    bool operator==(const Rgba8&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Rgba8& p) {
    return out << p.r << ' ' << p.g << ' ' << p.b << ' ' << p.a;
}

/// A bitmap context, at first transparent. Unlike that of a bare context, its user space has the origin at
/// the top left, and y points down.
class Canvas {
public:
    explicit Canvas(size_t width = 32, size_t height = 32,
                    CGBitmapInfo info = CGBitmapInfo{kCGImageAlphaPremultipliedLast})
        : m_space(CGColorSpaceCreateDeviceRGB()),
          m_context(CGBitmapContextCreate(nullptr, width, height, 8, 4 * width, m_space, info)),
          m_info(info) {
        CGContextTranslateCTM(m_context, 0, static_cast<CGFloat>(height));
        CGContextScaleCTM(m_context, 1, -1);
    }

    operator CGContextRef() const { return m_context; }
    size_t width() const { return CGBitmapContextGetWidth(m_context); }
    size_t height() const { return CGBitmapContextGetHeight(m_context); }

    Rgba8 at(size_t x, size_t y) const {
        const auto* p =
            static_cast<const uint8_t*>(CGBitmapContextGetData(m_context)) + 4 * (y * width() + x);
        if (m_info == kCGImageAlphaPremultipliedLast) return {p[0], p[1], p[2], p[3]};
        if (m_info == kCGImageAlphaPremultipliedFirst) return {p[1], p[2], p[3], p[0]};
        return {p[2], p[1], p[0], p[3]};
    }
    /// The painted area in pixels: the sum of all alphas.
    double area() const {
        double sum = 0;
        for (size_t y = 0; y < height(); ++y)
            for (size_t x = 0; x < width(); ++x) sum += at(x, y).a;
        return sum / 255;
    }
    /// One character per pixel: '.' for transparent, '#' for opaque, '+' for anything in between.
    std::string rows() const {
        std::string text;
        for (size_t y = 0; y < height(); ++y) {
            for (size_t x = 0; x < width(); ++x)
                text += at(x, y).a == 0 ? '.' : at(x, y).a == 255 ? '#' : '+';
            text += '\n';
        }
        return text;
    }
    /// Whether no component of any pixel exceeds its alpha.
    bool isPremultiplied() const {
        for (size_t y = 0; y < height(); ++y)
            for (size_t x = 0; x < width(); ++x) {
                const Rgba8 p = at(x, y);
                if (p.r > p.a || p.g > p.a || p.b > p.a) return false;
            }
        return true;
    }

private:
    Owned<CGColorSpaceRef> m_space;
    Owned<CGContextRef> m_context;
    CGBitmapInfo m_info;
};
