#pragma once

#include "geometry/path.h"

#include <string>

namespace ozm::conform {

/// Appends path data for Ozmira and for strict readers: lines and cubic curves, absolute where a subpath
/// begins, after that relative or absolute, whichever is shorter. Points are rounded to `decimals` places;
/// relative coordinates are measured from the rounded pen, so that errors do not add up. Segments that
/// rounding leaves without length are left out, except where nothing else of a subpath would remain; so are
/// moves that nothing follows. Reading the result and writing it again gives the same text.
///
/// Coordinates too large for so many decimals are written with fewer; `decimals` may be -30...15.
void WritePath(const Path& path, int decimals, std::string& out);

/// The greatest distance by which `WritePath` may move a point.
double RoundingError(int decimals);

} // namespace ozm::conform
