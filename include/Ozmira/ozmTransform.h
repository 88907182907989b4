#pragma once

#include <Ozmira/OzmiraExport.h>
#include <Ozmira/ozmRecordMemory.h>

namespace ozm {

/// Two components: a point, a size or a pair of radii.
template <typename T>
struct TVec2 {
    T x;
    T y;

    bool operator==(const TVec2&) const = default;
};

} // namespace ozm

OZM_RECORD(ozm::TVec2<double>);

namespace ozm {

/// A rectangle in user units. Width and height may be negative.
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

/// The transform that leaves every point where it is.
inline constexpr Transform TransformIdentity{1, 0, 0, 1, 0, 0};

/// Returns the transform that applies `n` to a point first, then `m` to the result.
OZM_CXX_EXPORT Transform TransformConcat(const Transform& n, const Transform& m);

} // namespace ozm
