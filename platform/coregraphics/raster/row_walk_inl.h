// The walk along a row of cells: prefix sums, and from area to coverage.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_ROW_WALK_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_ROW_WALK_INL_H_
#undef OZCG_RASTER_ROW_WALK_INL_H_
#else
#define OZCG_RASTER_ROW_WALK_INL_H_
#endif

#include "raster/coverage.h"

#include <bit>
#include <cstdint>
#include <hwy/cache_control.h>
#include <hwy/highway.h>
#include <span>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr int kBlock = 1 << kBlockShift;

using Floats = hn::CappedTag<float, kBlock>;
using Ints = hn::Rebind<int32_t, Floats>;

constexpr size_t kGroup = hn::MaxLanes(Floats()); // pixels of a vector
constexpr size_t kGroups = kBlock / kGroup;

// The coverage, 0...255, of accumulated areas.
template <bool kEvenOdd>
HWY_INLINE hn::Vec<Ints> Alpha(hn::Vec<Floats> area) {
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
    const auto alpha = hn::Add(scaled, hn::Set(d, 8388608.0f));
    return hn::And(hn::BitCast(Ints(), alpha), hn::Set(Ints(), 255));
}

// The prefix sums of a vector; `total` becomes the sum of all lanes, in every lane.
HWY_INLINE hn::Vec<Floats> PrefixSums(hn::Vec<Floats> v, hn::Vec<Floats>& total) {
    const Floats d;
    v = hn::Add(v, hn::ShiftLeftLanes<1>(d, v));
    v = hn::Add(v, hn::ShiftLeftLanes<2>(d, v));
    total = hn::Broadcast<3>(v); // of every four lanes
    if constexpr (kGroup > 4) {
        const auto swapped = hn::SwapAdjacentBlocks(total);
        v = hn::Add(v, hn::OddEvenBlocks(swapped, hn::Zero(d)));
        total = hn::Add(total, swapped);
    }
    if constexpr (kGroup > 8) {
        v = hn::Add(v, hn::ConcatLowerLower(d, total, hn::Zero(d)));
        total = hn::Add(total, hn::ConcatLowerUpper(d, total, total));
    }
    return v;
}

// Turns the prefix sums of the vectors of a block into those of the block, and returns the sum of the block.
// The order of additions is that of the widest vector, so that all instruction sets draw the same.
HWY_INLINE hn::Vec<Floats> PrefixSumsOfBlock(hn::Vec<Floats> (&sums)[kGroups],
                                             hn::Vec<Floats> (&totals)[kGroups]) {
    for (size_t step = 1; step < kGroups; step *= 2) {
        for (size_t first = 0; first < kGroups; first += 2 * step) {
            for (size_t i = first + step; i < first + 2 * step; ++i)
                sums[i] = hn::Add(sums[i], totals[first]);
            totals[first] = hn::Add(totals[first], totals[first + step]);
        }
    }
    return totals[0];
}

// How many rows before their use cells and pixels are prefetched, which saves 3 to 10 % at 1,024 px.
constexpr int kRowsAhead = 8;

// Walks along one row, clears its cells, and calls sink.span(x0, x1, alpha) for stretches of constant
// coverage and sink.block(x, alphas) for the pixels of a block. `ahead` are the cells of a later row, to be
// prefetched.
template <bool kEvenOdd, class Sink>
HWY_INLINE void SweepCells(float* cells, const float* ahead, std::span<uint64_t> touched, int width,
                           Sink& sink) {
    const Floats d;
    const auto zero = hn::Zero(d);
    auto sum = zero;
    int at = 0, origin = 0;
    for (uint64_t& word : touched) {
        for (uint64_t bits = std::exchange(word, 0); bits; bits &= bits - 1) {
            const int x = origin + (std::countr_zero(bits) << kBlockShift);
            float* const c = cells + x;
            // Most edges continue in the next rows, too far away in memory for the hardware's prefetcher.
            hwy::Prefetch(ahead + x);
            hn::Vec<Floats> sums[kGroups], totals[kGroups];
            for (size_t i = 0; i < kGroups; ++i) {
                sums[i] = PrefixSums(hn::Load(d, c + i * kGroup), totals[i]);
                hn::Store(zero, d, c + i * kGroup);
            }
            const auto total = PrefixSumsOfBlock(sums, totals);
            if (x >= width) continue;
            sink.prefetch(x);
            if (x > at) sink.span(at, x, hn::GetLane(Alpha<kEvenOdd>(sum)));
            hn::Vec<Ints> alphas[kGroups];
            for (size_t i = 0; i < kGroups; ++i) alphas[i] = Alpha<kEvenOdd>(hn::Add(sums[i], sum));
            sum = hn::Add(sum, total);
            sink.block(x, alphas);
            at = x + kBlock;
        }
        origin += 64 * kBlock;
    }
    if (at < width) sink.span(at, width, hn::GetLane(Alpha<kEvenOdd>(sum)));
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
