#include "paint/painter.h"

#include "base/unorm8.h"
#include "paint/blend.h"
#include "path/path_queries.h"
#include "raster/raster_buffers.h"
#include "support/thread_owned.h"

#include <algorithm>
#include <new>

namespace ozcg {

namespace {

RasterBuffers& rasterBuffers() { return ozm::support::ThreadOwned<RasterBuffers>::getOrThrow(); }

/// The colours of the row that is being painted, kept by the thread.
struct SourceRow {
    std::vector<uint32_t> pixels;
};

// The accumulator's limit of 32 MB. Larger shapes are drawn in bands.
constexpr int64_t kMaxCells = int64_t{8} << 20;

// The bounds of a path that is not empty. Not as a CGRect: at great distances origin plus size misses the far
// side.
Bounds boundsOf(const PathData& path) {
    const CGPoint first = path.points().front();
    Bounds b = {first.x, first.y, first.x, first.y};
    for (const CGPoint& p : path.points()) {
        b.x0 = p.x < b.x0 ? p.x : b.x0;
        b.y0 = p.y < b.y0 ? p.y : b.y0;
        b.x1 = p.x > b.x1 ? p.x : b.x1;
        b.y1 = p.y > b.y1 ? p.y : b.y1;
    }
    return b;
}

Bounds grown(const Bounds& b, double by) { return {b.x0 - by, b.y0 - by, b.x1 + by, b.y1 + by}; }

Bounds moved(const Bounds& b, int dx, int dy) { return {b.x0 + dx, b.y0 + dy, b.x1 + dx, b.y1 + dy}; }

// The pixels of `area` that the bounds touch.
IntRect pixelsIn(const Bounds& b, const IntRect& area) {
    return {floorClamped(b.x0, area.x0, area.x1), floorClamped(b.y0, area.y0, area.y1),
            ceilClamped(b.x1, area.x0, area.x1), ceilClamped(b.y1, area.y0, area.y1)};
}

CGAffineTransform fromBox(const IntRect& box) {
    return CGAffineTransformMakeTranslation(-double(box.x0), -double(box.y0));
}

// Calls paint(band) for a box or, when it is large, for bands of it from top to bottom.
template <typename Paint>
void forEachBand(const IntRect& box, Paint&& paint) {
    if (box.empty()) return;
    const auto rows =
        static_cast<int>(std::clamp(kMaxCells / box.width(), int64_t{1}, int64_t{box.height()}));
    for (int y = box.y0; y < box.y1; y += rows) paint(IntRect{box.x0, y, box.x1, std::min(y + rows, box.y1)});
}

Sampling samplingOf(const Compositing& compositing) {
    return compositing.antialias ? Sampling::area : Sampling::centre;
}

template <typename Use>
void accumulateFill(const PathData& path, const IntRect& area, Sampling sampling, Use&& use) {
    if (path.empty()) return;
    const Bounds bounds = boundsOf(path);
    CoverageAccumulator& coverage = rasterBuffers().coverage;
    forEachBand(pixelsIn(bounds, area), [&](const IntRect& band) {
        coverage.begin(band, sampling);
        addFillEdges(coverage, path, fromBox(band), moved(bounds, -band.x0, -band.y0));
        use(coverage);
    });
}

void scale(uint32_t* pixels, size_t n, unsigned alpha) {
    for (size_t i = 0; i < n; ++i) {
        const uint32_t p = pixels[i];
        uint32_t scaled = 0;
        for (int shift = 0; shift < 32; shift += 8)
            scaled |= uint32_t{multiplyUnorm8((p >> shift) & 0xFF, alpha)} << shift;
        pixels[i] = scaled;
    }
}

// Paints n pixels of a row with the given coverage, which does not include the clip yet.
void paintRow(const Surface& surface, const Compositing& compositing, PaintSource& source, int x, int y,
              size_t n, uint8_t* coverage) {
    compositing.clip.apply(y, x, n, coverage);
    std::vector<uint32_t>& row = ozm::support::ThreadOwned<SourceRow>::getOrThrow().pixels;
    if (row.size() < n) row.resize(n);
    source.fetch(x, y, n, row.data());
    const uint8_t alpha = unorm8(compositing.alpha);
    if (alpha != 255) scale(row.data(), n, alpha);
    blendRow(surface.pixel(x, y), row.data(), coverage, n, compositing.mode, surface.order, surface.isOpaque);
}

void paintCoverage(const Surface& surface, const Compositing& compositing, PaintSource& source,
                   CoverageAccumulator& coverage, FillRule rule) {
    const IntRect box = coverage.box();
    uint8_t* const row = rasterBuffers().coverageRowOf(box.width());
    const int end = std::min(coverage.endRow(), coverage.height());
    for (int y = coverage.firstRow(); y < end; ++y) {
        const ColumnRange range = sweepRow(coverage, y, rule, row);
        if (range.empty()) continue;
        paintRow(surface, compositing, source, box.x0 + range.begin, box.y0 + y,
                 static_cast<size_t>(range.end - range.begin), row + range.begin);
    }
    coverage.discardPadding();
    coverage.end();
}

// Paints accumulated shapes in one colour.
class SolidPainter {
public:
    SolidPainter(const Surface& surface, const Compositing& compositing, const Rgba& color)
        : m_surface(surface), m_compositing(compositing),
          m_rgba(premultipliedPixel(color, compositing.alpha)) {}

