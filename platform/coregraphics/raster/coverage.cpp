#include "raster/coverage.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace ozcg {

namespace {

// Rounding may put an edge just beyond the right or lower side of the box, and an edge writes up to two cells
// to the right of its last pixel. Sweeps read whole vectors.
constexpr int kPadColumns = 16;
constexpr int kPadRows = 2;
constexpr int kCellsAfterEdge = 3; // that an edge may write from its right end on
constexpr size_t kAlignment = 64;  // of a block of cells

// Edges of a shape with more are not recorded: 16 MB.
constexpr size_t kMaxEdges = size_t{1} << 20;
// The room for edges that is kept for the next shapes.
constexpr size_t kKeptEdges = size_t{1} << 16;

// Grows an array of zeros. Throws std::bad_alloc.
template <typename Array>
void makeRoom(Array& array, size_t& capacity, size_t count) {
    using T = std::remove_reference_t<decltype(array[0])>;
    if (count <= capacity) return;
    array.reset();
    capacity = 0;
    const size_t size = (count * sizeof(T) + kAlignment - 1) / kAlignment * kAlignment;
    void* const p = std::aligned_alloc(kAlignment, size);
    if (!p) throw std::bad_alloc();
    std::memset(p, 0, size);
    array.reset(static_cast<T*>(p));
    capacity = count;
}

} // namespace

void CoverageAccumulator::Free::operator()(void* p) const { std::free(p); }

void CoverageAccumulator::begin(const IntRect& box, Sampling sampling) {
    if (m_endRow > 0) discard(); // left by a shape that was abandoned
    if (m_edges.size() > kKeptEdges) {
        m_edges = {};
        m_resolver = {};
    }
    m_edgeCount = 0;
    m_missesEdges = m_doubtsSums = false;
    m_sampling = sampling;
    const int width = std::max(box.width(), 0), height = std::max(box.height(), 0);
    constexpr int kBlock = 1 << kBlockShift;
    const int blocks = (width + kPadColumns + kBlock - 1) / kBlock;
    m_stride = static_cast<size_t>(blocks) * kBlock;
    m_wordsPerRow = static_cast<size_t>((blocks + 63) / 64);
    const size_t rows = static_cast<size_t>(height) + kPadRows;
    makeRoom(m_cells, m_cellCapacity, rows * m_stride);
    makeRoom(m_words, m_wordCapacity, rows * m_wordsPerRow);
    m_interrupt.restart();
    m_box = box;
    m_width = width;
    m_height = height;
    m_firstRow = height + kPadRows;
    m_endRow = 0;
}

void CoverageAccumulator::clearRow(int y) {
    constexpr size_t kBlock = size_t{1} << kBlockShift;
    float* cells = row(y);
    for (uint64_t& word : touched(y)) {
        for (uint64_t bits = std::exchange(word, 0); bits; bits &= bits - 1)
            std::memset(cells + static_cast<size_t>(std::countr_zero(bits)) * kBlock, 0,
                        kBlock * sizeof(float));
        cells += 64 * kBlock;
    }
}

void CoverageAccumulator::discardRows(int from) {
    for (int y = from; y < m_endRow; ++y) clearRow(y);
    end();
}

void CoverageAccumulator::beginSweep() {
    m_window.begin(m_firstRow, m_stride);
    if (!mayResolve()) return;
    m_resolver.begin({m_edges.data(), m_edgeCount}, m_height + kPadRows);
    if (m_spanCells.size() < m_stride) m_spanCells.resize(m_stride);
}

void CoverageAccumulator::doubtSums(const IntRect& pixels) {
    if (pixels.empty()) return;
    if (!m_doubtsSums) m_doubted.assign(static_cast<size_t>(m_height), {m_width, 0});
    m_doubtsSums = true;
    for (int y = pixels.y0; y < pixels.y1; ++y) {
        PixelSpan& span = m_doubted[static_cast<size_t>(y)];
        span = {std::min(span.begin, pixels.x0), std::max(span.end, pixels.x1)};
    }
}

