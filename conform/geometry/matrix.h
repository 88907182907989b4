#pragma once

#include "geometry/point.h"

#include <optional>

namespace ozm::conform {

/// An affine transform that maps (x, y) to (a*x + c*y + e, b*x + d*y + f).
struct Matrix {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    static constexpr Matrix Translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
    static constexpr Matrix Scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }
    /// Turns from the x axis towards the y axis; `radians` of a quarter turn is exact.
    static Matrix Rotation(double radians);
    static Matrix SkewX(double radians);
    static Matrix SkewY(double radians);

    constexpr Point Map(Point p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
    /// Maps a vector: without the translation.
    constexpr Point MapVector(Point p) const { return {a * p.x + c * p.y, b * p.x + d * p.y}; }
    constexpr double Determinant() const { return a * d - b * c; }

    bool operator==(const Matrix&) const = default;
    /// The transform that applies `second` to a point and then `first`, as nested `transform` attributes do.
    friend constexpr Matrix operator*(const Matrix& first, const Matrix& second) {
        return {first.a * second.a + first.c * second.b,
                first.b * second.a + first.d * second.b,
                first.a * second.c + first.c * second.d,
                first.b * second.c + first.d * second.d,
                first.a * second.e + first.c * second.f + first.e,
                first.b * second.e + first.d * second.f + first.f};
    }
};

bool IsFinite(const Matrix& matrix);

/// The inverse; none where the transform flattens the plane or is not finite.
std::optional<Matrix> Inverse(const Matrix& matrix);

/// True without rotation, skew and mirroring; `a` and `d` are then positive.
bool IsUprightScaling(const Matrix& matrix);

/// The factor by which a similarity (translation, rotation, mirroring, equal scales) stretches every length;
/// none for other transforms.
std::optional<double> SimilarityScale(const Matrix& matrix);

/// The greatest factor by which the transform stretches a length.
double LargestScale(const Matrix& matrix);

/// The factor by which the transform stretches lengths in the geometric mean of all directions.
double MeanScale(const Matrix& matrix);

/// The vector of a linear gradient in the coordinates that `matrix` maps to. The lines of equal colour stay
/// where the transform puts them: the end moves along its line until the vector is at right angles to it.
struct LinearVector {
    Point start, end;
};
LinearVector MapLinearGradient(const Matrix& matrix, LinearVector vector);

} // namespace ozm::conform
