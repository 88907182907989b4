#pragma once

#include "scene/scene.h"

#include <string>
#include <unordered_map>

namespace ozm::conform {

/// Writes gradients that Ozmira draws like those of a scene: in user space, with all coordinates and stops.
class GradientWriter {
public:
    GradientWriter(const Box& viewBox, int decimals) : m_viewBox(viewBox), m_decimals(decimals) {}

    /// The id of the gradient for use in the coordinates that `inverse` maps those of the drawing to.
    /// Gradients that come out the same are written once.
    const std::string& IdOf(const Gradient& gradient, const Matrix& inverse);

    /// The elements written so far.
    const std::string& Definitions() const { return m_definitions; }

private:
    std::string LinearAttributes(const Gradient& gradient, const Matrix& matrix) const;
    std::string RadialAttributes(const Gradient& gradient, const Matrix& matrix) const;

    const Box m_viewBox;
    const int m_decimals;
    std::unordered_map<std::string, std::string> m_ids; ///< By everything but the id.
    std::string m_definitions;
};

} // namespace ozm::conform
