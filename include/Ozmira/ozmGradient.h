#pragma once

#include <Ozmira/ozmDimension.h>
#include <Ozmira/ozmStyle.h>
#include <Ozmira/ozmTransform.h>

#include <cstdint>
#include <vector>

namespace ozm {

/// A linear or radial gradient. Its coordinates refer to the coordinate system that `units` selects. A
/// coordinate that was not given is 0 `PX`.
struct Gradient {
    /// Along a line, or between a focal point and a circle.
    enum class Type : uint32_t { Linear = 0, Radial = 1 };
    /// The coordinate system: that of the element being filled, or the unit square mapped to its bounding
    /// box.
    enum class Units : uint32_t { UserSpaceOnUse = 0, ObjectBoundingBox = 1 };
    /// How the gradient continues beyond its ends: with the end colours, mirrored, or repeated.
    enum class SpreadMethod : uint32_t { Pad = 0, Reflect = 1, Repeat = 2 };

    /// A colour at a position along the gradient.
    struct Stop {
        double offset = 0;       ///< 0 at the start, 1 at the end; as written, neither clamped nor sorted.
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
