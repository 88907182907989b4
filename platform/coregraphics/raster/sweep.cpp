#include "raster/sweep.h"

#include "support/vector_targets.h"

#include <atomic>
#include <bit>
#include <cstring>
#include <span>
#include <utility>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "raster/sweep.cpp" // NOLINT
#include <hwy/cache_control.h>
#include <hwy/foreach_target.h> // IWYU pragma: keep
#include <hwy/highway.h>

static_assert(std::endian::native == std::endian::little, "pixels are handled as little-endian words");

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr int kBlock = 1 << kBlockShift;

using Floats = hn::CappedTag<float, kBlock>;
using Ints = hn::Rebind<int32_t, Floats>;

constexpr int kGroup = static_cast<int>(hn::MaxLanes(Floats())); // pixels of a vector
constexpr int kGroups = kBlock / kGroup;
constexpr int kNarrow = 4; // pixels of the smallest vector

// Four 8-bit components are two pairs of 16-bit lanes: the even bytes, and the odd ones shifted down.
template <class D16>
using Lanes16 = hn::Vec<D16>;

template <class D16>
HWY_INLINE Lanes16<D16> EvenBytes(D16 d, Lanes16<D16> v) {
    return hn::And(v, hn::Set(d, uint16_t{0xFF}));
}

// v / 255 to the nearest in the upper byte, for v up to 255 * 255; something else in the lower one.
template <class D16>
HWY_INLINE Lanes16<D16> Times256Div255(D16 d, Lanes16<D16> v) {
    v = hn::Add(v, hn::Set(d, uint16_t{128}));
    return hn::Add(v, hn::ShiftRight<8>(v));
}

// v / 255 to the nearest, for v up to 255 * 255.
template <class D16>
HWY_INLINE Lanes16<D16> Div255(D16 d, Lanes16<D16> v) {
    return hn::ShiftRight<8>(Times256Div255(d, v));
}

// The bytes of `pixels` times `inverse` plus `even` and `odd` (all in 1/255), rounded once.
template <class D16>
HWY_INLINE Lanes16<D16> MixBytes(D16 d, Lanes16<D16> pixels, Lanes16<D16> inverse, Lanes16<D16> even,
                                 Lanes16<D16> odd) {
    const auto lo = Div255(d, hn::Add(even, hn::Mul(EvenBytes(d, pixels), inverse)));
    const auto hi = Times256Div255(d, hn::Add(odd, hn::Mul(hn::ShiftRight<8>(pixels), inverse)));
    return hn::OrAnd(lo, hi, hn::Set(d, uint16_t{0xFF00}));
}

// Calls kernel(d8, pointer to whole vectors of pixels) over n pixels, with a copy where the last are too few.
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

// Coverage of summed-up area, 0...255.
template <bool kEvenOdd>
HWY_INLINE hn::Vec<Ints> Alpha(hn::Vec<Floats> area) {
    const Floats d;
    area = hn::Abs(area);
    if constexpr (kEvenOdd) {
        // A zigzag between 0 and 1.
        const auto two = hn::Set(d, 2.0f);
        const auto turns = hn::ConvertTo(d, hn::ConvertTo(Ints(), hn::Mul(area, hn::Set(d, 0.5f))));
        area = hn::NegMulAdd(turns, two, area);
        area = hn::Min(area, hn::Sub(two, area));
    }
    // The floats from 2^23 to 2^24 are the integers, to the nearest of which a sum is rounded.
    const auto scaled = hn::Mul(hn::Min(area, hn::Set(d, 1.0f)), hn::Set(d, 255.0f));
    const auto alpha = hn::Add(scaled, hn::Set(d, 8388608.0f));
    return hn::And(hn::BitCast(Ints(), alpha), hn::Set(Ints(), 255));
}

