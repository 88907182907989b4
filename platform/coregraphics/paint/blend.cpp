// The formulas of W3C "Compositing and Blending Level 1", in premultiplied form.
#include "paint/blend.h"

#include "base/unorm8.h"
#include "raster/composite.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ozcg {

namespace {

struct Rgb {
    float r, g, b;
};

Rgb operator*(Rgb c, float s) { return {c.r * s, c.g * s, c.b * s}; }
Rgb operator+(Rgb a, Rgb b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }
Rgb operator+(Rgb c, float s) { return {c.r + s, c.g + s, c.b + s}; }

struct Pixel {
    Rgb c; // premultiplied
    float a;
};

template <class Function>
Rgb perComponent(Rgb x, Rgb y, Function&& f) {
    return {f(x.r, y.r), f(x.g, y.g), f(x.b, y.b)};
}

// The blend function of backdrop and source, neither premultiplied.
float separable(CGBlendMode mode, float b, float s) {
    const auto hardLight = [](float under, float over) {
        return over <= 0.5f ? under * 2 * over : under + (2 * over - 1) - under * (2 * over - 1);
    };
    switch (mode) {
    case kCGBlendModeMultiply: return b * s;
    case kCGBlendModeScreen: return b + s - b * s;
    case kCGBlendModeOverlay: return hardLight(s, b);
    case kCGBlendModeDarken: return std::min(b, s);
    case kCGBlendModeLighten: return std::max(b, s);
    case kCGBlendModeColorDodge: return b <= 0 ? 0 : s >= 1 ? 1 : std::min(1.0f, b / (1 - s));
    case kCGBlendModeColorBurn: return b >= 1 ? 1 : s <= 0 ? 0 : 1 - std::min(1.0f, (1 - b) / s);
    case kCGBlendModeSoftLight: {
        if (s <= 0.5f) return b - (1 - 2 * s) * b * (1 - b);
        const float d = b <= 0.25f ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
        return b + (2 * s - 1) * (d - b);
    }
    case kCGBlendModeHardLight: return hardLight(b, s);
    case kCGBlendModeDifference: return std::abs(b - s);
    case kCGBlendModeExclusion: return b + s - 2 * b * s;
    default: return s;
    }
}

float luminosity(Rgb c) { return 0.3f * c.r + 0.59f * c.g + 0.11f * c.b; }
float smallest(Rgb c) { return std::min({c.r, c.g, c.b}); }
float greatest(Rgb c) { return std::max({c.r, c.g, c.b}); }
float saturation(Rgb c) { return greatest(c) - smallest(c); }

Rgb withLuminosity(Rgb c, float l) {
    c = c + (l - luminosity(c));
    l = luminosity(c);
    const float low = smallest(c), high = greatest(c);
    // A gray, which only rounding takes out of range, has no chroma to scale.
    if (low < 0 && low < l) c = (c + -l) * (l / (l - low)) + l;
    if (high > 1 && high > l) c = (c + -l) * ((1 - l) / (high - l)) + l;
    return c;
}

Rgb withSaturation(Rgb c, float s) {
    const float range = saturation(c);
    return range > 0 ? (c + -smallest(c)) * (s / range) : Rgb{0, 0, 0};
}

bool isSeparable(CGBlendMode mode) { return mode < kCGBlendModeHue; }

Rgb mixed(CGBlendMode mode, Rgb b, Rgb s) {
    switch (mode) {
    case kCGBlendModeHue: return withLuminosity(withSaturation(s, saturation(b)), luminosity(b));
    case kCGBlendModeSaturation: return withLuminosity(withSaturation(b, saturation(s)), luminosity(b));
    case kCGBlendModeColor: return withLuminosity(s, luminosity(b));
    case kCGBlendModeLuminosity: return withLuminosity(b, luminosity(s));
    default: return perComponent(b, s, [mode](float x, float y) { return separable(mode, x, y); });
    }
}

Pixel operator+(const Pixel& x, const Pixel& y) { return {x.c + y.c, x.a + y.a}; }
Pixel operator*(const Pixel& p, float s) { return {p.c * s, p.a * s}; }

Pixel blended(CGBlendMode mode, const Pixel& s, const Pixel& d) {
    switch (mode) {
    case kCGBlendModeClear: return {};
    case kCGBlendModeCopy: return s;
    case kCGBlendModeSourceIn: return s * d.a;
    case kCGBlendModeSourceOut: return s * (1 - d.a);
    case kCGBlendModeSourceAtop: return s * d.a + d * (1 - s.a);
    case kCGBlendModeDestinationOver: return s * (1 - d.a) + d;
    case kCGBlendModeDestinationIn: return d * s.a;
    case kCGBlendModeDestinationOut: return d * (1 - s.a);
    case kCGBlendModeDestinationAtop: return s * (1 - d.a) + d * s.a;
    case kCGBlendModeXOR: return s * (1 - d.a) + d * (1 - s.a);
    case kCGBlendModePlusDarker: {
        const float a = std::min(1.0f, s.a + d.a);
        return {perComponent(s.c, d.c,
                             [&](float x, float y) { return std::max(0.0f, a - ((d.a - y) + (s.a - x))); }),
                a};
    }
    case kCGBlendModePlusLighter:
        return {perComponent(s.c, d.c, [](float x, float y) { return std::min(1.0f, x + y); }),
                std::min(1.0f, s.a + d.a)};
    default: break;
    }
    if (mode > kCGBlendModeNormal && (isSeparable(mode) || mode <= kCGBlendModeLuminosity) && s.a > 0 &&
        d.a > 0) {
        const Rgb mix = mixed(mode, d.c * (1 / d.a), s.c * (1 / s.a));
        return {s.c * (1 - d.a) + d.c * (1 - s.a) + mix * (s.a * d.a), s.a + d.a - s.a * d.a};
    }
    return s + d * (1 - s.a);
}

uint8_t clampedUnorm8(float component, float limit) { return unorm8(std::clamp(component, 0.0f, limit)); }

Pixel load(const uint8_t* p, const PixelOffsets& at) {
    constexpr float k = 1.0f / 255;
    return {{p[at.r] * k, p[at.g] * k, p[at.b] * k}, p[at.a] * k};
}

void blendFormula(uint8_t* dst, const uint32_t* src, const uint8_t* coverage, size_t n, CGBlendMode mode,
                  PixelOrder order, bool isOpaque) {
    const PixelOffsets at = offsetsOf(order), rgba = offsetsOf(PixelOrder::rgba);
    for (size_t i = 0; i < n; ++i, dst += 4) {
        if (coverage[i] == 0) continue;
        uint8_t over[4];
        std::memcpy(over, &src[i], 4);
        Pixel under = load(dst, at);
        if (isOpaque) under.a = 1;
        const float weight = static_cast<float>(coverage[i]) / 255;
        const Pixel result = blended(mode, load(over, rgba), under) * weight + under * (1 - weight);
        const uint8_t alpha = clampedUnorm8(result.a, 1);
        const float limit = static_cast<float>(alpha) / 255;
        dst[at.r] = clampedUnorm8(result.c.r, limit);
        dst[at.g] = clampedUnorm8(result.c.g, limit);
        dst[at.b] = clampedUnorm8(result.c.b, limit);
        dst[at.a] = alpha;
    }
}

template <PixelOrder kOrder>
void reorder(uint32_t* pixels, size_t n) {
    for (size_t i = 0; i < n; ++i) pixels[i] = reordered(pixels[i], kOrder);
}

} // namespace

void blendRow(uint8_t* dst, uint32_t* src, const uint8_t* coverage, size_t n, CGBlendMode mode,
              PixelOrder order, bool isOpaque) noexcept {
    if (mode > kCGBlendModeNormal && mode <= kCGBlendModePlusLighter) {
        return blendFormula(dst, src, coverage, n, mode, order, isOpaque);
    }
    if (order == PixelOrder::bgra) reorder<PixelOrder::bgra>(src, n);
    if (order == PixelOrder::argb) reorder<PixelOrder::argb>(src, n);
    const int alphaShift = offsetsOf(order).a * 8;
    compositeRow(dst, reinterpret_cast<const uint8_t*>(src), coverage, n, alphaShift);
}

} // namespace ozcg
