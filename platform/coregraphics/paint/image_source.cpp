#include "paint/image_source.h"

#include "base/int_rect.h"
#include "base/unorm8.h"
#include "values/affine_transform.h"

#include <cmath>

namespace ozcg {

namespace {

// Where the axes of image and bitmap are not parallel, the areas averaged for neighbouring pixels overlap.
// Areas of more than this many image pixels each way would then cost too much.
constexpr double kMaxSkewedSide = 16;
// Image pixels this close to the pixel grid are taken to lie on it.
constexpr double kSnap = 1.0 / 4096;

bool isWhole(double v) { return std::abs(v - std::nearbyint(v)) < kSnap && std::abs(v) < 1e9; }

struct Sum {
    double r = 0, g = 0, b = 0, a = 0;

    void add(uint32_t rgba, double weight) {
        r += weight * (rgba & 0xFF);
        g += weight * ((rgba >> 8) & 0xFF);
        b += weight * ((rgba >> 16) & 0xFF);
        a += weight * (rgba >> 24);
    }
    uint32_t over(double weight) const {
        const auto mean = [weight](double v) { return static_cast<uint32_t>(std::lround(v / weight)); };
        return mean(r) | mean(g) << 8 | mean(b) << 16 | mean(a) << 24;
    }
};

// The image pixels that an interval touches, and how much of each it covers.
struct Interval {
    int first, last;
    double from, to;

    Interval(double center, double half, int size) {
        from = std::clamp(center - half, 0.0, double(size));
        to = std::clamp(center + half, 0.0, double(size));
        if (!(to - from > 1e-9)) { // past an end: the outermost pixel
            from = from > 0 ? size - 1 : 0;
            to = from + 1;
        }
        first = floorClamped(from, 0, size - 1);
        last = std::max(first, ceilClamped(to, 1, size) - 1);
    }
    double weight(int i) const { return std::min(i + 1.0, to) - std::max(double(i), from); }
};

} // namespace

std::optional<ImageSource> ImageSource::make(const CGImage& image, const CGAffineTransform& toPixel,
                                             bool smooth) {
    const std::optional<CGAffineTransform> fromPixel = inverted(toPixel);
    if (!fromPixel) return {};
    ImageSource source(image);
    const auto w = static_cast<double>(image.width()), h = static_cast<double>(image.height());
    const CGAffineTransform toRows = {w, 0, 0, -h, 0, h};
    CGAffineTransform& t = source.m_toImage = CGAffineTransformConcat(*fromPixel, toRows);
    const auto is = [](double v, double wanted) { return std::abs(v - wanted) < 1e-9; };
    source.m_smooth = smooth;
    source.m_copies = is(t.a, 1) && is(t.b, 0) && is(t.c, 0) && is(t.d, 1) && isWhole(t.tx) && isWhole(t.ty);
    if (source.m_copies) return source;

    source.m_halfU = 0.5 * std::max(1.0, std::abs(t.a) + std::abs(t.c));
    source.m_halfV = 0.5 * std::max(1.0, std::abs(t.b) + std::abs(t.d));
    const bool parallel = (is(t.b, 0) && is(t.c, 0)) || (is(t.a, 0) && is(t.d, 0));
    if (!parallel) {
        source.m_halfU = std::min(source.m_halfU, 0.5 * kMaxSkewedSide);
        source.m_halfV = std::min(source.m_halfV, 0.5 * kMaxSkewedSide);
    }
    source.m_pixels.resize(image.width() * image.height());
    for (size_t y = 0; y < image.height(); ++y)
        readRow(image, y, 0, image.width(), source.m_pixels.data() + y * image.width());
    return source;
}

void ImageSource::fetch(int x, int y, size_t n, uint32_t* rgba) {
    if (m_copies) return copyRow(x, y, n, rgba);
    const CGPoint first = CGPointApplyAffineTransform({x + 0.5, y + 0.5}, m_toImage);
    for (size_t i = 0; i < n; ++i) {
        const double u = first.x + m_toImage.a * static_cast<double>(i);
        const double v = first.y + m_toImage.b * static_cast<double>(i);
        rgba[i] = m_smooth ? average(u, v) : nearest(u, v);
    }
}

// As in averages, pixels past the image take the colour of its outermost pixels.
void ImageSource::copyRow(int x, int y, size_t n, uint32_t* rgba) const {
    const int width = static_cast<int>(m_image.width()), height = static_cast<int>(m_image.height());
    const int v = std::clamp(y + static_cast<int>(std::nearbyint(m_toImage.ty)), 0, height - 1);
    const int u = x + static_cast<int>(std::nearbyint(m_toImage.tx));
    const int count = static_cast<int>(n);
    const int before = std::clamp(-u, 0, count);
    const int inside = std::clamp(width - std::max(u, 0), 0, count - before);
    const auto read = [&](int from, int many, uint32_t* to) {
        readRow(m_image, static_cast<size_t>(v), static_cast<size_t>(from), static_cast<size_t>(many), to);
    };
    if (inside > 0) read(std::max(u, 0), inside, rgba + before);
    uint32_t edge = 0;
    if (before > 0) {
        read(0, 1, &edge);
        std::fill_n(rgba, before, edge);
    }
    if (before + inside < count) {
        read(width - 1, 1, &edge);
        std::fill(rgba + before + inside, rgba + count, edge);
    }
}

uint32_t ImageSource::average(double u, double v) const {
    const Interval columns(u, m_halfU, static_cast<int>(m_image.width()));
    const Interval rows(v, m_halfV, static_cast<int>(m_image.height()));
    Sum sum;
    for (int y = rows.first; y <= rows.last; ++y) {
        const double rowWeight = rows.weight(y);
        for (int x = columns.first; x <= columns.last; ++x)
            sum.add(pixel(x, y), rowWeight * columns.weight(x));
    }
    return sum.over((columns.to - columns.from) * (rows.to - rows.from));
}

uint32_t ImageSource::nearest(double u, double v) const {
    const int width = static_cast<int>(m_image.width()), height = static_cast<int>(m_image.height());
    return pixel(floorClamped(u, 0, width - 1), floorClamped(v, 0, height - 1));
}

} // namespace ozcg
