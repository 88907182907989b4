#pragma once

#include "geometry/area.h"
#include "geometry/flatten.h"
#include "geometry/path.h"

#include <vector>

namespace ozm::conform {

/// Twice the area within an outline: positive when it runs clockwise on the screen.
double SignedArea(const Polyline& outline);

/// True when the outlines, closed if they are not, cross themselves or each other. Very long ones count as
/// crossing.
bool Cross(const std::vector<Polyline>& outlines);

/// A path that covers under either rule what `area` covers under its own. Where no outlines cross they stay
/// as they are, but outer ones run clockwise, holes the other way, and what changes nothing is left out; else
/// they are those of `Simplified`.
Path Rewound(const Area& area, double tolerance);

/// True when both rules fill the same of this path.
bool RulesAgree(const Path& path, double tolerance);

} // namespace ozm::conform
