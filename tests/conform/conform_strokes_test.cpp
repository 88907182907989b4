// Rewriting dashes, widths that do not scale, and the order of painting.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h3M8 4h3M14 4h3M20 4h2" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3,2,1"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h3M7 4h1M11 4h2M14 4h3M19 4h1" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="10%"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h2.4M6.8 4h2.4M11.6 4H14M16.4 4h2.4M21.2 4h.8" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="1em 2" font-size="4"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h4M8 4h4M14 4h4M20 4h2" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="0 3" stroke-linecap="round" stroke-width="2"/>)svg",
     "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h0M5 4h0M8 4h0M11 4h0M14 4h0M17 4h0M20 4h0" fill="none" stroke="#f00" stroke-width="2" stroke-linecap="round"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3 0"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h20" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3" stroke-dashoffset="1"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h2M7 4h3M13 4h3M19 4h3" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3" stroke-dashoffset="-1"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M3 4h3M9 4h3M15 4h3M21 4h1" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3" stroke-dashoffset="10%"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h.6M5.6 4h3M11.6 4h3M17.6 4h3" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3" pathLength="10"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h6M14 4h6" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="1" pathLength="4" stroke-dashoffset=".5"/>)svg",
     "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h2.5M9.5 4h5M19.5 4H22" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3" pathLength="-4"/>)svg", "dashes",
     R"svg(<path d="M2 4h20"/><path d="M2 4h3M8 4h3M14 4h3M20 4h2" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<rect x="4" y="4" width="12" height="8" fill="none" stroke="red" stroke-dasharray="1" pathLength="8"/>)svg",
     "dashes", R"svg(<path d="M4 4h5M14 4h2v3M16 12h-5M6 12H4V9" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<rect x="4" y="4" width="12" height="8" fill="none" stroke="red" stroke-dasharray="5 2"/>)svg",
     "dashes", R"svg(<path d="M4 9V4h5M11 4h5M16 6v5M15 12h-5M8 12H4v-1" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<polygon points="4 4 20 4 12 20" fill="none" stroke="red" stroke-dasharray="5 2" stroke-width="3"/>)svg",
     "dashes",
     R"svg(<path d="M5.242 6.484 4 4h5M11 4h5M18 4h2l-1.342 2.683M17.764 8.472l-2.236 4.472M14.633 14.733l-2.236 4.472M11.503 19.006l-2.236-4.472M8.372 12.745 6.136 8.273" fill="none" stroke="#f00" stroke-width="3"/>)svg"},
    {R"svg(<path d="M4 4h16v16zM6 8v10h5z" fill="none" stroke="red" stroke-dasharray="5 2" stroke-linejoin="round" stroke-width="2"/>)svg",
     "dashes",
     R"svg(<path d="M4 4h5M11 4h5M18 4h2v3M20 9v5M20 16v4l-.707-.707M17.879 17.879l-3.536-3.536M12.929 12.929 9.393 9.393M7.979 7.979 4.444 4.444M6 8v5M6 15v3h2M10 18h1l-1.789-3.578M8.317 12.633 6.081 8.161" fill="none" stroke="#f00" stroke-width="2" stroke-linejoin="round"/>)svg"},
    {R"svg(<path d="M2 4c10 0 10 16 20 16" fill="none" stroke="red" stroke-dasharray="2 1"/>)svg", "dashes",
     R"svg(<path d="M2 4c.709 0 1.368.08 1.983.23M4.937 4.528c.631.243 1.214.563 1.758.944M7.483 6.086c.497.428.961.908 1.403 1.423M9.515 8.287c.4.52.783 1.068 1.157 1.631M11.217 10.756c.357.56.71 1.128 1.064 1.693M12.815 13.295c.363.566.731 1.124 1.113 1.662M14.522 15.761c.415.537.848 1.045 1.309 1.511M16.562 17.953c.512.436 1.057.817 1.646 1.129M19.119 19.493c.601.227 1.245.383 1.941.458" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3 1" stroke-opacity=".5" opacity=".5"/>)svg",
     "shape-opacity dashes",
     R"svg(<path d="M2 4h20" opacity=".5"/><path d="M2 4h3M6 4h3M10 4h3M14 4h3M18 4h3" fill="none" stroke="#f00" stroke-opacity=".5" opacity=".5"/>)svg"},
    {R"svg(<g transform="scale(3)"><path d="M1 1h5v4z" fill="lime" stroke="red" vector-effect="non-scaling-stroke"/></g>)svg",
     "vector-effect", R"svg(<path d="M3 3h15v12z" fill="#0f0" stroke="#f00"/>)svg"},
    {R"svg(<g transform="scale(3)"><path d="M1 1h5v4z" fill="none" stroke="red" style="vector-effect:non-scaling-stroke" stroke-dasharray="2 1"/></g>)svg",
     "vector-effect dashes",
     R"svg(<path d="M3.944 3.755 3 3h2M6 3h2M9 3h2M12 3h2M15 3h2M18 3v2M18 6v2M18 9v2M18 12v2M18 15l-1.562-1.249M15.657 13.126l-1.561-1.249M13.315 11.252l-1.562-1.25M10.972 9.378 9.41 8.128M8.63 7.504l-1.562-1.25M6.287 5.63 4.725 4.38" fill="none" stroke="#f00"/>)svg"},
    {R"svg(<g transform="scale(3 1)"><rect x="1" y="1" width="5" height="14" fill="none" stroke="red" stroke-width="2" vector-effect="non-scaling-stroke"/></g>)svg",
     "vector-effect", R"svg(<path d="M3 1h15v14H3z" fill="none" stroke="#f00" stroke-width="2"/>)svg"},
    {R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24" width="96" height="96"><path d="M2 2h20v20z" fill="none" stroke="red" stroke-width="8" vector-effect="non-scaling-stroke"/></svg>)svg",
     "vector-effect",
     R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="96" height="96" viewBox="0 0 24 24"><path d="M2 2h20v20z" fill="none" stroke="#f00" stroke-width="2"/></svg>)svg"},
    {R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="stroke"/>)svg",
     "paint-order",
     R"svg(<path d="M2 4h20v16z" fill="none" stroke="#f00" stroke-width="4"/><path d="M2 4h20v16z" fill="#00f"/>)svg"},
    {R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="stroke fill"/>)svg",
     "paint-order",
     R"svg(<path d="M2 4h20v16z" fill="none" stroke="#f00" stroke-width="4"/><path d="M2 4h20v16z" fill="#00f"/>)svg"},
    {R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="markers stroke"/>)svg",
     "paint-order",
     R"svg(<path d="M2 4h20v16z" fill="none" stroke="#f00" stroke-width="4"/><path d="M2 4h20v16z" fill="#00f"/>)svg"},
    {R"svg(<g style="paint-order:stroke"><path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4"/></g>)svg",
     "paint-order",
     R"svg(<path d="M2 4h20v16z" fill="none" stroke="#f00" stroke-width="4"/><path d="M2 4h20v16z" fill="#00f"/>)svg"},
    {R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="stroke" opacity=".5"/>)svg",
     "paint-order shape-opacity",
     R"svg(<path d="M24 24.161-3.702 2H24zM2 4l20 16V4z" fill="#f00" opacity=".5"/><path d="M2 4h20v16z" fill="#00f" opacity=".5"/>)svg"},
    {R"svg(<path d="M2 4h20v16z" stroke="red" stroke-opacity=".5" fill="blue" stroke-width="4" opacity=".8"/>)svg",
     "shape-opacity",
     R"svg(<path d="M20 15.839 7.702 6H20z" fill="#00f" opacity=".8"/><path d="M22 20 2 4h20zM7.702 6 20 15.839V6z" fill="#800080" opacity=".8"/><path d="M24 24.161-3.702 2H24zM2 4l20 16V4z" fill="#f00" fill-opacity=".5" opacity=".8"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3 -1"/>)svg",
    R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="0 0"/>)svg",
    R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3 foo"/>)svg",
    R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="none"/>)svg",
    R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray=""/>)svg",
    R"svg(<path d="M2 4h20" stroke="red" stroke-dasharray="3" pathLength="0"/>)svg",
    R"svg(<g transform="scale(3 1)" vector-effect="non-scaling-stroke"><rect x="1" y="1" width="5" height="14" fill="none" stroke="red" stroke-width="2"/></g>)svg",
    R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="fill"/>)svg",
    R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="stroke stroke"/>)svg",
    R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" stroke-width="4" paint-order="bogus"/>)svg",
    R"svg(<path d="M2 4h20v16z" stroke="red" fill="blue" fill-opacity=".5" stroke-width="4"/>)svg",
    R"svg(<path d="M4 4l4 4h8l4-4" stroke="red" fill="none" stroke-width="3" stroke-linejoin="bevel" stroke-linecap="round"/>)svg",
    R"svg(<path d="M4 4l4 4M2 2" stroke="red" fill="none" stroke-width="3" stroke-linecap="round"/>)svg",
    R"svg(<path d="M4 4l4 4zM2 2z" stroke="red" fill="none" stroke-width="3" stroke-linecap="round"/>)svg",
    R"svg(<g stroke-width="2" stroke="red" fill="none" transform="skewX(30)"><path d="M4 4h8v8z"/><circle cx="10" cy="16" r="4"/></g>)svg",
};
// clang-format on

} // namespace

TEST(ConformStrokes, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformStrokes, LeavesAlone) { ExpectUnchanged(kUnchanged); }