// Sums along a vector; `total` becomes the sum of all of it in every lane.
HWY_INLINE hn::Vec<Floats> SumUp(hn::Vec<Floats> v, hn::Vec<Floats>& total) {
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

// Turns the sums along the vectors of a block into sums along the block, and gives the sum of all of it. The
// order of additions is that of the widest vector, so that all instruction sets draw the same.
HWY_INLINE hn::Vec<Floats> SumUpBlock(hn::Vec<Floats> (&sums)[kGroups], hn::Vec<Floats> (&totals)[kGroups]) {
    for (int step = 1; step < kGroups; step *= 2) {
        for (int first = 0; first < kGroups; first += 2 * step) {
            for (int i = first + step; i < first + 2 * step; ++i) sums[i] = hn::Add(sums[i], totals[first]);
            totals[first] = hn::Add(totals[first], totals[first + step]);
        }
    }
    return totals[0];
}

constexpr int kRowsAhead = 8; // that cells and pixels are fetched into the cache

// Walks one row: sink.span(x0, x1, alpha) for constant stretches, sink.block(x, alphas) for the pixels of a
// block. `ahead` are the cells of a row to come.
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
            // Edges go on from row to row, which is too far apart for the machine to foresee.
            hwy::Prefetch(ahead + x);
            hn::Vec<Floats> sums[kGroups], totals[kGroups];
            for (int i = 0; i < kGroups; ++i) {
                sums[i] = SumUp(hn::Load(d, c + i * kGroup), totals[i]);
                hn::Store(zero, d, c + i * kGroup);
            }
            const auto total = SumUpBlock(sums, totals);
            if (x >= width) continue;
            sink.prefetch(x);
            if (x > at) sink.span(at, x, hn::GetLane(Alpha<kEvenOdd>(sum)));
            hn::Vec<Ints> alphas[kGroups];
            for (int i = 0; i < kGroups; ++i) alphas[i] = Alpha<kEvenOdd>(hn::Add(sums[i], sum));
            sum = hn::Add(sum, total);
            sink.block(x, alphas);
            at = x + kBlock;
        }
        origin += 64 * kBlock;
    }
    if (at < width) sink.span(at, width, hn::GetLane(Alpha<kEvenOdd>(sum)));
}

template <bool kOpaque>
class SolidSink {
public:
    SolidSink(const SolidPixel& color, int width) : m_color(color), m_width(width) {
        const auto bytes = hn::BitCast(D16(), hn::Set(hn::Rebind<uint32_t, Floats>(), color.bytes));
        m_even = EvenBytes(D16(), bytes);
        m_odd = hn::ShiftRight<8>(bytes);
        m_alpha = hn::Set(D16(), color.alpha);
    }

    /// `ahead`: a row to come.
    void startRow(uint8_t* row, const uint8_t* ahead) {
        m_row = row;
        m_ahead = ahead;
    }

    HWY_INLINE void prefetch(int x) const { hwy::Prefetch(m_ahead + 4 * static_cast<size_t>(x)); }

    HWY_INLINE void span(int x0, int x1, int alpha) {
        if (alpha == 0) return;
        uint8_t* const pixels = m_row + 4 * static_cast<size_t>(x0);
        const auto n = static_cast<size_t>(x1 - x0);
        if (kOpaque && alpha == 255) return FillPixels(pixels, n, m_color.bytes);
        mixSpan(pixels, n, static_cast<uint16_t>(alpha));
    }

    HWY_INLINE void block(int x, const hn::Vec<Ints> (&alphas)[kGroups]) {
        uint8_t* const pixels = m_row + 4 * static_cast<size_t>(x);
        if (x + kBlock > m_width) return mixFirst(pixels, static_cast<size_t>(m_width - x), alphas);
        for (int i = 0; i < kGroups; ++i) {
            uint8_t* const group = pixels + 4 * kGroup * i;
            hn::StoreU(mix(hn::LoadU(D8(), group), alphas[i]), D8(), group);
        }
    }

private:
    using D8 = hn::Repartition<uint8_t, Ints>;
    using D16 = hn::Repartition<uint16_t, Ints>;

