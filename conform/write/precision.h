#pragma once

#include "geometry/box.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace ozm::conform {

/// Decimals of coordinates: three for a box of 24 units, about as many digits for others, or as chosen.
inline int DecimalsFor(const Box& viewBox, std::optional<int> chosen) {
    if (chosen) return std::clamp(*chosen, 0, 12);
    const double extent = std::max(viewBox.Width(), viewBox.Height());
    if (!(extent > 0)) return 3;
    return std::clamp(3 - static_cast<int>(std::lround(std::log10(extent / 24))), 0, 12);
}

} // namespace ozm::conform
