// Composites a row of pixels over another.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_ROW_COMPOSITOR_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_ROW_COMPOSITOR_INL_H_
#undef OZCG_RASTER_ROW_COMPOSITOR_INL_H_
#else
#define OZCG_RASTER_ROW_COMPOSITOR_INL_H_
#endif

#include "raster/vector_pixels_inl.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

template <class D8>
HWY_INLINE void CompositeVector(D8 d8, uint8_t* dst, const uint8_t* src, const uint8_t* coverage,
                                int alphaShift) {
    const hn::Repartition<uint16_t, D8> d;
    const hn::Repartition<uint32_t, D8> d32;
    const hn::Rebind<uint8_t, decltype(d32)> dCoverage;
    const auto pixels = hn::LoadU(d8, src);
    const auto twice = [&](auto v) { return hn::BitCast(d, hn::Or(v, hn::ShiftLeft<16>(v))); };
    const auto alpha =
        twice(hn::And(hn::ShiftRightSame(hn::BitCast(d32, pixels), alphaShift), hn::Set(d32, 255u)));
    const auto weight = twice(hn::PromoteTo(d32, hn::LoadU(dCoverage, coverage)));
    const auto source = Weighted<false>(d, EvenBytes(d, hn::BitCast(d, pixels)),
                                        hn::ShiftRight<8>(hn::BitCast(d, pixels)), alpha, weight);
    hn::StoreU(hn::BitCast(d8, Over(d, source, hn::BitCast(d, hn::LoadU(d8, dst)))), d8, dst);
}

void CompositeRow(uint8_t* dst, const uint8_t* src, const uint8_t* coverage, size_t n, int alphaShift) {
    const hn::ScalableTag<uint8_t> wide;
    const hn::FixedTag<uint8_t, 4 * kNarrow> narrow;
    const size_t step = hn::Lanes(wide) / 4;
    size_t i = 0;
    for (; i + step <= n; i += step)
        CompositeVector(wide, dst + 4 * i, src + 4 * i, coverage + i, alphaShift);
    for (; i + kNarrow <= n; i += kNarrow)
        CompositeVector(narrow, dst + 4 * i, src + 4 * i, coverage + i, alphaShift);
    if (i < n) {
        alignas(16) uint8_t over[4 * kNarrow] = {}, under[4 * kNarrow] = {}, weight[kNarrow] = {};
        std::memcpy(over, src + 4 * i, 4 * (n - i));
        std::memcpy(under, dst + 4 * i, 4 * (n - i));
        std::memcpy(weight, coverage + i, n - i);
        CompositeVector(narrow, under, over, weight, alphaShift);
        std::memcpy(dst + 4 * i, under, 4 * (n - i));
    }
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