    /// The first n pixels of a block that reaches beyond the row.
    HWY_INLINE void mixFirst(uint8_t* pixels, size_t n, const hn::Vec<Ints> (&alphas)[kGroups]) const {
        if constexpr (kGroup > kNarrow) { // AVX2 and AVX-512, which touch nothing that is masked out
            constexpr size_t kStep = kGroup;
            const hn::Rebind<uint32_t, Ints> d32;
            for (size_t i = 0; i < kGroups && n > i * kStep; ++i) {
                const auto some = hn::FirstN(d32, n - i * kStep);
                auto* const group = reinterpret_cast<uint32_t*>(pixels) + i * kStep;
                const auto under = hn::BitCast(D8(), hn::MaskedLoad(some, d32, group));
                hn::BlendedStore(hn::BitCast(d32, mix(under, alphas[i])), some, d32, group);
            }
        } else {
            alignas(16) uint8_t rest[4 * kBlock] = {};
            std::memcpy(rest, pixels, 4 * n);
            for (int i = 0; i < kGroups; ++i) {
                uint8_t* const group = rest + 4 * kGroup * i;
                hn::Store(mix(hn::Load(D8(), group), alphas[i]), D8(), group);
            }
            std::memcpy(pixels, rest, 4 * n);
        }
    }

    HWY_INLINE hn::Vec<D8> mix(hn::Vec<D8> pixels, hn::Vec<Ints> alphas) const {
        const D16 d;
        const auto under = hn::BitCast(d, pixels);
        const auto alpha = hn::BitCast(d, hn::Or(alphas, hn::ShiftLeft<16>(alphas)));
        const auto all = hn::Set(d, uint16_t{255});
        auto even = hn::Mul(m_even, alpha), odd = hn::Mul(m_odd, alpha), inverse = hn::Sub(all, alpha);
        if constexpr (!kOpaque) {
            even = hn::Mul(Div255(d, even), all);
            odd = hn::Mul(Div255(d, odd), all);
            inverse = hn::Sub(all, Div255(d, hn::Mul(m_alpha, alpha)));
        }
        return hn::BitCast(D8(), MixBytes(d, under, inverse, even, odd));
    }

    HWY_NOINLINE void mixSpan(uint8_t* pixels, size_t n, uint16_t alpha) const {
        ForPixels(pixels, n, [&](auto d8, uint8_t* p) {
            const hn::Repartition<uint16_t, decltype(d8)> d;
            const hn::Repartition<uint32_t, decltype(d8)> d32;
            const auto color = hn::BitCast(d, hn::Set(d32, m_color.bytes));
            const auto weight = hn::Set(d, alpha), all = hn::Set(d, uint16_t{255});
            auto even = hn::Mul(EvenBytes(d, color), weight), odd = hn::Mul(hn::ShiftRight<8>(color), weight);
            auto inverse = hn::Sub(all, weight);
            if constexpr (!kOpaque) {
                even = hn::Mul(Div255(d, even), all);
                odd = hn::Mul(Div255(d, odd), all);
                inverse = hn::Sub(all, Div255(d, hn::Mul(hn::Set(d, uint16_t{m_color.alpha}), weight)));
            }
            const auto under = hn::BitCast(d, hn::LoadU(d8, p));
            hn::StoreU(hn::BitCast(d8, MixBytes(d, under, inverse, even, odd)), d8, p);
        });
    }

    SolidPixel m_color;
    int m_width;
    uint8_t* m_row = nullptr;
    const uint8_t* m_ahead = nullptr;
    hn::Vec<D16> m_even, m_odd, m_alpha;
};

class CoverageSink {
public:
    explicit CoverageSink(uint8_t* out) : m_out(out) {}

    HWY_INLINE void prefetch(int) const {}

    HWY_INLINE void span(int x0, int x1, int alpha) {
        if (alpha == 0 && m_range.empty()) return;
        std::memset(m_out + x0, alpha, static_cast<size_t>(x1 - x0));
        if (alpha != 0) extend(x0, x1);
    }

