#pragma once

#include <Ozmira/ozmStyle.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// The paint settings in force at one place of the element tree.
struct RenderingState {
    Color strokeColor; ///< Transparent: no stroke.
    double strokeOpacity = 0;
    double strokeWidth = 0; ///< User units.
    uint32_t lineCap = 0;   ///< A `LineCap`.
    uint32_t lineJoin = 0;  ///< A `LineJoin`.
    double miterLimit = 0;
    std::vector<double> dashArray; ///< User units; empty: a solid line.
    double dashOffset = 0;         ///< User units.
    Color fillColor;
    double fillOpacity = 0;
    std::string fillReference;      ///< Id of the gradient to fill with; empty: fill with `fillColor`.
    uint32_t fillRule = 0;          ///< A `WindingRule`.
    std::string secondaryReference; ///< Always empty.
    uint32_t clipRule = 0;          ///< A `WindingRule`.
    double opacity = 0;             ///< Product of the opacities on the way down.
};

} // namespace ozm

OZM_RECORD(ozm::RenderingState);

namespace ozm {

/// What every property falls back on: an opaque black fill, no stroke.
extern const RenderingState kRenderingStateDefault;

} // namespace ozm
