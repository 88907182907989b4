#pragma once

#include "geometry/path.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// Path data as a browser reads it.
struct PathData {
    /// A command for which the pen of Ozmira's own reader is away from the right place, because `z` leaves it
    /// at the end of the subpath there.
    struct PenOffset {
        size_t offset; ///< Byte of the letter; of the first number where the letter is understood.
        double distance;
    };

    /// Commands that Ozmira's own reader leaves out.
    struct LeftOut {
        std::optional<size_t> first; ///< Byte of the first.
        double reach = 0;            ///< How far they get from where they start, all together.

        /// Byte of the first, if leaving them out moves anything by more than `tolerance`.
        std::optional<size_t> Seen(double tolerance) const {
            return reach > tolerance ? first : std::nullopt;
        }
    };

    Path path;
    /// Byte of the first error; what stands before it is drawn.
    std::optional<size_t> error;
    LeftOut arcs, quadratics;
    /// Indices of the verbs that end within an arc, which no command of the text does.
    std::vector<size_t> arcJoints;
    /// Every command whose distance is greater than those of all before it.
    std::vector<PenOffset> penOffsets;

    /// Byte of the first command that is drawn further than `tolerance` from the right place.
    std::optional<size_t> FirstPenOffset(double tolerance) const;
};

/// Reads path data up to the first error: the grammar of SVG 2, with numbers in the range of `float` as
/// browsers have them. Arcs and quadratic curves become cubic ones, arcs as `ArcTo` makes them.
PathData ReadPath(std::string_view text, double arcTolerance = 0);

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
