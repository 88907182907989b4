#include "raster/vector_code.h"

#include "raster/color_ramp.h"
#include "raster/composite.h"
#include "raster/sweep.h"
#include "support/vector_targets.h"

#include <atomic>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "raster/vector_code.cpp" // NOLINT: Highway's way to include a file once per target
#include <hwy/foreach_target.h>                     // IWYU pragma: keep
#include <hwy/highway.h>

#include "raster/color_ramp_inl.h"
#include "raster/coverage_sweep_inl.h"
#include "raster/row_compositor_inl.h"
#include "raster/solid_sweep_inl.h"

static_assert(std::endian::native == std::endian::little, "pixels are handled as little-endian words");

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {

// Constant-initialised, because constructors of the program may draw. The name is without its prefix "N_".
extern const VectorCode kVectorCode;
constinit const VectorCode kVectorCode = {&HWY_STR(HWY_NAMESPACE)[2], SweepSolid, SweepRow, CompositeRow,
                                          WriteRamp};

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
                size_t bytesPerRow) {
    code().sweepSolid(coverage, rule, color, topLeft, bytesPerRow);
    coverage.discardPadding();
    coverage.end();
}

ColumnRange sweepRow(CoverageAccumulator& coverage, int y, FillRule rule, uint8_t* out) {
    return code().sweepRow(coverage, y, rule, out);
}

void compositeRow(uint8_t* dst, const uint8_t* src, const uint8_t* coverage, size_t n,
                  int alphaShift) noexcept {
    code().compositeRow(dst, src, coverage, n, alphaShift);
}

void writeRamp(const ColorRamp& ramp, std::span<const double> positions, uint32_t* rgba) noexcept {
    code().writeRamp(ramp, positions.data(), positions.size(), rgba);
}

} // namespace ozcg
#endif // HWY_ONCE
