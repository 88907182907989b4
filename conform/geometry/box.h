#pragma once

#include "geometry/point.h"

#include <algorithm>
#include <limits>

namespace ozm::conform {

/// An upright rectangle by its edges; empty until something is added.
struct Box {
    double left = std::numeric_limits<double>::infinity();
    double top = std::numeric_limits<double>::infinity();
    double right = -std::numeric_limits<double>::infinity();
    double bottom = -std::numeric_limits<double>::infinity();

    static constexpr Box OfSize(double x, double y, double width, double height) {
        return {x, y, x + width, y + height};
    }

    /// True when nothing was added. A box of one point or a line is not empty.
    constexpr bool IsEmpty() const { return !(left <= right && top <= bottom); }
    constexpr double Width() const { return right - left; }
    constexpr double Height() const { return bottom - top; }

    void Add(Point p) {
        left = std::min(left, p.x);
        top = std::min(top, p.y);
        right = std::max(right, p.x);
        bottom = std::max(bottom, p.y);
    }
    void Add(const Box& box) {
        left = std::min(left, box.left);
        top = std::min(top, box.top);
        right = std::max(right, box.right);
        bottom = std::max(bottom, box.bottom);
    }
    /// The box with every edge moved outwards.
    constexpr Box Grown(double by) const {
        return IsEmpty() ? *this : Box{left - by, top - by, right + by, bottom + by};
    }
    /// True when the boxes share more than an edge.
    constexpr bool Overlaps(const Box& box) const {
        return left < box.right && box.left < right && top < box.bottom && box.top < bottom;
    }
    constexpr bool Contains(const Box& box) const {
        return left <= box.left && top <= box.top && right >= box.right && bottom >= box.bottom;
    }

    bool operator==(const Box&) const = default;
};

} // namespace ozm::conform
