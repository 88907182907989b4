#include "coverage.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace ozcg {

namespace {

// An edge may stand a rounding error beyond the right or lower side of the box, and writes up to two cells
// to the right of its last pixel; sweeps read whole vectors.
constexpr int kPadColumns = 16;
constexpr int kPadRows = 2;
constexpr size_t kAlignment = 64; // of a block of cells

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

void CoverageAccumulator::begin(const IntRect& box) {
    if (m_endRow > 0) discard(); // a shape that ran out of memory half-way
    const int width = std::max(box.width(), 0), height = std::max(box.height(), 0);
    constexpr int kBlock = 1 << kBlockShift;
    const int blocks = (width + kPadColumns + kBlock - 1) / kBlock;
    m_stride = static_cast<size_t>(blocks * kBlock);
    m_wordsPerRow = static_cast<size_t>((blocks + 63) / 64);
    const auto rows = static_cast<size_t>(height + kPadRows);
    makeRoom(m_cells, m_cellCapacity, rows * m_stride);
    makeRoom(m_words, m_wordCapacity, rows * m_wordsPerRow);
    m_box = box;
    m_width = width;
    m_height = height;
    m_firstRow = height + kPadRows;
    m_endRow = 0;
}

void CoverageAccumulator::discardRows(int from) {
    constexpr size_t kBlock = size_t{1} << kBlockShift;
    for (int y = from; y < m_endRow; ++y) {
        float* cells = row(y);
        for (uint64_t& word : touched(y)) {
            for (uint64_t bits = std::exchange(word, 0); bits; bits &= bits - 1)
                std::memset(cells + static_cast<size_t>(std::countr_zero(bits)) * kBlock, 0, kBlock * sizeof(float));
            cells += 64 * kBlock;
        }
    }
    end();
}

void CoverageAccumulator::markWide(uint64_t* row, int firstBlock, int lastBlock) {
    for (int block = firstBlock; block <= lastBlock; ++block) row[block / 64] |= uint64_t{1} << (block % 64);
}

// A piece of an edge inside one pixel row, from xa to xb, `height` of the row tall (signed). The area to its
// right is a trapezoid in the first and last column and grows linearly in between.
void CoverageAccumulator::addRowPiece(int y, float xa, float xb, float height) {
    float* cells = row(y);
    const float left = xa < xb ? xa : xb, right = xa < xb ? xb : xa;
    const int first = static_cast<int>(left);
    const float start = left - static_cast<float>(first), end = right - static_cast<float>(first);
    if (end <= 1.0f) {
        const float mean = height * (0.5f * (start + end));
        cells[first] += height - mean;
        cells[first + 1] += mean;
        markCells(words(y), first, first + 1);
        return;
    }
    const float perColumn = 1.0f / (end - start);
    const float inFirst = 1.0f - start;
    const float areaFirst = 0.5f * perColumn * inFirst * inFirst;
    int columns = static_cast<int>(end);
    if (static_cast<float>(columns) < end) ++columns;
    const float inLast = end - static_cast<float>(columns - 1);
    const float areaLast = 0.5f * perColumn * inLast * inLast;
    float* c = cells + first;
    c[0] += height * areaFirst;
    if (columns == 2) {
        c[1] += height * (1.0f - areaFirst - areaLast);
    } else {
        const float areaSecond = perColumn * (1.5f - start);
        const float step = height * perColumn;
        c[1] += height * (areaSecond - areaFirst);
        for (int i = 2; i < columns - 1; ++i) c[i] += step;
        const float areaBeforeLast = areaSecond + static_cast<float>(columns - 3) * perColumn;
        c[columns - 1] += height * (1.0f - areaBeforeLast - areaLast);
    }
    c[columns] += height * areaLast;
    markCells(words(y), first, first + columns);
}

// Whole rows [y, end) of an edge that enters row y at x.
void CoverageAccumulator::addSteepRows(int y, int end, float x, float slope, float direction) {
    const float half = 0.5f * direction;
    const float origin = x;
    for (int i = 1; y < end; ++y, ++i) {
        const float next = origin + slope * static_cast<float>(i);
        const int column = static_cast<int>(x);
        if (column == static_cast<int>(next)) {
            const float mean = half * (x + next) - direction * static_cast<float>(column);
            float* c = row(y) + column;
            c[0] += direction - mean;
            c[1] += mean;
            markCells(words(y), column, column + 1);
        } else {
            addRowPiece(y, x, next, direction);
        }
        x = next;
    }
}

void CoverageAccumulator::addInside(float x0, float y0, float x1, float y1) {
    float direction = 1.0f;
    if (y0 > y1) {
        std::swap(x0, x1);
        std::swap(y0, y1);
        direction = -1.0f;
    }
    if (!(y0 < y1)) return;
    int y = static_cast<int>(y0);
    int last = static_cast<int>(y1);
    if (static_cast<float>(last) == y1 && last > y) --last;
    m_firstRow = std::min(m_firstRow, y);
    m_endRow = std::max(m_endRow, last + 1);
    if (y == last) {
        addRowPiece(y, x0, x1, direction * (y1 - y0));
        return;
    }
    const float slope = (x1 - x0) / (y1 - y0);
    const float inFirst = static_cast<float>(y + 1) - y0;
    const float enter = x0 + slope * inFirst;
    addRowPiece(y, x0, enter, direction * inFirst);
    addSteepRows(y + 1, last, enter, slope, direction);
    const float inLast = y1 - static_cast<float>(last);
    addRowPiece(last, x1 - slope * inLast, x1, direction * inLast);
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
    // Where it crosses the left and the right side, in order of y.
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
        // What passes on the left still counts for the whole row.
        xa = middle <= 0 ? 0 : std::clamp(xa, 0.0, w);
        xb = middle <= 0 ? 0 : std::clamp(xb, 0.0, w);
        const float fxa = static_cast<float>(xa), fya = static_cast<float>(ya);
        const float fxb = static_cast<float>(xb), fyb = static_cast<float>(yb);
        if (up) addInside(fxb, fyb, fxa, fya);
        else addInside(fxa, fya, fxb, fyb);
    }
}

} // namespace ozcg
