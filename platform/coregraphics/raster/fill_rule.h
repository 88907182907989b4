#pragma once

#include <cstdint>

namespace ozcg {

/// Which winding numbers are inside.
enum class FillRule : uint8_t { nonZero, evenOdd };

} // namespace ozcg
