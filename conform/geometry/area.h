#pragma once

#include "geometry/flatten.h"
#include "geometry/path.h"

#include <optional>
#include <vector>

namespace ozm::conform {

enum class AreaOperation { Intersection, Difference, Union };

/// A path and the rule that tells its inside.
struct Area {
    const Path& path;
    FillRule rule = FillRule::NonZero;
};

/// The area as a path that means the same under either rule: outer outlines run clockwise, holes the other
/// way, and nothing overlaps. Curves of the operands stay curves where their outline is kept; elsewhere they
/// are off by at most `tolerance`.
Path Combine(AreaOperation operation, const Area& a, const Area& b, double tolerance);
/// The area of one path in the same form.
Path Simplified(const Area& area, double tolerance);

/// True when the two areas share more than their edges: a piece of at least `tolerance` across.
bool Overlap(const Area& a, const Area& b, double tolerance);

/// Twice the area within a closed outline: positive when it runs clockwise on the screen.
double SignedArea(const Polyline& outline);
/// True when the outlines (closed if they are not) cross themselves or each other.
bool Crosses(const std::vector<Polyline>& outlines);

/// How the result of a change of rule came about.
struct Rewound {
    Path path;
    bool isChanged = false;
};

/// A path that covers under the nonzero rule what `area` covers: the same outlines, reversed or left out
/// where needed, with outer ones clockwise and holes the other way; where outlines cross, the outlines of the
/// area.
Rewound RewindForNonZero(const Area& area, double tolerance);

/// True when both rules fill the same of this path.
bool RulesAgree(const Path& path, double tolerance);

} // namespace ozm::conform
