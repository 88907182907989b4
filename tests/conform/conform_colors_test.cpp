// Rewriting colours in every notation of CSS.
#include "conform_cases.h"

#include <gtest/gtest.h>

#include <string>

using namespace ozm::conform::test;

namespace {

// A notation, and the paint that is written for it.
constexpr struct {
    const char *notation, *paint;
} kNotations[] = {
    {"color(srgb 1 0.5 0)", R"(fill="#ff8000")"},
    {"color(srgb 100% 50% 0% / 50%)", R"(fill="#ff8000" fill-opacity=".5")"},
    {"color(srgb-linear 1 0.5 0)", R"(fill="#ffbc00")"},
    {"color(display-p3 0.8 0.5 0.2)", R"(fill="#d97b15")"},
    {"color(display-p3 1 0 0)", R"(fill="#f00")"},
    {"color(a98-rgb 0.5 0.7 0.3)", R"(fill="#62b442")"},
    {"color(prophoto-rgb 0.5 0.5 0.3)", R"(fill="#9e9253")"},
    {"color(rec2020 0.5 0.5 0.3)", R"(fill="#8e8c53")"},
    {"color(xyz 0.3 0.4 0.2)", R"(fill="#8bb66b")"},
    {"color(xyz-d50 0.3 0.4 0.2)", R"(fill="#7ab87f")"},
    {"color(xyz-d65 0.3 0.4 0.2)", R"(fill="#8bb66b")"},
    {"color(srgb none 0.5 0)", R"(fill="#008000")"},
    {"COLOR(SRGB 1 .5 0)", R"(fill="#ff8000")"},
    {"lab(50% 40 59.5)", R"(fill="#bf5700")"},
    {"lab(50 40 59.5 / .5)", R"(fill="#bf5700" fill-opacity=".5")"},
    {"lch(52.2% 72.2 50)", R"(fill="#cd561a")"},
    {"lch(52.2% 172.2 50)", R"(fill="#f00")"},
    {"oklab(59% 0.1 0.1)", R"(fill="#c05d2b")"},
    {"oklch(60% 0.15 50)", R"(fill="#c46016")"},
    {"oklch(60% 0.45 150)", R"(fill="#00b700")"},
    {"oklch(0.6 0.15 0.5turn)", R"(fill="#009c84")"},
    {"hwb(90 10% 20%)", R"(fill="#73cc1a")"},
    {"hwb(90deg 60% 70%)", R"(fill="#767676")"},
    {"hsl(120, 50%, 50%)", R"(fill="#40bf40")"},
    {"hsl(-120, 50%, 50%, .5)", R"(fill="#4040bf" fill-opacity=".5")"},
    {"hsla(0.3turn 50% 50% / 40%)", R"(fill="#59bf40" fill-opacity=".4")"},
    {"hsl(120 50 50)", R"(fill="#40bf40")"},
    {"rgb(10% 20 30%)", R"(fill="#1a144d")"},
    {"rgb(100, 200, 30, 0.5)", R"(fill="#64c81e" fill-opacity=".5")"},
    {"rgb(100 200 30 / 0.5)", R"(fill="#64c81e" fill-opacity=".5")"},
    {"rgb(300,-20,127.5)", R"(fill="#ff0080")"},
    {"rgb(1e2,2e1,3)", R"(fill="#641403")"},
    {"rgb(+10,20,30)", R"(fill="#0a141e")"},
    {"rgb(10 20 none)", R"(fill="#0a1400")"},
    {"#ff00ff80", R"(fill="#f0f" fill-opacity=".502")"},
    {"#f0f8", R"(fill="#f0f" fill-opacity=".5333")"},
    {"RebeccaPurple", R"(fill="#639")"},
    {"/* c */red", R"(fill="#f00")"},
};

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<rect width="20" height="20" fill="#ff00f"/>)svg", "color-syntax",
     R"svg(<rect width="20" height="20"/>)svg"},
    {R"svg(<rect width="20" height="20" fill="Canvas"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="CanvasText"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="ButtonFace"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="LinkText"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="Highlight"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="GrayText"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="color-mix(in srgb, red, blue)"/>)svg", "computed-value",
     nullptr},
    {R"svg(<rect width="20" height="20" fill="color-mix(in srgb, red 25%, blue)"/>)svg", "computed-value",
     nullptr},
    {R"svg(<rect width="20" height="20" fill="color-mix(in oklab, red, blue)"/>)svg", "computed-value",
     nullptr},
    {R"svg(<rect width="20" height="20" fill="light-dark(red, blue)"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="rgb(from red r g 200)"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" fill="rgb(calc(100 + 50) 0 0)"/>)svg", "computed-value", nullptr},
    {R"svg(<rect width="20" height="20" style="--c:red;fill:var(--c)"/>)svg", "color-syntax",
     R"svg(<rect width="20" height="20" fill="#f00"/>)svg"},
    {R"svg(<rect width="20" height="20" style="fill:var(--c, blue)"/>)svg", "color-syntax",
     R"svg(<rect width="20" height="20" fill="#00f"/>)svg"},
    {R"svg(<g style="--c:lime"><rect width="20" height="20" style="fill:var(--c, blue)"/></g>)svg",
     "color-syntax", R"svg(<rect width="20" height="20" fill="#0f0"/>)svg"},
    {R"svg(<style>:root{--c:teal}</style><rect width="20" height="20" fill="var(--c)"/>)svg", "color-syntax",
     R"svg(<rect width="20" height="20" fill="#008080"/>)svg"},
    {R"svg(<rect width="20" height="20" fill="url(#x) red icc-color(foo, 1, 2)"/>)svg", "inherited-gradient",
     R"svg(<rect width="20" height="20"/>)svg"},
    {R"svg(<g fill="red"><rect width="20" height="20" fill="initial"/></g>)svg", "color-syntax",
     R"svg(<rect width="20" height="20" fill="#000"/>)svg"},
    {R"svg(<g color="red"><rect width="20" height="20" fill="currentcolor"/></g>)svg", "current-color",
     R"svg(<rect width="20" height="20" fill="#f00"/>)svg"},
    {R"svg(<g color="red"><g color="currentColor"><rect width="20" height="20" fill="currentColor"/></g></g>)svg",
     "current-color", R"svg(<rect width="20" height="20" fill="#f00"/>)svg"},
    {R"svg(<g color="red" fill="currentColor"><rect color="blue" width="20" height="20"/></g>)svg",
     "current-color", R"svg(<rect width="20" height="20" fill="#00f"/>)svg"},
    {R"svg(<g color="red" style="fill:currentColor"><g color="blue"><rect width="20" height="20"/></g></g>)svg",
     "current-color", R"svg(<rect width="20" height="20" fill="#00f"/>)svg"},
    {R"svg(<g color="rgba(255,0,0,.5)"><rect width="20" height="20" fill="currentColor"/></g>)svg",
     "current-color", R"svg(<rect width="20" height="20" fill="#f00" fill-opacity=".5"/>)svg"},
    {R"svg(<rect width="20" height="20" fill="red" fill-opacity="50%"/>)svg", "opacity-syntax",
     R"svg(<rect width="20" height="20" fill="#f00" fill-opacity=".5"/>)svg"},
    {R"svg(<rect width="20" height="20" fill="red" fill-opacity=".5x"/>)svg", "opacity-syntax",
     R"svg(<rect width="20" height="20" fill="#f00"/>)svg"},
    {R"svg(<rect width="20" height="20" fill="red" opacity="calc(.25 * 2)"/>)svg",
     "opacity-syntax computed-value", nullptr},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<rect width="20" height="20" fill="color(srgb 1 0.5)"/>)svg",
    R"svg(<rect width="20" height="20" fill="hwb(90, 10%, 20%)"/>)svg",
    R"svg(<rect width="20" height="20" fill="hsl(120, 50, 50)"/>)svg",
    R"svg(<rect width="20" height="20" fill="rgb(10% 20% 30%)"/>)svg",
    R"svg(<rect width="20" height="20" fill="rgb(10%, 20, 30%)"/>)svg",
    R"svg(<rect width="20" height="20" fill="rgb(100, 200, 30 / 0.5)"/>)svg",
    R"svg(<rect width="20" height="20" fill="rgb( 10 , 20,30 )"/>)svg",
    R"svg(<rect width="20" height="20" fill="rgb (10,20,30)"/>)svg",
    R"svg(<rect width="20" height="20" fill="rgb(10,20,none)"/>)svg",
    R"svg(<rect width="20" height="20" fill="#F0f"/>)svg",
    R"svg(<rect width="20" height="20" fill="ff00ff"/>)svg",
    R"svg(<rect width="20" height="20" fill="grey"/>)svg",
    R"svg(<rect width="20" height="20" fill="lightgoldenrodyellow"/>)svg",
    R"svg(<g fill="green"><rect width="20" height="20" fill="nonsense"/></g>)svg",
    R"svg(<g fill="green"><rect width="20" height="20" fill=""/></g>)svg",
    R"svg(<g fill="green"><rect width="20" height="20" fill="rgb(1,2)"/></g>)svg",
    R"svg(<g fill="green"><rect width="20" height="20" style="fill:"/></g>)svg",
    R"svg(<g fill="green"><rect width="20" height="20" fill="red blue"/></g>)svg",
    R"svg(<rect width="20" height="20" fill="red icc-color(foo, 1, 2)"/>)svg",
    R"svg(<rect width="20" height="20" fill="re/* c */d"/>)svg",
    R"svg(<rect width="20" height="20" fill="red!important"/>)svg",
    R"svg(<rect width="20" height="20" fill="inherit"/>)svg",
    R"svg(<g fill="red"><rect width="20" height="20" fill="unset"/></g>)svg",
    R"svg(<g fill="red"><rect width="20" height="20" fill="revert-layer"/></g>)svg",
    R"svg(<g color="nonsense"><rect width="20" height="20" fill="currentColor"/></g>)svg",
    R"svg(<rect width="20" height="20" fill="red" fill-opacity="1.5"/>)svg",
    R"svg(<rect width="20" height="20" fill="red" fill-opacity="-1"/>)svg",
    R"svg(<rect width="20" height="20" fill="red" fill-opacity="5e-1"/>)svg",
};
// clang-format on

} // namespace

TEST(ConformColors, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformColors, LeavesAlone) { ExpectUnchanged(kUnchanged); }

TEST(ConformColors, ReadsEveryNotation) {
    for (const auto& [notation, paint] : kNotations) {
        const std::string rect = R"(<rect width="20" height="20" )";
        const std::string body = rect + "fill=\"" + notation + "\"/>", result = rect + paint + "/>";
        const Case test = {body.c_str(), "color-syntax", result.c_str()};
        ExpectCases({&test, 1});
    }
}