    /// False when the colour changes nothing.
    bool paintsAnything() const { return m_rgba >> 24 != 0 || m_compositing.mode != kCGBlendModeNormal; }

    void operator()(CoverageAccumulator& coverage, FillRule rule) const {
        const IntRect& box = coverage.box();
        if (m_compositing.mode == kCGBlendModeNormal && m_compositing.clip.containsWhole(box)) {
            const SolidPixel pixel = {reordered(m_rgba, m_surface.order), static_cast<uint8_t>(m_rgba >> 24)};
            sweepSolid(coverage, rule, pixel, m_surface.pixel(box.x0, box.y0), m_surface.bytesPerRow);
        } else {
            SolidSource source(m_rgba);
            Compositing compositing = m_compositing;
            compositing.alpha = 1; // already part of the colour
            paintCoverage(m_surface, compositing, source, coverage, rule);
        }
    }

private:
    const Surface& m_surface;
    const Compositing& m_compositing;
    uint32_t m_rgba;
};

} // namespace

IntRect pixelsInside(const Clip& clip, const PathData& path) {
    return path.empty() ? IntRect() : pixelsIn(boundsOf(path), clip.outer());
}

void fillPath(const Surface& surface, const Compositing& compositing, const PathData& path, FillRule rule,
              const Rgba& color) {
    const SolidPainter paint(surface, compositing, color);
    if (!paint.paintsAnything()) return;
    accumulateFill(path, compositing.clip.outer(), samplingOf(compositing),
                   [&](CoverageAccumulator& coverage) { paint(coverage, rule); });
}

void fillPath(const Surface& surface, const Compositing& compositing, const PathData& path, FillRule rule,
              PaintSource& source) {
    accumulateFill(
        path, compositing.clip.outer(), samplingOf(compositing),
        [&](CoverageAccumulator& coverage) { paintCoverage(surface, compositing, source, coverage, rule); });
}

void strokePath(const Surface& surface, const Compositing& compositing, const PathData& path,
                const LineStyle& style, const CGAffineTransform& ctm, const Rgba& color) {
    const SolidPainter paint(surface, compositing, color);
    if (path.empty() || !paint.paintsAnything()) return;
    const std::optional<StrokeSpace> whole = StrokeSpace::make(style, ctm, CGAffineTransformIdentity);
    if (!whole) return;
    const Bounds bounds = boundsOf(path);
    RasterBuffers& buffers = rasterBuffers();
    forEachBand(pixelsIn(grown(bounds, whole->outset), compositing.clip.outer()), [&](const IntRect& band) {
        buffers.coverage.begin(band, samplingOf(compositing));
        addStrokeEdges(buffers.coverage, path, whole->moved(-band.x0, -band.y0), style,
                       moved(bounds, -band.x0, -band.y0), buffers.edges);
        paint(buffers.coverage, FillRule::nonZero);
    });
}

void paintClip(const Surface& surface, const Compositing& compositing, PaintSource& source) {
    const IntRect& box = compositing.clip.outer();
    if (box.empty()) return;
    const auto n = static_cast<size_t>(box.width());
    uint8_t* const row = rasterBuffers().coverageRowOf(box.width());
    for (int y = box.y0; y < box.y1; ++y) {
        std::fill_n(row, n, uint8_t{255});
        paintRow(surface, compositing, source, box.x0, y, n, row);
    }
}

void clipToPath(Clip& clip, const PathData& path, FillRule rule, bool antialias) {
    CGRect rect;
    if (path.empty()) return clip.makeEmpty();
    if (isRect(path, &rect)) return clip.intersect(rect, antialias);
    const IntRect box = pixelsInside(clip, path);
    if (box.empty()) return clip.makeEmpty();
    const Ref<ClipMask> mask = ClipMask::make(box);
    accumulateFill(path, box, antialias ? Sampling::area : Sampling::centre,
                   [&](CoverageAccumulator& coverage) { clip.writeRows(*mask, coverage, rule); });
    clip.replaceMask(Ref<const ClipMask>::retaining(mask.get()));
}

void trimPaintMemory() noexcept {
    if (RasterBuffers* const buffers = ozm::support::ThreadOwned<RasterBuffers>::existing()) buffers->trim();
    ozm::support::ThreadOwned<SourceRow>::release();
    ClipMask::releaseKept();
}

} // namespace ozcg
