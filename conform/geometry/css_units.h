// The units of CSS.
#pragma once

#include "geometry/text.h"

#include <numbers>
#include <optional>
#include <string_view>

namespace ozm::conform {

/// The user units in one unit of absolute length; none for other units.
constexpr std::optional<double> AbsoluteLengthUnit(std::string_view name) {
    constexpr struct {
        std::string_view name;
        double size;
    } kUnits[] = {{"px", 1},  {"pt", 4.0 / 3}, {"mm", 96 / 25.4}, {"cm", 96 / 2.54},
                  {"in", 96}, {"pc", 16},      {"q", 96 / 101.6}};
    for (const auto& unit : kUnits) {
        if (EqualsIgnoringCase(name, unit.name)) return unit.size;
    }
    return {};
}

inline constexpr double kRadiansPerDegree = std::numbers::pi / 180;

/// The degrees in one unit of angle; none for other units.
constexpr std::optional<double> AngleUnit(std::string_view name) {
    constexpr struct {
        std::string_view name;
        double size;
    } kUnits[] = {{"deg", 1}, {"grad", 0.9}, {"rad", 180 / std::numbers::pi}, {"turn", 360}};
    for (const auto& unit : kUnits) {
        if (EqualsIgnoringCase(name, unit.name)) return unit.size;
    }
    return {};
}

} // namespace ozm::conform
