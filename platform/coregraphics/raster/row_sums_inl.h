// From a row's cells to the sums of its pixels, and the search for rows in which sums are not the coverage.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_ROW_SUMS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_ROW_SUMS_INL_H_
#undef OZCG_RASTER_ROW_SUMS_INL_H_
#else
#define OZCG_RASTER_ROW_SUMS_INL_H_
#endif

#include "raster/coverage.h"
#include "raster/span_resolver.h"

#include <bit>
#include <cstdint>
#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr int kBlock = 1 << kBlockShift;

using Floats = hn::CappedTag<float, kBlock>;
using Ints = hn::Rebind<int32_t, Floats>;

constexpr size_t kGroup = hn::MaxLanes(Floats()); // pixels of a vector
constexpr size_t kGroups = kBlock / kGroup;

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

// Sums this close to a whole number count as it.
constexpr float kSumSlack = 1.0f / 64;

// How the sums of a row leave the range between 0 and 1. Where windings of different effect meet,
// neighbouring rows together have two of these, or the last.
constexpr uint32_t kAboveZero = 1, kBelowZero = 2, kBeyondOne = 4;
static_assert(kBeyondOne < 1U << RowWindow::kExcessBits);

// Replaces a row's cells by the sums of its pixels. `ahead` are the cells of a later row, to be prefetched.
HWY_INLINE uint32_t SumRow(CoverageAccumulator& coverage, int y, const float* ahead) {
    const Floats d;
    auto sum = hn::Zero(d), least = sum, greatest = sum;
    float* const row = coverage.row(y);
    int origin = 0;
    for (const uint64_t word : coverage.touched(y)) {
        for (uint64_t bits = word; bits; bits &= bits - 1) {
            const int x = origin + (std::countr_zero(bits) << kBlockShift);
            float* const c = row + x;
            // Most edges continue in the next rows, too far away in memory for the hardware's prefetcher.
            hwy::Prefetch(ahead + x);
            hn::Vec<Floats> sums[kGroups], totals[kGroups];
            for (size_t i = 0; i < kGroups; ++i) sums[i] = PrefixSums(hn::Load(d, c + i * kGroup), totals[i]);
            const auto total = PrefixSumsOfBlock(sums, totals);
            for (size_t i = 0; i < kGroups; ++i) {
                const auto area = hn::Add(sums[i], sum);
                hn::Store(area, d, c + i * kGroup);
                least = hn::Min(least, area);
                greatest = hn::Max(greatest, area);
            }
            sum = hn::Add(sum, total);
        }
        origin += 64 * kBlock;
    }
    const auto any = [&](auto mask, uint32_t bit) { return hn::AllFalse(d, mask) ? 0 : bit; };
    const auto slack = hn::Set(d, kSumSlack), beyond = hn::Set(d, 1 + kSumSlack);
    return any(hn::Gt(greatest, slack), kAboveZero) | any(hn::Lt(least, hn::Neg(slack)), kBelowZero) |
           any(hn::Or(hn::Gt(greatest, beyond), hn::Lt(least, hn::Neg(beyond))), kBeyondOne);
}

// Writes the sums of all pixels of a row, and of one more on either side.
void ExpandRow(CoverageAccumulator& coverage, int y, float* out) {
    const Floats d;
    const int width = coverage.width();
    const float* const cells = coverage.row(y);
    float sum = 0;
    int origin = 0, at = 0;
    const auto fill = [&](int to) {
        for (int x = at; x < to; x += static_cast<int>(kGroup)) hn::StoreU(hn::Set(d, sum), d, out + x);
    };
    for (const uint64_t word : coverage.touched(y)) {
        for (uint64_t bits = word; bits; bits &= bits - 1) {
            const int x = origin + (std::countr_zero(bits) << kBlockShift);
            if (x >= width) continue;
            fill(x);
            for (size_t i = 0; i < kGroups; ++i)
                hn::StoreU(hn::Load(d, cells + x + i * kGroup), d, out + x + i * kGroup);
            sum = cells[x + kBlock - 1];
            at = x + kBlock;
        }
        origin += 64 * kBlock;
    }
    fill(width);
    out[-1] = out[width] = 0; // the box holds the shape, or what is seen of it
}

