#pragma once

#include "scene/scene.h"
#include "write/attributes.h"
#include "write/gradient_writer.h"

#include <string>

namespace ozm::conform {

/// A shape as text: its element without style, and its style.
struct WrittenShape {
    std::string element; ///< `path d="..."`, without the angle brackets.
    StyleAttributes style;
    bool hasTransform = false; ///< The element has coordinates of its own.
};

/// Writes shapes of a scene, each with at most one gradient and no dashes.
class ShapeWriter {
public:
    ShapeWriter(GradientWriter& gradients, int decimals, double tolerance)
        : m_gradients(gradients), m_decimals(decimals), m_tolerance(tolerance) {}

    /// Nothing is left of shapes that are too small to be written: their element is empty.
    WrittenShape Write(const Shape& shape);

private:
    void WriteFill(const Shape& shape, const Path& path, const Matrix& inverse, WrittenShape& out);
    void WriteStroke(const Shape& shape, double scale, int decimals, WrittenShape& out);
    std::string PrimitiveElement(const Primitive& primitive, const Matrix& matrix, int decimals) const;

    GradientWriter& m_gradients;
    const int m_decimals;
    const double m_tolerance;
};

} // namespace ozm::conform
