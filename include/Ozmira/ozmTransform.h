#pragma once

namespace ozm {

/// A pair of components: a point, a size or two radii.
template <typename T>
struct TVec2 {
    T x;
    T y;

    bool operator==(const TVec2&) const = default;
};

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
constexpr Transform TransformConcat(const Transform& n, const Transform& m) {
    return {n.a * m.a + n.b * m.c, n.a * m.b + n.b * m.d,          n.c * m.a + n.d * m.c,
            n.c * m.b + n.d * m.d, n.tx * m.a + n.ty * m.c + m.tx, n.tx * m.b + n.ty * m.d + m.ty};
}

/// Where `transform` maps `point`.
constexpr TVec2<double> TransformPoint(const Transform& transform, TVec2<double> point) {
    return {transform.a * point.x + transform.c * point.y + transform.tx,
            transform.b * point.x + transform.d * point.y + transform.ty};
}

} // namespace ozm
