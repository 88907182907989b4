#include "geometry/matrix.h"

#include <algorithm>
#include <numbers>

namespace ozm::conform {

Matrix Matrix::Rotation(double radians) {
    const double quarters = radians / (std::numbers::pi / 2);
    if (quarters == std::round(quarters)) {
        constexpr double kSines[] = {0, 1, 0, -1};
        const auto quarter = static_cast<unsigned>(std::fmod(quarters, 4) + 4) % 4;
        const double sine = kSines[quarter], cosine = kSines[(quarter + 1) % 4];
        return {cosine, sine, -sine, cosine, 0, 0};
    }
    const double sine = std::sin(radians), cosine = std::cos(radians);
    return {cosine, sine, -sine, cosine, 0, 0};
}

Matrix Matrix::SkewX(double radians) { return {1, 0, std::tan(radians), 1, 0, 0}; }

Matrix Matrix::SkewY(double radians) { return {1, std::tan(radians), 0, 1, 0, 0}; }

bool IsFinite(const Matrix& m) {
    return std::isfinite(m.a) && std::isfinite(m.b) && std::isfinite(m.c) && std::isfinite(m.d) &&
           std::isfinite(m.e) && std::isfinite(m.f);
}

std::optional<Matrix> Inverse(const Matrix& m) {
    const double determinant = m.Determinant();
    // Relative to the products that it is the difference of: what is smaller is rounding.
    const double size = std::abs(m.a * m.d) + std::abs(m.b * m.c);
    if (!IsFinite(m) || !(std::abs(determinant) > 1e-14 * size) || !std::isfinite(1 / determinant)) return {};
    const double k = 1 / determinant;
    const Matrix inverse{
        m.d * k, -m.b * k, -m.c * k, m.a * k, (m.c * m.f - m.d * m.e) * k, (m.b * m.e - m.a * m.f) * k};
    if (!IsFinite(inverse)) return {};
    return inverse;
}

bool IsUprightScaling(const Matrix& m) { return m.b == 0 && m.c == 0 && m.a > 0 && m.d > 0; }

std::optional<double> SimilarityScale(const Matrix& m) {
    const Point x{m.a, m.b}, y{m.c, m.d};
    const double lengthX = Length(x), lengthY = Length(y);
    constexpr double kTolerance = 1e-7;
    if (!(lengthX > 0) || !(std::abs(lengthX - lengthY) <= kTolerance * lengthX)) return {};
    if (!(std::abs(Dot(x, y)) <= kTolerance * lengthX * lengthY)) return {};
    return lengthX;
}

double LargestScale(const Matrix& m) {
    // The larger singular value.
    const double sum = Length({m.a + m.d, m.b - m.c}), difference = Length({m.a - m.d, m.b + m.c});
    return (sum + difference) / 2;
}

double MeanScale(const Matrix& m) { return std::sqrt(std::abs(m.Determinant())); }

LinearVector MapLinearGradient(const Matrix& matrix, LinearVector vector) {
    const Point start = matrix.Map(vector.start), end = matrix.Map(vector.end);
    const Point stripe = Direction(matrix.MapVector(Perpendicular(vector.end - vector.start)));
    return {start, end - stripe * Dot(end - start, stripe)};
}

} // namespace ozm::conform
