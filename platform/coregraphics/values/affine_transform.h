#pragma once

#include <CoreGraphics/CGAffineTransform.h>

#include <optional>

namespace ozcg {

/// The inverse of a matrix; nothing when the matrix is singular, or when it or its inverse is not finite.
std::optional<CGAffineTransform> inverted(const CGAffineTransform& t) noexcept;

} // namespace ozcg
