#pragma once

#include "geometry/path.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// A command of path data that draws one segment, or moves, or closes. Coordinates that follow a command's
/// own count as a command with the same letter (`L` or `l` after a move).
struct PathCommandPlace {
    uint32_t offset;    ///< Byte of the letter; of the first number where the letter is understood.
    uint32_t firstVerb; ///< Index of the first verb that the command added to the path.
    char letter;
    bool hasLetter; ///< The letter is written.
    /// How far the pen of Ozmira's own reader is from the right place where this command depends on the pen,
    /// because `z` leaves it at the end of the subpath there. 0 nearly everywhere.
    float penOffset;
};

/// Path data as a browser reads it.
struct PathData {
    Path path;
    std::vector<PathCommandPlace> commands; ///< Only when asked for.
    /// Byte of the first error; what stands before it is drawn.
    std::optional<size_t> error;
    bool hasArcs = false;
    bool hasQuadratics = false;
    /// The greatest `penOffset`.
    double penOffset = 0;
};

/// Reads path data up to the first error: the grammar of SVG 2, with numbers in the range of `float` as
/// browsers have them. Arcs and quadratic curves become cubic ones.
PathData ReadPath(std::string_view text, bool withPlaces = false);

/// True when Ozmira's own reader draws the same from this text: nothing but lines and cubic curves, the pen
/// at the right place (within `tolerance`), and no error that the two treat differently.
bool DrawsTheSame(const PathData& data, std::string_view text, double tolerance);

/// The points of a `polyline` or a `polygon`.
struct PointList {
    std::vector<Point> points; ///< Up to the first error; a last odd number is left out.
    std::optional<size_t> error;
    bool isOdd = false; ///< A number was left over.
};
PointList ReadPoints(std::string_view text);

} // namespace ozm::conform