    HWY_INLINE void block(int x, const hn::Vec<Ints> (&alphas)[kGroups]) {
        const hn::Rebind<uint8_t, Ints> d8;
        for (int i = 0; i < kGroups; ++i) hn::StoreU(hn::DemoteTo(d8, alphas[i]), d8, m_out + x + kGroup * i);
        auto any = alphas[0];
        for (int i = 1; i < kGroups; ++i) any = hn::Or(any, alphas[i]);
        if (!hn::AllTrue(Ints(), hn::Eq(any, hn::Zero(Ints()))) || !m_range.empty()) extend(x, x + kBlock);
    }

    ColumnRange range(int width) const { return {m_range.begin, m_range.end < width ? m_range.end : width}; }

private:
    void extend(int x0, int x1) {
        if (m_range.empty()) m_range.begin = x0;
        m_range.end = x1;
    }

    uint8_t* m_out;
    ColumnRange m_range;
};

template <bool kEvenOdd, bool kOpaque>
void SweepSolidRows(CoverageAccumulator& coverage, const SolidPixel& color, uint8_t* topLeft,
                    size_t bytesPerRow) {
    const int width = coverage.width();
    const int end = coverage.endRow() < coverage.height() ? coverage.endRow() : coverage.height();
    SolidSink<kOpaque> sink(color, width);
    for (int y = coverage.firstRow(); y < end; ++y) {
        const int ahead = y + kRowsAhead < end ? y + kRowsAhead : y;
        sink.startRow(topLeft + static_cast<size_t>(y) * bytesPerRow,
                      topLeft + static_cast<size_t>(ahead) * bytesPerRow);
        SweepCells<kEvenOdd>(coverage.row(y), coverage.row(ahead), coverage.touched(y), width, sink);
    }
}

void SweepSolid(CoverageAccumulator& coverage, FillRule rule, const SolidPixel& color, uint8_t* topLeft,
                size_t bytesPerRow) {
    const bool opaque = color.alpha == 255;
    if (rule == FillRule::evenOdd) {
        if (opaque)
            SweepSolidRows<true, true>(coverage, color, topLeft, bytesPerRow);
        else
            SweepSolidRows<true, false>(coverage, color, topLeft, bytesPerRow);
    } else {
        if (opaque)
            SweepSolidRows<false, true>(coverage, color, topLeft, bytesPerRow);
        else
            SweepSolidRows<false, false>(coverage, color, topLeft, bytesPerRow);
    }
}

ColumnRange SweepRow(CoverageAccumulator& coverage, int y, FillRule rule, uint8_t* out) {
    CoverageSink sink(out);
    float* const cells = coverage.row(y);
    const float* const ahead = coverage.row(y + kRowsAhead < coverage.height() ? y + kRowsAhead : y);
    if (rule == FillRule::evenOdd)
        SweepCells<true>(cells, ahead, coverage.touched(y), coverage.width(), sink);
    else
        SweepCells<false>(cells, ahead, coverage.touched(y), coverage.width(), sink);
    return sink.range(coverage.width());
}

template <class D8>
HWY_INLINE void CompositeVector(D8 d8, uint8_t* dst, const uint8_t* src, const uint8_t* coverage,
                                int alphaShift) {
    const hn::Repartition<uint16_t, D8> d;
    const hn::Repartition<uint32_t, D8> d32;
    const hn::Rebind<uint8_t, decltype(d32)> dCoverage;
    const auto all = hn::Set(d, uint16_t{255});
    const auto pixels = hn::LoadU(d8, src);
    const auto twice = [&](auto v) { return hn::BitCast(d, hn::Or(v, hn::ShiftLeft<16>(v))); };
    auto alpha = twice(hn::And(hn::ShiftRightSame(hn::BitCast(d32, pixels), alphaShift), hn::Set(d32, 255u)));
    auto even = EvenBytes(d, hn::BitCast(d, pixels)), odd = hn::ShiftRight<8>(hn::BitCast(d, pixels));
    if (coverage) {
        const auto weight = twice(hn::PromoteTo(d32, hn::LoadU(dCoverage, coverage)));
        even = Div255(d, hn::Mul(even, weight));
        odd = Div255(d, hn::Mul(odd, weight));
        alpha = Div255(d, hn::Mul(alpha, weight));
    }
    const auto under = hn::BitCast(d, hn::LoadU(d8, dst));
    const auto mixed = MixBytes(d, under, hn::Sub(all, alpha), hn::Mul(even, all), hn::Mul(odd, all));
    hn::StoreU(hn::BitCast(d8, mixed), d8, dst);
}

