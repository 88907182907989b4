#pragma once

#include <algorithm>
#include <cstddef>

namespace ozcg {

/// A half-open box of device pixels; x1 <= x0 or y1 <= y0 means empty. Row 0 is the top row of a bitmap.
struct IntRect {
    int x0 = 0, y0 = 0, x1 = 0, y1 = 0;

    bool empty() const { return x1 <= x0 || y1 <= y0; }
    int width() const { return x1 - x0; }
    int height() const { return y1 - y0; }
    /// In pixels; the box must not be empty.
    size_t area() const { return static_cast<size_t>(width()) * static_cast<size_t>(height()); }
    bool contains(const IntRect& r) const { return r.x0 >= x0 && r.y0 >= y0 && r.x1 <= x1 && r.y1 <= y1; }
    IntRect intersect(const IntRect& r) const {
        return {std::max(x0, r.x0), std::max(y0, r.y0), std::min(x1, r.x1), std::min(y1, r.y1)};
    }
    bool operator==(const IntRect&) const = default;
};

/// floor(v) and ceil(v), clamped to [lo, hi]; `lo` for NaN.
inline int floorClamped(double v, int lo, int hi) {
    if (!(v > lo)) return lo;
    if (v >= hi) return hi;
    const int i = static_cast<int>(v);
    return i > v ? i - 1 : i;
}
inline int ceilClamped(double v, int lo, int hi) {
    if (!(v > lo)) return lo;
    if (v >= hi) return hi;
    const int i = static_cast<int>(v);
    return i < v ? i + 1 : i;
}

} // namespace ozcg
