// The sweep that composites one colour.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_SOLID_SWEEP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_SOLID_SWEEP_INL_H_
#undef OZCG_RASTER_SOLID_SWEEP_INL_H_
#else
#define OZCG_RASTER_SOLID_SWEEP_INL_H_
#endif

#include "raster/row_walk_inl.h"
#include "raster/solid_pixel.h"
#include "raster/vector_pixels_inl.h"

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

/// Composites one colour over a row of pixels.
template <bool kOpaque>
class SolidSink {
public:
    SolidSink(const SolidPixel& color, int width) : m_color(color), m_width(width) {
        const auto bytes = hn::BitCast(D16(), hn::Set(hn::Rebind<uint32_t, Floats>(), color.bytes));
        m_even = EvenBytes(D16(), bytes);
        m_odd = hn::ShiftRight<8>(bytes);
        m_alpha = hn::Set(D16(), color.alpha);
    }

    /// `ahead`: a later row, to be prefetched.
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
        for (size_t i = 0; i < kGroups; ++i) {
            uint8_t* const group = pixels + 4 * kGroup * i;
            hn::StoreU(mix(hn::LoadU(D8(), group), alphas[i]), D8(), group);
        }
    }

private:
    using D8 = hn::Repartition<uint8_t, Ints>;
    using D16 = hn::Repartition<uint16_t, Ints>;

    /// The first n pixels of a block that extends past the end of the row.
    HWY_INLINE void mixFirst(uint8_t* pixels, size_t n, const hn::Vec<Ints> (&alphas)[kGroups]) const {
        // AVX2 and AVX-512 do not access lanes that are masked out. A copy would cost 2 to 3 % at 24 and 72
        // px.
        if constexpr (kGroup > kNarrow) {
            const hn::Rebind<uint32_t, Ints> d32;
            for (size_t i = 0; i < kGroups && n > i * kGroup; ++i) {
                const auto some = hn::FirstN(d32, n - i * kGroup);
                auto* const group = reinterpret_cast<uint32_t*>(pixels) + i * kGroup;
                const auto under = hn::BitCast(D8(), hn::MaskedLoad(some, d32, group));
                hn::BlendedStore(hn::BitCast(d32, mix(under, alphas[i])), some, d32, group);
            }
        } else {
            alignas(16) uint8_t rest[4 * kBlock] = {};
            std::memcpy(rest, pixels, 4 * n);
            for (size_t i = 0; i < kGroups; ++i) {
                uint8_t* const group = rest + 4 * kGroup * i;
                hn::Store(mix(hn::Load(D8(), group), alphas[i]), D8(), group);
            }
            std::memcpy(pixels, rest, 4 * n);
        }
    }

    HWY_INLINE hn::Vec<D8> mix(hn::Vec<D8> backdrop, hn::Vec<Ints> alphas) const {
        const D16 d;
        const auto coverage = hn::BitCast(d, hn::Or(alphas, hn::ShiftLeft<16>(alphas)));
        const auto source = Weighted<kOpaque>(d, m_even, m_odd, m_alpha, coverage);
        return hn::BitCast(D8(), Over(d, source, hn::BitCast(d, backdrop)));
    }

    // Not inlined: spans are long, and the code of blocks stays small.
    HWY_NOINLINE void mixSpan(uint8_t* pixels, size_t n, uint16_t alpha) const {
        ForPixels(pixels, n, [&](auto d8, uint8_t* p) {
            const hn::Repartition<uint16_t, decltype(d8)> d;
            const hn::Repartition<uint32_t, decltype(d8)> d32;
            const auto color = hn::BitCast(d, hn::Set(d32, m_color.bytes));
            const auto source = Weighted<kOpaque>(d, EvenBytes(d, color), hn::ShiftRight<8>(color),
                                                  hn::Set(d, uint16_t{m_color.alpha}), hn::Set(d, alpha));
            hn::StoreU(hn::BitCast(d8, Over(d, source, hn::BitCast(d, hn::LoadU(d8, p)))), d8, p);
        });
    }

    SolidPixel m_color;
    int m_width;
    uint8_t* m_row = nullptr;
    const uint8_t* m_ahead = nullptr;
    hn::Vec<D16> m_even, m_odd, m_alpha;
};

template <bool kEvenOdd, bool kOpaque>
void SweepSolidRows(CoverageAccumulator& coverage, const SolidPixel& color, uint8_t* topLeft,
                    size_t bytesPerRow) {
    const int width = coverage.width();
    const int end = coverage.endRow() < coverage.height() ? coverage.endRow() : coverage.height();
    SolidSink<kOpaque> sink(color, width);
    coverage.beginSweep();
    for (int y = coverage.firstRow(); y < end; ++y) {
        PrepareRow<kEvenOdd>(coverage, y, end);
        const int ahead = y + kRowsAhead < end ? y + kRowsAhead : y;
        sink.startRow(topLeft + static_cast<size_t>(y) * bytesPerRow,
                      topLeft + static_cast<size_t>(ahead) * bytesPerRow);
        SweepSums<kEvenOdd>(coverage.row(y), coverage.touched(y), width, sink);
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

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
