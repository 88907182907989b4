#pragma once

#include "path/flatten.h"

namespace ozcg {

/// A box in double precision, in whatever space its user says.
struct Bounds {
    double x0, y0, x1, y1;
};

/// Floats hold coordinates within this distance of the box precisely enough.
constexpr double kFloatRange = 16384;
/// Pieces are not split below the box's size over this, which bounds their number in the large boxes of wide
/// pens.
constexpr double kMaxPiecesAcross = 64;

/// More halvings than the range of a double's exponent allows.
constexpr int kMaxHalvings = 1100;

/// Splits a cubic that may extend far beyond `box`, by halving, and calls emit(piece, meets) in order. Pieces
/// that may meet the box are small compared with it, or small enough for floats. The others lie wholly on one
/// side of it, where the line between their ends stands for them. All points must be finite.
template <typename Emit>
void forEachNearPiece(const Cubic<double>& c, const Bounds& box, Emit&& emit, int depth = kMaxHalvings) {
    const double near = std::max(kFloatRange, std::max(box.x1 - box.x0, box.y1 - box.y0) / kMaxPiecesAcross);
    const auto [x0, x1] = std::minmax({c.p0.x, c.p1.x, c.p2.x, c.p3.x});
    const auto [y0, y1] = std::minmax({c.p0.y, c.p1.y, c.p2.y, c.p3.y});
    const bool isOutside = x1 < box.x0 || x0 > box.x1 || y1 < box.y0 || y0 > box.y1;
    const bool isSmall = 0.5 * x1 - 0.5 * x0 <= near && 0.5 * y1 - 0.5 * y0 <= near;
    if (isOutside || isSmall || depth == 0) {
        emit(c, !isOutside && isSmall);
    } else {
        Cubic<double> first, second;
        halve(c, first, second);
        forEachNearPiece(first, box, emit, depth - 1);
        forEachNearPiece(second, box, emit, depth - 1);
    }
}

} // namespace ozcg