bool CoverageAccumulator::beginResolving(int y) {
    return m_resolver.moveTo(y) <= RowResolver::kMaxEdgesInRow;
}

void CoverageAccumulator::resolveSpan(int y, FillRule rule, PixelSpan span, int before) {
    m_resolver.addBoundary(m_spanCells.data(), rule, before);
    const bool isInside = rule == FillRule::evenOdd ? before % 2 != 0 : before != 0;
    float sum = isInside ? 1.0f : 0.0f;
    float* const cells = row(y);
    const uint64_t* const marks = words(y);
    for (int x = span.begin; x < span.end; ++x) {
        sum += std::exchange(m_spanCells[static_cast<size_t>(x)], 0.0f);
        const int block = x >> kBlockShift;
        if (marks[block >> 6] >> (block & 63) & 1) cells[x] = sum;
    }
    std::fill_n(m_spanCells.begin() + span.end, kCellsAfterEdge, 0.0f);
    // An interrupt leaves the cells of spans clean.
    m_interrupt.count(kWorkOfResolvedEdge * static_cast<int64_t>(m_resolver.edgesInRow()) +
                      static_cast<int64_t>(m_resolver.strandsPassed()) / kStrandsPerWork);
}

void CoverageAccumulator::makeRoomForEdges() {
    if (m_edges.size() >= kMaxEdges) {
        m_edgeCount = 0; // from here on they are recorded in vain
        m_missesEdges = true;
    } else {
        m_edges.resize(std::max(size_t{256}, 2 * m_edges.size()));
    }
}

void CoverageAccumulator::addInside(float x0, float y0, float x1, float y1) {
    if (m_sampling == Sampling::centre) return addCentres(x0, y0, x1, y1);
    if (m_edgeCount == m_edges.size()) makeRoomForEdges();
    m_edges[m_edgeCount++] = {x0, y0, x1, y1};
    const int y = static_cast<int>(y0);
    if (y == static_cast<int>(y1)) {
        if (y0 == y1) return;
        m_firstRow = std::min(m_firstRow, y);
        m_endRow = std::max(m_endRow, y + 1);
        addShortEdge(RowCells{row(y), words(y)}, x0, x1, y1 - y0);
    } else if (y0 < y1) {
        addLongEdge(x0, y0, x1, y1, 1.0f);
    } else {
        addLongEdge(x1, y1, x0, y0, -1.0f);
    }
}

// An edge that runs down through several rows.
void CoverageAccumulator::addLongEdge(float x0, float y0, float x1, float y1, float direction) {
    const int first = static_cast<int>(y0);
    int last = static_cast<int>(y1);
    if (static_cast<float>(last) == y1) --last; // the edge ends where that row begins
    m_firstRow = std::min(m_firstRow, first);
    m_endRow = std::max(m_endRow, last + 1);
    RowCells at = {row(first), words(first)};
    if (first == last) return addShortEdge(at, x0, x1, direction * (y1 - y0));

    const size_t stride = m_stride, wordsPerRow = m_wordsPerRow;
    // Two divisions that are independent of each other take 2 % less at 24 px than one that waits for the
    // other.
    const float slope = (x1 - x0) / (y1 - y0), steepness = std::abs((y1 - y0) / (x1 - x0));
    const float inFirst = static_cast<float>(first + 1) - y0, inLast = y1 - static_cast<float>(last);
    const float enter = x0 + slope * inFirst;
    addPiece(at, {x0, enter}, direction * inFirst, steepness);
    const int rows = last - first - 1; // crossed from top to bottom
    m_interrupt.count(rows);
    float x = enter, crossed = 0; // rows crossed, a whole number
    for (int i = 1; i <= rows; ++i) {
        at.cells += stride;
        at.touched += wordsPerRow;
        crossed += 1.0f;
        const float next = enter + slope * crossed;
        const int column = static_cast<int>(x);
        if (column == static_cast<int>(next)) {
            const float moment = direction * (0.5f * (x + next) - static_cast<float>(column));
            at.cells[column] += direction - moment;
            at.cells[column + 1] += moment;
            at.markBoth(column, column + 1);
        } else {
            addPiece(at, {x, next}, direction, steepness);
        }
        x = next;
    }
    at.cells += stride;
    at.touched += wordsPerRow;
    addPiece(at, {x1 - slope * inLast, x1}, direction * inLast, steepness);
}

