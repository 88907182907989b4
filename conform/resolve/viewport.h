#pragma once

#include "geometry/box.h"
#include "geometry/matrix.h"

#include <optional>
#include <string_view>

namespace ozm::conform {

/// Reads a `viewBox`: four numbers, of which the last two are positive.
std::optional<Box> ReadViewBox(std::string_view text);
/// True for a `viewBox` without width or height, which hides everything in it.
bool IsEmptyViewBox(std::string_view text);

/// How a view box is laid into a viewport.
struct AspectRatio {
    double alignX = 0.5, alignY = 0.5; ///< 0: at the start; 1: at the end.
    bool isStretched = false;          ///< "none"
    bool isSlice = false;
};

/// Reads a `preserveAspectRatio`; the initial value for what can't be read.
AspectRatio ReadAspectRatio(std::string_view text);

/// Maps the view box into the viewport.
Matrix FitViewBox(const Box& viewBox, const Box& viewport, const AspectRatio& ratio);

} // namespace ozm::conform
