// The sweep that writes out the coverage of a row.
//
// Compiled once for each instruction set; to be included by vector_code.cpp alone.
#if defined(OZCG_RASTER_COVERAGE_SWEEP_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef OZCG_RASTER_COVERAGE_SWEEP_INL_H_
#undef OZCG_RASTER_COVERAGE_SWEEP_INL_H_
#else
#define OZCG_RASTER_COVERAGE_SWEEP_INL_H_
#endif

#include "raster/row_walk_inl.h"
#include "raster/sweep.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace ozcg::HWY_NAMESPACE {
namespace {

/// Writes a row's coverage as bytes.
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
        for (size_t i = 0; i < kGroups; ++i)
            hn::StoreU(hn::DemoteTo(d8, alphas[i]), d8, m_out + x + kGroup * i);
        auto any = alphas[0];
        for (size_t i = 1; i < kGroups; ++i) any = hn::Or(any, alphas[i]);
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

ColumnRange SweepRow(CoverageAccumulator& coverage, int y, FillRule rule, uint8_t* out) {
    CoverageSink sink(out);
    const int end = coverage.endRow() < coverage.height() ? coverage.endRow() : coverage.height();
    if (y == coverage.firstRow()) coverage.beginSweep();
    if (rule == FillRule::evenOdd) {
        PrepareRow<true>(coverage, y, end);
        SweepSums<true>(coverage.row(y), coverage.touched(y), coverage.width(), sink);
    } else {
        PrepareRow<false>(coverage, y, end);
        SweepSums<false>(coverage.row(y), coverage.touched(y), coverage.width(), sink);
    }
    return sink.range(coverage.width());
}

} // namespace
} // namespace ozcg::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif // per target
