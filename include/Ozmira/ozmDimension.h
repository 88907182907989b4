#pragma once

#include <cstdint>

namespace ozm {

/// A number and its unit, as written. Units are never converted.
struct Dimension {
    /// The unit of a number. The parser stores `PX` for a missing or unknown unit, and never `None`.
    enum class Unit : int32_t {
        None = 0,
        EM = 1,
        PX = 2,
        PT = 3,
        PC = 4,
        CM = 5,
        MM = 6,
        IN = 7,
        Percent = 8
    };

    Unit unit = Unit::None;
    double value = 0; ///< As written: 50% is 50.

    bool operator==(const Dimension&) const = default;
};

/// Width and height of a document.
struct DimensionSize {
    Dimension width;
    Dimension height;
};

} // namespace ozm
