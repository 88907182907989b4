#include <OzmiraConform/OzmiraConform.h>

#include "conform_cases.h"

#include <gtest/gtest.h>

#include <string>

using namespace ozm::conform;
using namespace ozm::conform::test;

namespace {

// A drawing for each family of differences, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<path d="M2 2a4 4 0 0 1 8 0"/>)svg", "arc",
     R"svg(<path d="M2 2C2-.209 3.791-2 6-2s4 1.791 4 4"/>)svg"},
    {R"svg(<path d="M2 2a4 4 0 018 0"/>)svg", "arc",
     R"svg(<path d="M2 2C2-.209 3.791-2 6-2s4 1.791 4 4"/>)svg"},
    {R"svg(<path d="M2 2q4 4 8 0t8 0"/>)svg", "quadratic-curve",
     R"svg(<path d="M2 2c2.667 2.667 5.333 2.667 8 0s5.333-2.667 8 0"/>)svg"},
    {R"svg(<path d="M2 2h4v4zm8 0h4v4z"/>)svg", "relative-after-z",
     R"svg(<path d="M2 2h4v4zM10 2h4v4z"/>)svg"},
    {R"svg(<path d="M2 2A4 4 0 0 1 6 6L9 9x1 2"/>)svg", "arc path-syntax",
     R"svg(<path d="M2 2c2.209 0 4 1.791 4 4l3 3"/>)svg"},
    {R"svg(<path fill="currentColor" d="M2 2q4 4 8 0"/>)svg", "quadratic-curve",
     R"svg(<path d="M2 2c2.667 2.667 5.333 2.667 8 0"/>)svg"},
    {R"svg(<path stroke="currentColor" d="M2 2h4"/>)svg", "current-color",
     R"svg(<path d="M2 2h4" stroke="#000"/>)svg"},
    {R"svg(<g color="red"><path fill="currentColor" d="M2 2h4v4z"/></g>)svg", "current-color",
     R"svg(<path d="M2 2h4v4z" fill="#f00"/>)svg"},
    {R"svg(<path fill="RED" d="M2 2h4v4z"/>)svg", "color-syntax",
     R"svg(<path d="M2 2h4v4z" fill="#f00"/>)svg"},
    {R"svg(<path fill="rgba(255,0,0,.5)" d="M2 2h4v4z"/>)svg", "color-syntax",
     R"svg(<path d="M2 2h4v4z" fill="#f00" fill-opacity=".5"/>)svg"},
    {R"svg(<path fill="hsl(120 100% 25%)" d="M2 2h4v4z"/>)svg", "color-syntax",
     R"svg(<path d="M2 2h4v4z" fill="#008000"/>)svg"},
    {R"svg(<path fill="#f008" d="M2 2h4v4z"/>)svg", "color-syntax",
     R"svg(<path d="M2 2h4v4z" fill="#f00" fill-opacity=".5333"/>)svg"},
    {R"svg(<path fill="transparent" stroke="#00f" d="M2 2h4v4z"/>)svg", "color-syntax",
     R"svg(<path d="M2 2h4v4z" fill="none" stroke="#00f"/>)svg"},
    {R"svg(<rect width="1cm" height="50%" rx="2"/>)svg", "units units units",
     R"svg(<rect width="37.795" height="12" rx="2"/>)svg"},
    {R"svg(<circle r="2em" cx="5" cy="5"/>)svg", "units", R"svg(<circle cx="5" cy="5" r="32"/>)svg"},
    {R"svg(<path style="fill:red!important;stroke:/* a */#00f" d="M2 2h4v4z"/>)svg",
     "style-syntax style-syntax", R"svg(<path d="M2 2h4v4z" fill="#f00" stroke="#00f"/>)svg"},
    {R"svg(<style>.a{fill:red}g>.b,#c{fill:#00f !important}</style><path class="a" d="M2 2h4v4z"/><g><path class="b" style="fill:green" d="M8 2h4v4z"/></g>)svg",
     "style-sheet style-sheet",
     R"svg(<path d="M2 2h4v4z" fill="#f00"/><path d="M8 2h4v4z" fill="#00f"/>)svg"},
    {R"svg(<g transform="translate(2,3),scale(2)"><path d="M0 0h2v2z"/></g>)svg", "transform-syntax",
     R"svg(<path d="M2 3h4v4z"/>)svg"},
    {R"svg(<path style="transform:translate(2px,3px)" d="M0 0h2v2z"/>)svg", "transform-property",
     R"svg(<path d="M2 3h2v2z"/>)svg"},
    {R"svg(<path transform="skewX(45)" stroke="#f00" d="M0 0h4a1 1 0 0 1 2 0"/>)svg", "arc",
     R"svg(<path d="M0 0h4c0-.55228.44772-1 1-1s1 .44772 1 1" transform="matrix(1 0 1 1 0 0)" stroke="#f00"/>)svg"},
    {R"svg(<symbol id="s" viewBox="0 0 2 2"><path d="M0 0h2v2z"/></symbol><use href="#s" x="4" y="4" width="8" height="8"/>)svg",
     "href", R"svg(<path d="M4 4h8v8z"/>)svg"},
    {R"svg(<defs><path id="p" d="M0 0h2v2z"/></defs><use href="#p" x="4" fill="red"/>)svg", "href",
     R"svg(<path d="M4 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<svg x="4" y="4" width="8" height="8" viewBox="0 0 4 4"><rect width="9" height="2"/></svg>)svg",
     "nested-svg",
     R"svg(<defs><clipPath id="c1"><path d="M4 4h8v8H4z"/></clipPath></defs><rect x="4" y="4" width="18" height="4" clip-path="url(#c1)"/>)svg"},
    {R"svg(<switch><path systemLanguage="de" d="M0 0h2v2z"/><path d="M4 0h2v2z"/></switch>)svg", "switch",
     R"svg(<path d="M4 0h2v2z"/>)svg"},
    {R"svg(<path visibility="hidden" d="M0 0h2v2z"/><path d="M4 0h2v2z"/>)svg", "visibility",
     R"svg(<path d="M4 0h2v2z"/>)svg"},
    {R"svg(<g opacity=".5"><rect width="4" height="4"/><rect x="2" width="4" height="4" fill="red"/></g>)svg",
     "group-opacity",
     R"svg(<path d="M2 4H0V0h2z" opacity=".5"/><rect x="2" width="4" height="4" fill="#f00" opacity=".5"/>)svg"},
    {R"svg(<rect x="4" y="4" width="8" height="8" stroke="red" stroke-width="2" opacity=".5"/>)svg",
     "shape-opacity",
     R"svg(<path d="M11 11H5V5h6z" opacity=".5"/><path d="M13 13H3V3h10zM5 5v6h6V5z" fill="#f00" opacity=".5"/>)svg"},
    {R"svg(<g opacity=".5"><rect width="4" height="4" fill="red" fill-opacity=".5"/><rect x="2" width="4" height="4" fill="red" fill-opacity=".5"/></g>)svg",
     "group-opacity",
     R"svg(<g fill="#f00"><path d="M2 4H0V0h2z" fill-opacity=".5" opacity=".5"/><path d="M4 4H2V0h2z" fill-opacity=".75" opacity=".5"/><path d="M6 4H4V0h2z" fill-opacity=".5" opacity=".5"/></g>)svg"},
    {R"svg(<linearGradient id="a"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></linearGradient><path fill="url(#a)" d="M2 2h8v4h-8z"/>)svg",
     "gradient-geometry",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="2" y1="2" x2="10" y2="2"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><path d="M2 2h8v4H2z" fill="url(#g1)"/>)svg"},
    {R"svg(<linearGradient id="a" x2="10" gradientUnits="userSpaceOnUse" spreadMethod="repeat"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></linearGradient><rect width="24" height="4" fill="url(#a)"/>)svg",
     "gradient-spread",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="30" y2="0"><stop offset="0" stop-color="#f00"/><stop offset=".33333" stop-color="#00f"/><stop offset=".33333" stop-color="#f00"/><stop offset=".66667" stop-color="#00f"/><stop offset=".66667" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><rect width="24" height="4" fill="url(#g1)"/>)svg"},
    {R"svg(<radialGradient id="a"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></radialGradient><rect width="8" height="4" fill="url(#a)"/>)svg",
     "gradient-geometry",
     R"svg(<defs><radialGradient id="g1" gradientUnits="userSpaceOnUse" cx=".5" cy=".5" r=".5" gradientTransform="scale(8 4)"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></radialGradient></defs><rect width="8" height="4" fill="url(#g1)"/>)svg"},
    {R"svg(<linearGradient id="b"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></linearGradient><linearGradient id="a" href="#b" x1="1" x2="0"/><rect width="8" height="4" fill="url(#a)" stroke="#000"/>)svg",
     "gradient-stops gradient-stroke-below",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="8" y1="0" x2="0" y2="0"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><rect width="8" height="4" fill="url(#g1)"/><rect width="8" height="4" fill="none" stroke="#000"/>)svg"},
    {R"svg(<linearGradient id="a"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></linearGradient><path stroke="url(#a)" stroke-width="2" d="M2 2h8v1"/>)svg",
     "gradient-stroke",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="2" y1="2" x2="10" y2="2"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><path d="M2 2h8v1"/><path d="M2 1h9v2H9V2h1v1H2z" fill="url(#g1)"/>)svg"},
    {R"svg(<path fill="none" stroke="#000" stroke-dasharray="2 3" d="M0 2h8"/>)svg", "dashes",
     R"svg(<path d="M0 2h2M5 2h2" fill="none" stroke="#000"/>)svg"},
    {R"svg(<path stroke="#000" fill="red" paint-order="stroke" d="M2 2h4v4z"/>)svg", "paint-order",
     R"svg(<path d="M2 2h4v4z" fill="none" stroke="#000"/><path d="M2 2h4v4z" fill="#f00"/>)svg"},
    {R"svg(<clipPath id="c" clipPathUnits="objectBoundingBox"><circle cx=".5" cy=".5" r=".5"/></clipPath><rect width="8" height="8" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M8 4c0 2.209-1.791 4-4 4S0 6.209 0 4s1.791-4 4-4 4 1.791 4 4z"/></clipPath></defs><rect width="8" height="8" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c"><path clip-rule="evenodd" d="M0 0h8v8H0zM2 2h4v4H2z"/></clipPath><rect width="8" height="8" clip-path="url(#c)"/>)svg",
     "clip-rule",
     R"svg(<defs><clipPath id="c1"><path d="M0 0h8v8H0zM2 6h4V2H2z"/></clipPath></defs><rect width="8" height="8" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="4" height="4" fill="#fff"/></mask><rect width="8" height="8" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M4 4H0V0h4z"/></clipPath></defs><rect width="8" height="8" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="8" height="8" fill="#fff" opacity=".5"/></mask><rect width="8" height="8" mask="url(#m)"/>)svg",
     "mask", R"svg(<rect width="8" height="8" opacity=".5"/>)svg"},
    {R"svg(<mask id="m"><rect width="8" height="8" fill="#fff"/><rect x="2" y="2" width="4" height="4" fill="#808080"/></mask><rect width="8" height="8" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M8 8H0V0h8zM2 2v4h4V2z"/></clipPath><clipPath id="c2"><path d="M6 6H2V2h4z"/></clipPath></defs><rect width="8" height="8" clip-path="url(#c1)"/><rect width="8" height="8" opacity=".502" clip-path="url(#c2)"/>)svg"},
    {R"svg(<marker id="m" markerWidth="2" markerHeight="2" orient="auto"><path d="M0 0h2v2z"/></marker><path fill="none" stroke="#000" d="M2 2v4" marker-end="url(#m)"/>)svg",
     "marker", R"svg(<path d="M2 2v4" fill="none" stroke="#000"/><path d="M2 6v2H0z"/>)svg"},
    {R"svg(<marker id="m" markerWidth="2" markerHeight="2"><path d="M0 0h2v2z"/></marker><path fill="none" d="M2 2A4 4 0 0 1 2 10v4" marker-mid="url(#m)"/>)svg",
     "marker", R"svg(<path d="M2 10h2v2z"/>)svg"},
    {R"svg(<path d="M2 2h4v4a.02.02 0 0 1 0 .04z"/><path d="M2 2h4v4H2.02V2.02zm6 6h2v2z"/><path d="M2 2c1 0 2 1 2 2a1 1 0 0 0 0 0s1 3 3 3z"/>)svg",
     "arc relative-after-z arc",
     R"svg(<path d="M2 2h4v4c.027 0 .027.04 0 .04z"/><path d="M2 2h4v4H2.02V2.02zM8 8h2v2z"/><path d="M2 2c1 0 2 1 2 2 0 0 1 3 3 3z"/>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="2"/></pattern><rect width="8" height="4" fill="url(#p)"/>)svg",
     "pattern", R"svg(<rect width="2" height="2"/><rect x="4" width="2" height="2"/>)svg"},
    {R"svg(<path fill="none" stroke="#000" vector-effect="non-scaling-stroke" transform="scale(2)" d="M0 2h8"/>)svg",
     "vector-effect", R"svg(<path d="M0 4h16" fill="none" stroke="#000"/>)svg"},
    {R"svg(<polyline fill="none" stroke="#000" points="1 2 3 4 5"/>)svg", "points-syntax",
     R"svg(<path d="M1 2l2 2" fill="none" stroke="#000"/>)svg"},
    {R"svg(<g fill="url(#g)"><path fill="red" d="M0 0h2v2z"/></g><linearGradient id="g"><stop stop-color="red"/><stop offset="1"/></linearGradient>)svg",
     "inherited-gradient", R"svg(<path d="M0 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<a href="x"><path fill="inherit" d="M0 0h2v2q1 1 2 2z"/></a>)svg", "quadratic-curve",
     R"svg(<path d="M0 0h2v2c.667.667 1.333 1.333 2 2z"/>)svg"},
    {R"svg(<path d="M0 0h2v2q1 1 2 2z" fill="red"/><path d="M4 0h2v2z" fill="red"/>)svg", "quadratic-curve",
     R"svg(<g fill="#f00"><path d="M0 0h2v2c.667.667 1.333 1.333 2 2z"/><path d="M4 0h2v2z"/></g>)svg"},
    {R"svg(<defs><g id="g"><rect width="2" height="2" fill="red"/></g></defs><use href="#g" x="2"/><use href="#g" x="2" y="4"/>)svg",
     "href href",
     R"svg(<g fill="#f00"><rect x="2" width="2" height="2"/><rect x="2" y="4" width="2" height="2"/></g>)svg"},
    {R"svg(<rect width="4" height="4" fill="url(#none) lime"/>)svg", "missing-reference",
     R"svg(<rect width="4" height="4" fill="#0f0"/>)svg"},
    {R"svg(<linearGradient id="a"><stop stop-color="lime"/></linearGradient><rect width="4" height="4" fill="url(#a)"/>)svg",
     "gradient-stops", R"svg(<rect width="4" height="4" fill="#0f0"/>)svg"},
    {R"svg(<radialGradient id="a" cx="5" cy="5" r="4" fr="1" gradientUnits="userSpaceOnUse"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></radialGradient><rect width="8" height="8" fill="url(#a)" fill-opacity=".5"/>)svg",
     "gradient-geometry gradient-opacity",
     R"svg(<defs><radialGradient id="g1" gradientUnits="userSpaceOnUse" cx="5" cy="5" r="4"><stop offset="0" stop-color="#f00"/><stop offset=".25" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></radialGradient></defs><rect width="8" height="8" fill="url(#g1)" opacity=".5"/>)svg"},
    {R"svg(<clipPath id="c"><rect width="4" height="4"/></clipPath><clipPath id="d" clip-path="url(#c)"><circle r="4"/></clipPath><rect width="8" height="8" clip-path="url(#d)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M4 0c0 2.209-1.791 4-4 4s-4-1.791-4-4 1.791-4 4-4 4 1.791 4 4z"/></clipPath><clipPath id="c2"><path d="M0 0h4v4H0z"/></clipPath></defs><g clip-path="url(#c2)"><rect width="8" height="8" clip-path="url(#c1)"/></g>)svg"},
    {R"svg(<clipPath id="c"><path d="M0 0h4v4H0z"/><path d="M2 2v4h4V2z"/></clipPath><rect width="8" height="8" clip-path="url(#c)"/>)svg",
     "clip-rule",
     R"svg(<defs><clipPath id="c1"><path d="M0 0h4v4H0zM6 2v4H2V2z"/></clipPath></defs><rect width="8" height="8" clip-path="url(#c1)"/>)svg"},
    {R"svg(<path fill="none" stroke="#000" stroke-linecap="square" stroke-width="2" stroke-dasharray="0 4" d="M2 2h4"/>)svg",
     "dashes", R"svg(<path d="M1 1h2v2H1z" fill="#000"/>)svg"},
    {R"svg(<use href="#u" fill="red"/><defs><path id="u" fill="context-fill" d="M0 0h2v2z"/></defs>)svg",
     "href", R"svg(<path d="M0 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<text>a</text>)svg", "text", nullptr},
    {R"svg(<image href="a.png" width="2" height="2"/>)svg", "image", nullptr},
    {R"svg(<filter id="f"><feGaussianBlur stdDeviation="2"/></filter><path filter="url(#f)" d="M0 0h2v2z"/>)svg",
     "filter", nullptr},
    {R"svg(<path style="mix-blend-mode:multiply" d="M0 0h2v2z"/>)svg", "blend-mode", nullptr},
    {R"svg(<g id="x"><use href="#x"/></g>)svg", "reference-cycle", nullptr},
    {R"svg(<pattern id="p" width=".01" height=".01"><path d="M0 0h2v2z"/></pattern><rect width="9" height="9" fill="url(#p)"/>)svg",
     "pattern pattern-size", nullptr},
    {R"svg(<mask id="m"><rect width="9" height="9" fill="url(#a)"/></mask><linearGradient id="a"><stop/><stop offset="1" stop-color="#fff"/></linearGradient><rect width="9" height="9" mask="url(#m)"/>)svg",
     "mask mask-shading", nullptr},
    {R"svg(<use href="other.svg#a"/>)svg", "external", nullptr},
    {R"svg(<path clip-path="circle(5)" d="M0 0h2v2z"/>)svg", "clip-shape", nullptr},
    {R"svg(<filter id="f" color-interpolation-filters="sRGB"><feColorMatrix values="0 0 0 0 1 0 0 0 0 0 0 0 0 0 0 0 0 0 .5 0"/></filter><path filter="url(#f)" d="M2 2h4v4z"/>)svg",
     "color-filter", R"svg(<path d="M2 2h4v4z" fill="#f00" fill-opacity=".5"/>)svg"},
    {R"svg(<g xmlns="http://example.org/"><path d="M0 0h2v2z"/></g>)svg", "namespace", R"svg()svg"},
    {R"svg(<s:path xmlns:s="http://www.w3.org/2000/svg" d="M0 0h2v2z"/>)svg", "prefix",
     R"svg(<path d="M0 0h2v2z"/>)svg"},
    {R"svg(<path fill="re&#x64;" d="M0 0h2v2z"/>)svg", "entity",
     R"svg(<path d="M0 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<path systemLanguage="de" d="M0 0h2v2z"/>)svg", "conditional", R"svg()svg"},
    {R"svg(<g opacity="50%"><path d="M0 0h2v2z"/></g>)svg", "opacity-syntax",
     R"svg(<path d="M0 0h2v2z" opacity=".5"/>)svg"},
    {R"svg(<path display="none" visibility="visible" d="M0 0h2v2z"/>)svg", "visibility", R"svg()svg"},
    {R"svg(<g fill-opacity=".5"><path fill-opacity="inherit" d="M0 0h2v2z"/></g>)svg", "opacity-syntax",
     R"svg(<path d="M0 0h2v2z" fill-opacity=".5"/>)svg"},
    {R"svg(<ellipse cx="4" cy="4" rx="2"/>)svg", "shape-syntax", R"svg(<circle cx="4" cy="4" r="2"/>)svg"},
    {R"svg(<circle r="-2" stroke="red"/>)svg", "shape-syntax", R"svg()svg"},
    {R"svg(<path stroke="red" stroke-width="1e1" d="M0 2h4"/>)svg", "units",
     R"svg(<path d="M0 2h4" stroke="#f00" stroke-width="10"/>)svg"},
    {R"svg(<linearGradient id="a" gradientTransform="rotate(45)"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></linearGradient><rect width="8" height="4" fill="url(#a)"/>)svg",
     "gradient-geometry",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="2.2627" y2="4.5255"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><rect width="8" height="4" fill="url(#g1)"/>)svg"},
    {R"svg(<path style="fill:red;fill:foo;;stroke:blue" d="M0 0h2v2z"/>)svg", "style-syntax",
     R"svg(<path d="M0 0h2v2z" fill="#f00" stroke="#00f"/>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="2"/></pattern><use href="#r" fill="url(#p)"/><defs><rect id="r" width="6" height="2" fill="context-fill"/></defs>)svg",
     "href pattern", R"svg(<rect width="2" height="2"/><rect x="4" width="2" height="2"/>)svg"},
    {R"svg(<use xmlns:xlink="http://example.org/" xlink:href="#u"/><defs><path id="u" d="M0 0h2v2z"/></defs>)svg",
     "href", R"svg()svg"},
    {R"svg(<path fill="lab(50% 0 0)" stroke="oklch(62.8% .2577 29.23 / .5)" d="M0 0h2v2z"/>)svg",
     "color-syntax color-syntax",
     R"svg(<path d="M0 0h2v2z" fill="#777" stroke="#f00" stroke-opacity=".5"/>)svg"},
    {R"svg(<path fill="lch(54.29 106.84 40.86)" stroke="hwb(120 0% 50%)" d="M0 0h2v2z"/>)svg",
     "color-syntax color-syntax", R"svg(<path d="M0 0h2v2z" fill="#f00" stroke="#008000"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<path d="M1 1h9z"/>)svg",
    R"svg(<rect width="10" height="5" rx="1e0" ry="20%"/>)svg",
    R"svg(<path transform="rotate(90 5 5)" d="M2 2h4v4z"/>)svg",
    R"svg(<path d="M2 2h4v4a.01.01 0 0 1 0 .01z"/><path d="M2 2h4v4H2.01V2.01zm6 6h2v2z"/><path fill="none" d="M0 0a8 8 0 0 1 9 9"/>)svg",
    R"svg(<rect width="4" height="4" fill="url(#none)"/>)svg",
    R"svg(<clipPath id="c"><rect width="4" height="4"/></clipPath><rect width="8" height="8" clip-path="url(#c)"/>)svg",
    R"svg(<g transform="scale(0)"><path d="M0 0q1 1 2 2"/></g>)svg",
};
// clang-format on

} // namespace

TEST(Conform, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(Conform, LeavesAlone) { ExpectUnchanged(kUnchanged); }

TEST(Conform, WritesTheFrame) {
    const struct {
        const char *root, *result;
    } cases[] = {
        {R"(viewBox="0,0,24,24")", R"(viewBox="0 0 24 24")"},
        {R"(viewBox="0 0 48 24" width="1in" height="1in")",
         R"(width="96" height="96" viewBox="0 -12 48 48")"},
        {R"(viewBox="0 0 48 24" width="10" height="10" preserveAspectRatio="xMinYMax slice")",
         R"(width="10" height="10" viewBox="0 0 24 24")"},
        {R"(viewBox="0 0 48 24" width="10" height="10" preserveAspectRatio="none")",
         R"(width="10" height="10" viewBox="0 0 10 10")"},
        {R"(width="50%" viewBox="0 0 24 24" height="2em")",
         R"(width="12" height="32" viewBox="0 -20 24 64")"},
        {"", R"(viewBox="0 0 9 9")"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.root);
        const std::string head = R"(<svg xmlns="http://www.w3.org/2000/svg" )";
        const Result result = Conform(head + test.root + R"(><rect width="9" height="9"/></svg>)");
        EXPECT_EQ(result.text.substr(0, result.text.find('>')), head + test.result);
        EXPECT_FALSE(HasDifference(Check(result.text))) << result.text;
    }
}

TEST(Conform, KeepsLicencesAndTitle) {
    const Result result =
        Conform(Drawing("<!--! by me --><!-- Copyright us --><!-- made by hand -->"
                        "<title>A &amp; B</title><desc>C</desc><path d=\"M0 0q1 1 2 0\"/>"));
    EXPECT_EQ(result.text, Drawing("<!--! by me --><!-- Copyright us --><title>A &amp; B</title>"
                                   "<path d=\"M0 0c.667.667 1.333.667 2 0\"/>") +
                               "\n");
}

TEST(Conform, RefusesWhatIsNoDrawing) {
    const struct {
        const char *text, *rule;
    } cases[] = {
        {"", "ill-formed"},
        {"<svg", "ill-formed"},
        {"<html/>", "no-svg"},
        {"<svg xmlns=\"http://example.org/\"/>", "no-svg"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.text);
        const Result result = Conform(test.text);
        EXPECT_TRUE(result.isRefused);
        EXPECT_NE(RulesOf(result.findings).find(test.rule), std::string::npos) << RulesOf(result.findings);
        EXPECT_EQ(result.text, "");
    }
}

TEST(Rules, AreWhole) {
    for (const RuleInfo& rule : Rules()) {
        SCOPED_TRACE(rule.id);
        EXPECT_FALSE(rule.message.empty());
        EXPECT_FALSE(rule.remedy.empty());
        EXPECT_FALSE(rule.anchor.empty());
        EXPECT_FALSE(rule.message.ends_with('.'));
        for (const RuleInfo& other : Rules()) EXPECT_TRUE(&rule == &other || rule.id != other.id);
    }
}