void CompositeRow(uint8_t* dst, const uint8_t* src, const uint8_t* coverage, size_t n, int alphaShift) {
    const hn::ScalableTag<uint8_t> wide;
    const hn::FixedTag<uint8_t, 4 * kNarrow> narrow;
    const size_t step = hn::Lanes(wide) / 4;
    size_t i = 0;
    const auto weights = [&] { return coverage ? coverage + i : nullptr; };
    for (; i + step <= n; i += step) CompositeVector(wide, dst + 4 * i, src + 4 * i, weights(), alphaShift);
    for (; i + kNarrow <= n; i += kNarrow)
        CompositeVector(narrow, dst + 4 * i, src + 4 * i, weights(), alphaShift);
    if (i < n) {
        alignas(16) uint8_t over[4 * kNarrow] = {}, under[4 * kNarrow] = {}, weight[kNarrow] = {};
        std::memcpy(over, src + 4 * i, 4 * (n - i));
        std::memcpy(under, dst + 4 * i, 4 * (n - i));
        if (coverage) std::memcpy(weight, coverage + i, n - i);
        CompositeVector(narrow, under, over, coverage ? weight : nullptr, alphaShift);
        std::memcpy(dst + 4 * i, under, 4 * (n - i));
    }
}

} // namespace

// There before any constructor of the program runs, which may draw. The name without "N_".
extern const VectorCode kVectorCode;
constinit const VectorCode kVectorCode = {&HWY_STR(HWY_NAMESPACE)[2], SweepSolid, SweepRow, CompositeRow};

} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace ozcg {

std::span<const VectorCode* const> vectorCodes() noexcept {
#if HWY_TARGETS & HWY_AVX3
    static constexpr const VectorCode* kCodes[] = {&N_AVX3::kVectorCode, &N_AVX2::kVectorCode,
                                                   &N_SSE4::kVectorCode, &N_EMU128::kVectorCode};
    return std::span(kCodes).subspan(static_cast<size_t>(ozm::support::FastestVectorTarget()));
#else
    static constexpr const VectorCode* kCodes[] = {&HWY_NAMESPACE::kVectorCode};
    return kCodes;
#endif
}

namespace {

std::atomic<const VectorCode*> chosenCode = nullptr;

const VectorCode& code() noexcept {
    const VectorCode* chosen = chosenCode.load(std::memory_order_relaxed);
    if (!chosen) chosenCode.store(chosen = vectorCodes().front(), std::memory_order_relaxed);
    return *chosen;
}

} // namespace

void chooseVectorCode(const VectorCode* vectorCode) noexcept {
    chosenCode.store(vectorCode, std::memory_order_relaxed);
}

void sweepSolid(CoverageAccumulator& coverage, FillRule rule, const SolidPixel& color, uint8_t* topLeft,
                size_t bytesPerRow) noexcept {
    code().sweepSolid(coverage, rule, color, topLeft, bytesPerRow);
    coverage.discardPadding();
    coverage.end();
}

ColumnRange sweepRow(CoverageAccumulator& coverage, int y, FillRule rule, uint8_t* out) noexcept {
    return code().sweepRow(coverage, y, rule, out);
}

void compositeRow(uint8_t* dst, const uint8_t* src, const uint8_t* coverage, size_t n,
                  int alphaShift) noexcept {
    code().compositeRow(dst, src, coverage, n, alphaShift);
}

} // namespace ozcg
#endif // HWY_ONCE
