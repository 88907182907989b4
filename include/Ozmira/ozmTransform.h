#pragma once

#include <Ozmira/ozmRecordMemory.h>

namespace ozm {

/// A pair of components: a point, a size or two radii.
template <typename T>
struct TVec2 {
    T x;
    T y;

    bool operator==(const TVec2&) const = default;
};

} // namespace ozm

OZM_RECORD(ozm::TVec2<double>);

namespace ozm {

/// A rectangle in user units; nothing keeps width and height from being negative.
struct Rectf {
    TVec2<double> origin{};
    TVec2<double> size{}; ///< Width and height.

    bool operator==(const Rectf&) const = default;
};

/// An affine transform that maps (x, y) to (a*x + c*y + tx, b*x + d*y + ty).
struct Transform {
    double a, b, c, d, tx, ty;

    bool operator==(const Transform&) const = default;
};

inline constexpr Transform TransformIdentity{1, 0, 0, 1, 0, 0};

/// The transform that applies `n` to a point first and `m` to the result.
Transform TransformConcat(const Transform& n, const Transform& m);

} // namespace ozm