// The winding of each pixel's centre: an edge changes that of all centres to its right, or on it.
void CoverageAccumulator::addCentres(float x0, float y0, float x1, float y1) {
    const float direction = y0 < y1 ? 1.0f : -1.0f;
    const double top = minOf(y0, y1), bottom = maxOf(y0, y1);
    const int first = static_cast<int>(std::ceil(top - 0.5)), end = static_cast<int>(std::ceil(bottom - 0.5));
    if (first >= end) return;
    m_firstRow = std::min(m_firstRow, first);
    m_endRow = std::max(m_endRow, end);
    m_interrupt.count(end - first);
    const double slope = (double(x1) - double(x0)) / (double(y1) - double(y0));
    for (int y = first; y < end; ++y) {
        const double x =
            std::clamp(x0 + slope * (y + 0.5 - y0), double(minOf(x0, x1)), double(maxOf(x0, x1)));
        const int column = std::max(static_cast<int>(std::ceil(x - 0.5)), 0);
        const RowCells at = {row(y), words(y)};
        at.cells[column] += direction;
        at.mark(column);
    }
}

void CoverageAccumulator::addClipped(double x0, double y0, double x1, double y1) {
    bool up = y0 > y1;
    if (up) {
        std::swap(x0, x1);
        std::swap(y0, y1);
    }
    const double w = m_width, h = m_height;
    if (!(y0 < y1) || y1 <= 0 || y0 >= h || (x0 >= w && x1 >= w)) return;

    // Halved, so that a difference of two huge coordinates does not overflow.
    const double slope = (0.5 * x1 - 0.5 * x0) / (0.5 * y1 - 0.5 * y0);
    const auto xAt = [&](double y) {
        const double x = y - y0 <= y1 - y ? x0 + slope * (y - y0) : x1 - slope * (y1 - y);
        return std::clamp(std::isnan(x) ? 0.0 : x, std::min(x0, x1), std::max(x0, x1));
    };
    const double top = std::max(y0, 0.0), bottom = std::min(y1, h);
    // The y at which it crosses the left and the right side, in ascending order.
    double cut[4] = {top, bottom, bottom, bottom};
    int pieces = 1;
    if (x0 != x1 && slope != 0) {
        double a = y0 - x0 / slope, b = y0 + (w - x0) / slope;
        if (a > b) std::swap(a, b);
        if (a > top && a < bottom) cut[pieces++] = a;
        if (b > top && b < bottom) cut[pieces++] = b;
        cut[pieces] = bottom;
    }
    for (int i = 0; i < pieces; ++i) {
        const double ya = cut[i], yb = cut[i + 1];
        double xa = xAt(ya), xb = xAt(yb);
        const double middle = 0.5 * xa + 0.5 * xb;
        if (!(ya < yb) || middle >= w) continue;
        // A piece to the left of the box covers the whole row.
        xa = middle <= 0 ? 0 : std::clamp(xa, 0.0, w);
        xb = middle <= 0 ? 0 : std::clamp(xb, 0.0, w);
        const float fxa = static_cast<float>(xa), fya = static_cast<float>(ya);
        const float fxb = static_cast<float>(xb), fyb = static_cast<float>(yb);
        if (up)
            addInside(fxb, fyb, fxa, fya);
        else
            addInside(fxa, fya, fxb, fyb);
    }
}

} // namespace ozcg
