#pragma once

#include "geometry/path.h"

#include <cstddef>
#include <optional>
#include <span>

namespace ozm::conform {

/// Cuts a path into dashes, each an open subpath of lines and curves. `lengths` alternate between painted and
/// unpainted; an odd list counts twice over. `phase` may be negative. A dash that runs over the start of a
/// closed subpath stays whole. A list without positive sum, or with a negative or non-finite length, leaves
/// the path as it is. None when there would be more than `maxDashes`.
std::optional<Path> DashesOf(const Path& path, std::span<const double> lengths, double phase,
                             size_t maxDashes);

/// The length of a path, closing lines included.
double LengthOf(const Path& path);

} // namespace ozm::conform
