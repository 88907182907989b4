#pragma once

#include "geometry/path.h"

namespace ozm::conform {

enum class AreaOperation : uint8_t { Intersection, Difference, Union };

/// A path and the rule that tells its inside.
struct Area {
    const Path& path;
    FillRule rule = FillRule::NonZero;
};

/// Combines two areas (`Difference`: the first without the second). The result means the same under either
/// rule: outer outlines run clockwise, holes the other way, and none overlap. Curves stay curves where their
/// outline is kept; it is off by at most `tolerance`. Areas that are too large or not finite give an empty
/// path.
Path Combine(AreaOperation operation, const Area& a, const Area& b, double tolerance);

/// The area of one path in the same form.
Path Simplified(const Area& area, double tolerance);

/// True when the two areas share more than their edges: a piece of more than `tolerance` across.
bool Overlap(const Area& a, const Area& b, double tolerance);

} // namespace ozm::conform
