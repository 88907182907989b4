#pragma once

#include <Ozmira/ozmDimension.h>
#include <Ozmira/ozmStyle.h>
#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <vector>

namespace ozm {

/// A linear or radial gradient. A coordinate that was not given is 0 `PX`; `units` says what they all refer
/// to.
struct Gradient {
    enum class Type : uint32_t { Linear = 0, Radial = 1 };
    enum class Units : uint32_t { UserSpaceOnUse = 0, ObjectBoundingBox = 1 };
    enum class SpreadMethod : uint32_t { Pad = 0, Reflect = 1, Repeat = 2 };

    struct Stop {
        double offset = 0;       ///< As written, 1 being the end: neither clamped nor sorted.
        Color color{0, 0, 0, 1}; ///< `a` is the stop's opacity.
    };

    static constexpr Dimension kZero{Dimension::Unit::PX, 0};

    Type type = Type::Linear;
    Units units = Units::ObjectBoundingBox;
    SpreadMethod spreadMethod = SpreadMethod::Pad;
    Transform transform = TransformIdentity;
    std::vector<Stop> stops;                                  ///< In document order.
    Dimension x1 = kZero, y1 = kZero, x2 = kZero, y2 = kZero; ///< Linear: start and end.
    Dimension cx = kZero, cy = kZero;                         ///< Radial: centre of the end circle.
    Dimension fx = kZero, fy = kZero;                         ///< Radial: focal point.
    Dimension r = kZero;                                      ///< Radial: radius of the end circle.
};

} // namespace ozm
