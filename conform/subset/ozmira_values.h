// Values as Ozmira itself reads them.
#pragma once

#include "geometry/transform_reader.h"
#include "source/document.h"
#include "style/color.h"

#include <optional>
#include <string_view>
#include <vector>

namespace ozm::conform {

/// A number without regard to what follows it; 0 when there is none.
double OzmiraNumber(std::string_view raw);
/// The number of an attribute that Ozmira reads; `otherwise` without it.
double OzmiraNumber(const Node& node, Attr attr, double otherwise = 0);
/// The raw value of an attribute; none when it is not written.
std::optional<std::string_view> OzmiraAttribute(const Node& node, Attr attr);

/// What Ozmira takes for the size and view box of the root.
struct OzmiraFrame {
    double width = 0, height = 0;
    double x = 0, y = 0, viewWidth = 0, viewHeight = 0;
};
OzmiraFrame ReadOzmiraFrame(const Node& root);

/// A stop of a gradient.
struct OzmiraStop {
    double offset = 0;
    double r = 0, g = 0, b = 0, alpha = 1;
};

/// A gradient element. Lengths with a percent sign are already shares of 1 where Ozmira takes them so.
struct OzmiraGradient {
    bool isUserSpace = false;
    /// x1 y1 x2 y2, or cx cy r fx fy.
    double coordinates[5] = {};
    Matrix transform;
    std::vector<OzmiraStop> stops;
};
OzmiraGradient ReadOzmiraGradient(const Node& node);

/// True when an element with an id is one that Ozmira has in its tree, so that references find it.
bool IsInOzmiraTree(const Node& node);

} // namespace ozm::conform
