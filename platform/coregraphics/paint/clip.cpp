#include "paint/clip.h"

#include "base/unorm8.h"
#include "raster/raster_buffers.h"
#include "support/thread_owned.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ozcg {

namespace {

// A side this close to a pixel boundary lies on it.
constexpr double kSnap = 1.0 / 512;

double snapped(double side) {
    const double whole = std::nearbyint(side);
    return std::abs(side - whole) < kSnap ? whole : side;
}

// The first pixel whose centre does not lie before a side.
double firstCenterFrom(double side) { return std::ceil(side - 0.5); }

// How much of pixel i an interval covers.
double overlap(int i, double from, double to) {
    return std::clamp(std::min(i + 1.0, to) - std::max(double(i), from), 0.0, 1.0);
}

// The masks that a thread keeps for later clips: as many as clips are usually nested, and none above a size.
constexpr size_t kKeptMasks = 4;
constexpr size_t kLargestKeptMask = size_t{1} << 24;

/// Masks that the thread has made. Those that no clip holds any more are reused.
struct KeptMasks {
    std::vector<Ref<ClipMask>> masks;
};

} // namespace

Ref<ClipMask> ClipMask::make(const IntRect& box) {
    const bool isKept = box.area() <= kLargestKeptMask;
    std::vector<Ref<ClipMask>>& kept = ozm::support::ThreadOwned<KeptMasks>::getOrThrow().masks;
    // The list's own reference is the only one to a mask that no clip holds.
    const auto unused =
        std::find_if(kept.begin(), kept.end(), [](const auto& mask) { return mask->isUnique(); });
    if (isKept && unused != kept.end()) {
        (*unused)->setBox(box);
        return *unused;
    }
    auto mask = Ref<ClipMask>::adopting(new ClipMask);
    mask->setBox(box);
    if (isKept && kept.size() < kKeptMasks) kept.push_back(mask);
    return mask;
}

void ClipMask::releaseKept() noexcept { ozm::support::ThreadOwned<KeptMasks>::release(); }

void ClipMask::setBox(const IntRect& box) {
    const size_t size = box.area();
    if (size > m_capacity) {
        m_capacity = 0;
        m_bytes.reset();
        m_bytes.reset(new uint8_t[size]);
        m_capacity = size;
    }
    m_box = box;
}

Clip::Clip(int width, int height) { setSides(0, 0, width, height); }

void Clip::setSides(double x0, double y0, double x1, double y1) {
    if (!(x0 < x1) || !(y0 < y1)) return makeEmpty();
    m_x0 = x0;
    m_y0 = y0;
    m_x1 = x1;
    m_y1 = y1;
    // The sides lie within a bitmap, so the integers do not overflow.
    m_outer = {static_cast<int>(std::floor(x0)), static_cast<int>(std::floor(y0)),
               static_cast<int>(std::ceil(x1)), static_cast<int>(std::ceil(y1))};
    m_inner = {static_cast<int>(std::ceil(x0)), static_cast<int>(std::ceil(y0)),
               static_cast<int>(std::floor(x1)), static_cast<int>(std::floor(y1))};
    if (m_mask) {
        m_outer = m_outer.intersect(m_mask->box());
        if (m_outer.empty()) makeEmpty();
    }
}

void Clip::intersect(const CGRect& rect, bool antialias) {
    const auto side = [antialias](double at) { return antialias ? snapped(at) : firstCenterFrom(at); };
    const double x0 = side(CGRectGetMinX(rect)), y0 = side(CGRectGetMinY(rect));
    const double x1 = side(CGRectGetMaxX(rect)), y1 = side(CGRectGetMaxY(rect));
    setSides(std::max(m_x0, x0), std::max(m_y0, y0), std::min(m_x1, x1), std::min(m_y1, y1));
}

void Clip::writeRows(ClipMask& mask, CoverageAccumulator& shape, FillRule rule) const {
    const IntRect box = shape.box();
    const auto width = static_cast<size_t>(box.width());
    uint8_t* const line = ozm::support::ThreadOwned<RasterBuffers>::getOrThrow().coverageRowOf(box.width());
    for (int y = 0; y < shape.height(); ++y) {
        uint8_t* const row = mask.row(box.y0 + y) + (box.x0 - mask.box().x0);
        std::memset(row, 0, width);
        if (y < shape.firstRow() || y >= shape.endRow()) continue;
        const ColumnRange range = sweepRow(shape, y, rule, line);
        if (range.empty()) continue;
        const auto begin = static_cast<size_t>(range.begin), n = static_cast<size_t>(range.end - range.begin);
        std::memcpy(row + begin, line + begin, n);
        if (!m_mask) continue;
        const uint8_t* const before = m_mask->row(box.y0 + y) + (box.x0 - m_mask->box().x0);
        for (size_t i = begin; i < begin + n; ++i) row[i] = multiplyUnorm8(row[i], before[i]);
    }
    shape.discardPadding();
    shape.end();
}

void Clip::replaceMask(Ref<const ClipMask> mask) {
    m_mask = std::move(mask);
    setSides(m_x0, m_y0, m_x1, m_y1);
}

void Clip::apply(int y, int x0, size_t n, uint8_t* coverage) const {
    if (m_mask) {
        const uint8_t* const mask = m_mask->row(y) + (x0 - m_mask->box().x0);
        for (size_t i = 0; i < n; ++i) coverage[i] = multiplyUnorm8(coverage[i], mask[i]);
    }
    if (y < m_inner.y0 || y >= m_inner.y1) {
        const unsigned weight = unorm8(overlap(y, m_y0, m_y1));
        for (size_t i = 0; i < n; ++i) coverage[i] = multiplyUnorm8(coverage[i], weight);
    }
    const int x1 = x0 + static_cast<int>(n);
    const auto weightColumn = [&](int x) {
        if (x < x0 || x >= x1 || (x >= m_inner.x0 && x < m_inner.x1)) return;
        uint8_t& c = coverage[x - x0];
        c = multiplyUnorm8(c, unorm8(overlap(x, m_x0, m_x1)));
    };
    const int first = static_cast<int>(std::floor(m_x0)), last = static_cast<int>(std::ceil(m_x1)) - 1;
    weightColumn(first);
    if (last != first) weightColumn(last);
}

} // namespace ozcg
