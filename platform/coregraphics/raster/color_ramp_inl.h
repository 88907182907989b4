// The colours of a gradient.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_COLOR_RAMP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_COLOR_RAMP_INL_H_
#undef OZCG_RASTER_COLOR_RAMP_INL_H_
#else
#define OZCG_RASTER_COLOR_RAMP_INL_H_
#endif

#include "raster/color_ramp.h"
#include "raster/row_sums_inl.h"

#include <algorithm>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

// The colours at kGroup positions.
HWY_INLINE hn::Vec<Ints> RampColors(const ColorRamp& ramp, const double* positions) {
    const Floats d;
    // Not in vectors, as WebAssembly's hold no doubles in Highway.
    HWY_ALIGN float fractions[kGroup];
    for (size_t i = 0; i < kGroup; ++i)
        fractions[i] = static_cast<float>((positions[i] - ramp.begin) * ramp.fractionPerPosition);
    const auto fraction = hn::Load(d, fractions);
    const auto component = [&](size_t i) {
        const auto value = hn::Add(hn::Set(d, ramp.color[i]), hn::Mul(hn::Set(d, ramp.change[i]), fraction));
        return hn::Min(hn::Max(value, hn::Zero(d)), hn::Set(d, 1.0f));
    };
    const auto rounded = [&](hn::Vec<Floats> value) {
        return hn::ConvertTo(Ints(), hn::Add(value, hn::Set(d, 0.5f)));
    };
    const auto opacity = hn::Mul(hn::Set(d, 255.0f), component(3));
    auto pixel = hn::Or(rounded(hn::Mul(opacity, component(0))), hn::ShiftLeft<24>(rounded(opacity)));
    pixel = hn::Or(pixel, hn::ShiftLeft<8>(rounded(hn::Mul(opacity, component(1)))));
    return hn::Or(pixel, hn::ShiftLeft<16>(rounded(hn::Mul(opacity, component(2)))));
}

void WriteRamp(const ColorRamp& ramp, const double* positions, size_t n, uint32_t* rgba) {
    auto* const out = reinterpret_cast<int32_t*>(rgba);
    size_t i = 0;
    for (; i + kGroup <= n; i += kGroup) hn::StoreU(RampColors(ramp, positions + i), Ints(), out + i);
    if (i == n) return;
    double rest[kGroup];
    std::copy(positions + i, positions + n, rest);
    std::fill(rest + (n - i), rest + kGroup, ramp.begin);
    int32_t colors[kGroup];
    hn::StoreU(RampColors(ramp, rest), Ints(), colors);
    std::memcpy(rgba + i, colors, (n - i) * sizeof(uint32_t));
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
