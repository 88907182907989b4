// The walk along a row of sums: from area to coverage.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_ROW_WALK_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_ROW_WALK_INL_H_
#undef OZCG_RASTER_ROW_WALK_INL_H_
#else
#define OZCG_RASTER_ROW_WALK_INL_H_
#endif

#include "raster/row_sums_inl.h"

#include <bit>
#include <cstdint>
#include <span>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

// The coverage of accumulated areas, 0...255, in the lowest byte of a float.
template <bool kEvenOdd>
HWY_INLINE hn::Vec<Floats> AlphaBytes(hn::Vec<Floats> area) {
    const Floats d;
    area = hn::Abs(area);
    if constexpr (kEvenOdd) {
        // A triangle wave between 0 and 1.
        const auto two = hn::Set(d, 2.0f);
        const auto periods = hn::ConvertTo(d, hn::ConvertTo(Ints(), hn::Mul(area, hn::Set(d, 0.5f))));
        area = hn::NegMulAdd(periods, two, area);
        area = hn::Min(area, hn::Sub(two, area));
    }
    // Between 2^23 and 2^24 floats are integers, so the addition rounds to nearest: 2 % less at 256 px
    // than a conversion.
    const auto scaled = hn::Mul(hn::Min(area, hn::Set(d, 1.0f)), hn::Set(d, 255.0f));
    return hn::Add(scaled, hn::Set(d, 8388608.0f));
}

// The coverage, 0...255, of accumulated areas.
template <bool kEvenOdd>
HWY_INLINE hn::Vec<Ints> Alphas(hn::Vec<Floats> areas) {
    return hn::And(hn::BitCast(Ints(), AlphaBytes<kEvenOdd>(areas)), hn::Set(Ints(), 255));
}

// The same for one area. Clang 14 for WebAssembly does not come to an end on a lane of integers.
template <bool kEvenOdd>
HWY_INLINE int Alpha(float area) {
    return std::bit_cast<int32_t>(hn::GetLane(AlphaBytes<kEvenOdd>(hn::Set(Floats(), area)))) & 255;
}

// Walks along one row of sums, clears its cells, and calls sink.span(x0, x1, alpha) for stretches of constant
// coverage and sink.block(x, alphas) for the pixels of a block.
template <bool kEvenOdd, class Sink>
HWY_INLINE void SweepSums(float* cells, std::span<uint64_t> touched, int width, Sink& sink) {
    const Floats d;
    const auto zero = hn::Zero(d);
    float sum = 0;
    int at = 0, origin = 0;
    for (uint64_t& word : touched) {
        for (uint64_t bits = std::exchange(word, 0); bits; bits &= bits - 1) {
            const int x = origin + (std::countr_zero(bits) << kBlockShift);
            float* const c = cells + x;
            if (x < width) {
                if (x > at) sink.span(at, x, Alpha<kEvenOdd>(sum));
                sum = c[kBlock - 1];
            }
            hn::Vec<Ints> alphas[kGroups];
            for (size_t i = 0; i < kGroups; ++i) {
                alphas[i] = Alphas<kEvenOdd>(hn::Load(d, c + i * kGroup));
                hn::Store(zero, d, c + i * kGroup);
            }
            if (x >= width) continue;
            sink.prefetch(x);
            sink.block(x, alphas);
            at = x + kBlock;
        }
        origin += 64 * kBlock;
    }
    if (at < width) sink.span(at, width, Alpha<kEvenOdd>(sum));
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
