#pragma once

#include "geometry/matrix.h"
#include "geometry/point.h"

#include <optional>
#include <string>
#include <string_view>

namespace ozm::conform {

/// Where a transform list stands, which decides about its syntax.
enum class TransformSyntax {
    Attribute, ///< Numbers alone will do; commas may stand between functions; names are case-sensitive.
    Style,     ///< Lengths and angles other than 0 need units, arguments need commas between them.
};

/// What lengths in a transform refer to.
struct TransformUnits {
    Point percentBase{0, 0}; ///< Width and height that percentages are of.
    double fontSize = 16;
    double rootFontSize = 16;
};

/// Reads "none" or a list of transform functions; the last one acts first. None where browsers ignore the
/// whole value, also for functions that leave the plane.
std::optional<Matrix> ReadTransform(std::string_view text, TransformSyntax syntax,
                                    const TransformUnits& units = {});

/// What Ozmira's own reader makes of the value of an attribute.
Matrix OzmiraTransform(std::string_view text);

/// Appends the shortest transform list for Ozmira: "translate(x y)", "scale(...)", "rotate(...)" or
/// "matrix(...)". Nothing for the identity. `decimals` are those of coordinates up to `extent`, which decide
/// how many digits each factor needs.
void WriteTransform(const Matrix& matrix, int decimals, double extent, std::string& out);

} // namespace ozm::conform
