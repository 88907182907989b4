#pragma once

#include <Ozmira/OzmiraExport.h>
#include <Ozmira/ozmStyle.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ozm {

/// The paint settings that apply to one element, inherited or its own.
struct RenderingState {
    Color strokeColor; ///< Transparent for no stroke.
    double strokeOpacity = 0;
    double strokeWidth = 0; ///< User units.
    uint32_t lineCap = 0;   ///< A `LineCap`.
    uint32_t lineJoin = 0;  ///< A `LineJoin`.
    double miterLimit = 0;
    std::vector<double> dashArray; ///< User units; empty for a solid line.
    double dashOffset = 0;         ///< User units.
    Color fillColor;
    double fillOpacity = 0;
    std::string fillReference;      ///< Id of the gradient to fill with; empty to fill with `fillColor`.
    uint32_t fillRule = 0;          ///< A `WindingRule`.
    std::string secondaryReference; ///< Always empty.
    uint32_t clipRule = 0;          ///< A `WindingRule`.
    double opacity = 0;             ///< Product of the opacities of the element and its ancestors.
};

} // namespace ozm

OZM_RECORD(ozm::RenderingState);

namespace ozm {

/// The initial values of all properties: an opaque black fill and no stroke.
OZM_CXX_EXPORT extern const RenderingState kRenderingStateDefault;

} // namespace ozm