// Finds the pixels of the middle row that, together with their neighbours, have sums on both sides of a
// winding number at which the coverage does not go on as before: from there on, sums of different windings
// are not the sum of their coverage. Looks at the blocks that edges touch; beyond them, all is as in the last
// pixel before. Calls found(pixel) for each, from left to right.
template <bool kEvenOdd, class Found>
HWY_INLINE void FindMixedWindings(const float* const (&rows)[3], std::span<const uint64_t> touched, int width,
                                  Found&& found) {
    const Floats d;
    const auto slack = hn::Set(d, kSumSlack);
    const auto search = [&](int x) {
        auto least = hn::LoadU(d, rows[0] + x - 1), greatest = least;
        for (const float* const row : rows) {
            for (int i = -1; i <= 1; ++i) {
                const auto sums = hn::LoadU(d, row + x + i);
                least = hn::Min(least, sums);
                greatest = hn::Max(greatest, sums);
            }
        }
        least = hn::Add(least, slack);
        greatest = hn::Sub(greatest, slack);
        auto mix = hn::Gt(hn::Sub(hn::Ceil(greatest), hn::Floor(least)), hn::Set(d, 1.5f));
        if constexpr (!kEvenOdd) {
            const auto across = [&](float winding) {
                const auto at = hn::Set(d, winding);
                return hn::And(hn::Lt(least, at), hn::Gt(greatest, at));
            };
            mix = hn::Or(across(0), hn::Or(across(-1), across(1)));
        }
        if (x + static_cast<int>(kGroup) > width)
            mix = hn::And(mix, hn::FirstN(d, static_cast<size_t>(width - x)));
        if (hn::AllFalse(d, mix)) return;
        uint64_t bits = 0; // one per pixel, the first in the lowest
        hn::StoreMaskBits(d, mix, reinterpret_cast<uint8_t*>(&bits));
        // One by one, so that spans do not depend on the width of vectors.
        for (; bits; bits &= bits - 1) found(x + std::countr_zero(bits));
    };
    int origin = 0;
    for (const uint64_t word : touched) {
        for (uint64_t bits = word; bits; bits &= bits - 1) {
            const int block = origin + (std::countr_zero(bits) << kBlockShift);
            const int end = block + kBlock < width ? block + kBlock : width;
            for (int x = block; x < end; x += static_cast<int>(kGroup)) search(x);
        }
        origin += 64 * kBlock;
    }
}

// Keeps the sums of a row for the search, before they are resolved or swept away.
HWY_NOINLINE void HoldRow(CoverageAccumulator& coverage, int y) {
    RowWindow& window = coverage.window();
    if (window.holds(y)) return;
    ExpandRow(coverage, y, window.sums(y));
    window.setHeld(y);
}

// Resolves a row if windings of different effect may meet in it. The row before is held.
template <bool kEvenOdd>
HWY_NOINLINE void ResolveIfMixed(CoverageAccumulator& coverage, int y, int end) {
    RowWindow& window = coverage.window();
    HoldRow(coverage, y);
    if (y + 1 < end) HoldRow(coverage, y + 1);
    // Beyond the shape all is 0.
    const float* const rows[3] = {y == coverage.firstRow() ? window.zeros() : window.sums(y - 1),
                                  window.sums(y), y + 1 < end ? window.sums(y + 1) : window.zeros()};
    SpanResolver spans(coverage, y, kEvenOdd ? FillRule::evenOdd : FillRule::nonZero, rows[1]);
    if (coverage.doubtsSums()) spans.doubt(coverage.doubted(y));
    FindMixedWindings<kEvenOdd>(rows, coverage.touched(y), coverage.width(),
                                [&](int pixel) { spans.add(pixel); });
    spans.finish();
}

// Makes a row ready for SweepSums(): its cells hold sums, from which the coverage follows. Rows have to be
// prepared from top to bottom; `end` is the one after the last.
template <bool kEvenOdd>
HWY_INLINE void PrepareRow(CoverageAccumulator& coverage, int y, int end) {
    // The search needs the row before and the row after, and those two rows after need this one.
    constexpr int kRowsAfter = 2;
    RowWindow& window = coverage.window();
    for (; window.next <= y + kRowsAfter; ++window.next) {
        if (window.next >= end) {
            window.addExcess(0);
            continue;
        }
        const int ahead = window.next + kRowsAhead < end ? window.next + kRowsAhead : window.next;
        window.addExcess(SumRow(coverage, window.next, coverage.row(ahead)));
    }
    if (!coverage.mayResolve()) return;
    constexpr uint32_t kLeastMixed = kAboveZero | kBelowZero;
    if (window.excess(1) >= kLeastMixed || coverage.doubtsSums())
        ResolveIfMixed<kEvenOdd>(coverage, y, end);
    else if (window.excess(0) >= kLeastMixed)
        HoldRow(coverage, y);
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
