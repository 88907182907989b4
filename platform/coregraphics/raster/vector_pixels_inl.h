// Arithmetic on vectors of premultiplied 8-bit pixels.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_VECTOR_PIXELS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_VECTOR_PIXELS_INL_H_
#undef OZCG_RASTER_VECTOR_PIXELS_INL_H_
#else
#define OZCG_RASTER_VECTOR_PIXELS_INL_H_
#endif

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t kNarrow = 4; // pixels of the smallest vector

// The four 8-bit components of a pixel as two pairs of 16-bit lanes: the even bytes, and the odd ones shifted
// down.
template <class D16>
using Lanes16 = hn::Vec<D16>;

template <class D16>
HWY_INLINE Lanes16<D16> EvenBytes(D16 d, Lanes16<D16> v) {
    return hn::And(v, hn::Set(d, uint16_t{0xFF}));
}

// v / 255, rounded to nearest, in the upper byte, for v up to 255 * 255. The lower byte is not meaningful.
template <class D16>
HWY_INLINE Lanes16<D16> Times256Div255(D16 d, Lanes16<D16> v) {
    v = hn::Add(v, hn::Set(d, uint16_t{128}));
    return hn::Add(v, hn::ShiftRight<8>(v));
}

// v / 255, rounded to nearest, for v up to 255 * 255.
template <class D16>
HWY_INLINE Lanes16<D16> Div255(D16 d, Lanes16<D16> v) {
    return hn::ShiftRight<8>(Times256Div255(d, v));
}

// A source that is to be composited: its components and what it lets through of the backdrop, in 1/255.
template <class D16>
struct WeightedSource {
    Lanes16<D16> even, odd, inverseAlpha;
};

// A source with the components `even` and `odd` and the given alpha, weighted by coverage.
template <bool kOpaque, class D16>
HWY_INLINE WeightedSource<D16> Weighted(D16 d, Lanes16<D16> even, Lanes16<D16> odd, Lanes16<D16> alpha,
                                        Lanes16<D16> coverage) {
    const auto full = hn::Set(d, uint16_t{255});
    even = hn::Mul(even, coverage);
    odd = hn::Mul(odd, coverage);
    if constexpr (kOpaque) return {even, odd, hn::Sub(full, coverage)};
    // Rounded first, so that no component exceeds alpha.
    return {hn::Mul(Div255(d, even), full), hn::Mul(Div255(d, odd), full),
            hn::Sub(full, Div255(d, hn::Mul(alpha, coverage)))};
}

// Source-over, rounded once.
template <class D16>
HWY_INLINE Lanes16<D16> Over(D16 d, const WeightedSource<D16>& source, Lanes16<D16> backdrop) {
    const auto even = hn::Add(source.even, hn::Mul(EvenBytes(d, backdrop), source.inverseAlpha));
    const auto odd = hn::Add(source.odd, hn::Mul(hn::ShiftRight<8>(backdrop), source.inverseAlpha));
    return hn::OrAnd(Div255(d, even), Times256Div255(d, odd), hn::Set(d, uint16_t{0xFF00}));
}

// Calls kernel(d8, pointer to a vector of pixels) over n pixels. The last ones go through a copy where they
// do not fill a vector. The compositing of rows has a loop of its own: one that serves both takes 5 % longer
// at 1,024 px.
template <class Kernel>
HWY_INLINE void ForPixels(uint8_t* pixels, size_t n, Kernel&& kernel) {
    const hn::ScalableTag<uint8_t> wide;
    const hn::FixedTag<uint8_t, 4 * kNarrow> narrow;
    const size_t step = hn::Lanes(wide) / 4;
    size_t i = 0;
    for (; i + step <= n; i += step) kernel(wide, pixels + 4 * i);
    for (; i + kNarrow <= n; i += kNarrow) kernel(narrow, pixels + 4 * i);
    if (i < n) {
        alignas(16) uint8_t rest[4 * kNarrow] = {};
        std::memcpy(rest, pixels + 4 * i, 4 * (n - i));
        kernel(narrow, rest);
        std::memcpy(pixels + 4 * i, rest, 4 * (n - i));
    }
}

void FillPixels(uint8_t* pixels, size_t n, uint32_t color) {
    ForPixels(pixels, n, [&](auto d8, uint8_t* p) {
        const hn::Repartition<uint32_t, decltype(d8)> d32;
        hn::StoreU(hn::BitCast(d8, hn::Set(d32, color)), d8, p);
    });
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
