#pragma once

#include "geometry/path.h"

namespace ozm::conform {

/// The directions in which a curve starts and ends, also where control points coincide. {0, 0} for a curve
/// without length.
Point StartDirection(const Point (&curve)[4]);
Point EndDirection(const Point (&curve)[4]);

/// Finds where a curve stops and turns back: at most two places, in order. Returns their number.
int FindCusps(const Point (&curve)[4], double (&parameters)[2]);

/// True when the curve at a distance to the left runs against this one all along, because this one is bent
/// more tightly than the distance allows.
bool IsTight(const Point (&curve)[4], double distance);

/// Appends the curve at a distance to the left of `curve` (seen along it, with y downwards), from the pen,
/// which has to be at its start already. It is off by at most `tolerance` except around cusps.
void AppendOffset(const Point (&curve)[4], double distance, double tolerance, Path& path);

/// A direction turned by a quarter to the left on the screen, where y grows downwards.
constexpr Point LeftOf(Point direction) { return {direction.y, -direction.x}; }

} // namespace ozm::conform
