// Rewriting filters and blend modes.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<filter id="f"><feColorMatrix values="0 0 0 0 1 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0"/></filter><rect width="14" height="14" filter="url(#f)"/>)svg",
     "color-filter", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<filter id="f"><feColorMatrix type="saturate" values="0"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "color-filter", R"svg(<rect width="14" height="14" fill="#7f7f7f"/>)svg"},
    {R"svg(<filter id="f"><feColorMatrix type="hueRotate" values="90"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "color-filter", R"svg(<rect width="14" height="14" fill="#00a100"/>)svg"},
    {R"svg(<filter id="f" color-interpolation-filters="sRGB"><feColorMatrix type="hueRotate" values="90"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "color-filter", R"svg(<rect width="14" height="14" fill="#005b00"/>)svg"},
    {R"svg(<filter id="f"><feColorMatrix type="luminanceToAlpha"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "filter", nullptr},
    {R"svg(<filter id="f" color-interpolation-filters="sRGB"><feColorMatrix type="saturate" values=".3"/></filter><g filter="url(#f)"><rect width="14" height="14" fill="red"/><rect x="6" y="6" width="14" height="14" fill="blue" opacity=".5"/></g>)svg",
     "color-filter",
     R"svg(<rect width="14" height="14" fill="#732626"/><rect x="6" y="6" width="14" height="14" fill="#0d0d59" opacity=".5"/>)svg"},
    {R"svg(<filter id="f"><feGaussianBlur stdDeviation="0"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "filter", nullptr},
    {R"svg(<filter id="f"><feOffset dx="0" dy="0"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "filter", nullptr},
    {R"svg(<filter id="f"><feFlood flood-color="lime"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "filter", nullptr},
    {R"svg(<filter id="f"><feComponentTransfer><feFuncA type="linear" slope=".5"/></feComponentTransfer></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "color-filter", R"svg(<rect width="14" height="14" fill="#f00" fill-opacity=".5"/>)svg"},
    {R"svg(<filter id="f"><feMerge><feMergeNode in="SourceGraphic"/></feMerge></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "filter", nullptr},
    {R"svg(<filter id="f"/><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg", "color-filter",
     R"svg()svg"},
    {R"svg(<rect width="14" height="14" fill="red" style="filter:grayscale(1)"/>)svg", "color-filter",
     R"svg(<rect width="14" height="14" fill="#363636"/>)svg"},
    {R"svg(<rect width="14" height="14" fill="red" style="filter:opacity(.5)"/>)svg", "color-filter",
     R"svg(<rect width="14" height="14" fill="#f00" fill-opacity=".5"/>)svg"},
    {R"svg(<rect width="14" height="14" fill="red" style="filter:invert(100%)"/>)svg", "color-filter",
     R"svg(<rect width="14" height="14" fill="#0ff"/>)svg"},
    {R"svg(<rect width="14" height="14" fill="red" style="filter:brightness(.5)"/>)svg", "color-filter",
     R"svg(<rect width="14" height="14" fill="#800000"/>)svg"},
    {R"svg(<rect width="14" height="14" fill="red" style="filter:blur(0)"/>)svg", "filter", nullptr},
    {R"svg(<filter id="f" x="0" y="0" width=".5" height=".5"><feColorMatrix type="saturate" values="1"/></filter><rect width="14" height="14" fill="red" filter="url(#f)"/>)svg",
     "color-filter",
     R"svg(<defs><clipPath id="c1"><path d="M0 0h7v7H0z"/></clipPath></defs><rect width="14" height="14" fill="#f00" clip-path="url(#c1)"/>)svg"},
    {R"svg(<rect width="14" height="14" fill="red" style="mix-blend-mode:multiply"/>)svg", "blend-mode",
     nullptr},
    {R"svg(<image width="14" height="14" href="data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQDwAEhQGAhKmMIQAAAABJRU5ErkJggg=="/>)svg",
     "image", nullptr},
    {R"svg(<text y="14">x</text>)svg", "text", nullptr},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<rect width="14" height="14" fill="red" filter="url(#none)"/>)svg",
    R"svg(<rect width="14" height="14" fill="red" filter="none"/>)svg",
    R"svg(<rect width="14" height="14" fill="red" style="mix-blend-mode:normal"/>)svg",
    R"svg(<rect width="14" height="14" fill="red"/><rect x="5" width="14" height="14" fill="lime" style="mix-blend-mode:bogus"/>)svg",
    R"svg(<rect width="14" height="14"><animate attributeName="width" to="4" dur="1s"/></rect>)svg",
    R"svg(<text y="14"> </text>)svg",
    R"svg(<text y="14"/>)svg",
    R"svg(<tref/><tspan>x</tspan>)svg",
    R"svg(<g style="fill:red"><text y="14" display="none">x</text></g>)svg",
};
// clang-format on

} // namespace

TEST(ConformFilters, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformFilters, LeavesAlone) { ExpectUnchanged(kUnchanged); }
