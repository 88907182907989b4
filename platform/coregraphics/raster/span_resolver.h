#pragma once

#include "raster/coverage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ozcg {

/// Resolves spans of a row, widened up to pixels that no edge crosses. They have to be given from left to
/// right.
class SpanResolver {
public:
    /// `sums`: those of the row's pixels, before any is resolved.
    SpanResolver(CoverageAccumulator& coverage, int y, FillRule rule, const float* sums)
        : m_coverage(coverage), m_y(y), m_rule(rule), m_sums(sums) {}

    /// Has pixels resolved whatever is found. To be called before add().
    void doubt(PixelSpan pixels) { m_doubted = pixels; }
    /// Adds a pixel that was found.
    void add(int pixel) {
        if (pixel >= m_doubted.begin && m_doubted.end > 0) addDoubted();
        if (pixel >= m_span.end) extend(pixel, pixel + 1);
    }
    /// Resolves what has been added.
    void finish() {
        addDoubted();
        resolve();
    }

private:
    // Pixels between two spans for which one is cheaper.
    static constexpr int kNear = 8;
    static constexpr int kMaxTries = 16;
    // Every span costs a walk over all edges of the row, so the last one takes the rest of a long row.
    static constexpr int kMaxSpans = 64;

    void addDoubted() {
        const PixelSpan pixels = std::exchange(m_doubted, {0, 0});
        if (pixels.begin < pixels.end) extend(pixels.begin, pixels.end);
    }
    void extend(int begin, int end) {
        if (m_count == 0 || (begin >= m_span.end + kNear && m_count < kMaxSpans)) {
            resolve();
            ++m_count;
            m_span.begin = begin;
        }
        m_span.end = end;
    }
    void resolve() {
        PixelSpan span = m_span;
        const int least = m_done > 0 ? m_done + 1 : 0; // the pixel after the last span was plain
        span.begin = std::max(span.begin, least);
        if (span.begin >= span.end) return;
        while (span.begin > least && !isPlain(m_sums[span.begin - 1])) --span.begin;
        while (span.end < m_coverage.width() && !isPlain(m_sums[span.end])) ++span.end;
        if (!m_hasBegun) m_canResolve = m_coverage.beginResolving(m_y);
        m_hasBegun = true;
        if (m_canResolve) {
            const int before = enter(span, least);
            m_coverage.resolveSpan(m_y, m_rule, span, before);
        }
        m_done = span.end;
    }
    // Begins a span, moved to the left until no edge crosses its side: a sum may be a whole number by chance.
    // Returns the winding there.
    int enter(PixelSpan& span, int least) {
        for (int tries = 0;; ++tries, --span.begin) {
            if (const auto winding = m_coverage.enterSpan(span)) return *winding;
            if (span.begin == least || tries == kMaxTries) break;
        }
        return span.begin > 0 ? static_cast<int>(std::nearbyint(m_sums[span.begin - 1])) : 0;
    }
    // Whether the sum may be that of a pixel that no edge crosses.
    static bool isPlain(float sum) { return std::abs(sum - std::nearbyint(sum)) < 1.0f / 1024; }

    CoverageAccumulator& m_coverage;
    int m_y;
    FillRule m_rule;
    const float* m_sums;
    PixelSpan m_span{0, 0}, m_doubted{0, 0};
    int m_done = 0, m_count = 0;
    bool m_hasBegun = false, m_canResolve = false;
};

} // namespace ozcg
