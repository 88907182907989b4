// Rewriting custom properties.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<rect width="4" height="4" style="--c:lime;fill:VAR(--c)"/>)svg", "color-syntax",
     R"svg(<rect width="4" height="4" fill="#0f0"/>)svg"},
    {R"svg(<linearGradient id="a" x2="8" gradientUnits="userSpaceOnUse" gradientTransform="rotate(90)" style="--o:a long name that is no place;--o:4px 4px;transform-origin:var(--o)"><stop stop-color="red"/><stop offset="1" stop-color="#00f"/></linearGradient><rect width="8" height="8" fill="url(#a)"/>)svg",
     "gradient-geometry",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="8" y1="0" x2="8" y2="8"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><rect width="8" height="8" fill="url(#g1)"/>)svg"},
    {R"svg(<g style="--a:red"><rect width="4" height="4" style="fill:var(--a)"/><rect x="5" width="4" height="4" style="--a:blue;fill:var(--a)"/></g>)svg",
     "color-syntax color-syntax",
     R"svg(<rect width="4" height="4" fill="#f00"/><rect x="5" width="4" height="4" fill="#00f"/>)svg"},
    {R"svg(<rect width="4" height="4" style="--a:var(--b);--b:lime;fill:var(--a)"/>)svg", "color-syntax",
     R"svg(<rect width="4" height="4" fill="#0f0"/>)svg"},
    {R"svg(<rect width="4" height="4" style="fill:var(--a, var(--b, rgb(0, 0, 255)))"/>)svg", "color-syntax",
     R"svg(<rect width="4" height="4" fill="#00f"/>)svg"},
    {R"svg(<rect width="4" height="4" style="--a:0 128 0;fill:rgb(var(--a) / 50%)"/>)svg", "color-syntax",
     R"svg(<rect width="4" height="4" fill="#008000" fill-opacity=".5"/>)svg"},
    {R"svg(<path d="M0 2h20" stroke="red" style="--w:3px;stroke-width:var(--w)"/>)svg", "units",
     R"svg(<path d="M0 2h20" stroke="#f00" stroke-width="3"/>)svg"},
    {R"svg(<style>.d{--c:lime}rect{fill:var(--c,red)}</style><rect width="4" height="4"/><g class="d"><rect x="5" width="4" height="4"/></g>)svg",
     "style-sheet",
     R"svg(<rect width="4" height="4" fill="#f00"/><rect x="5" width="4" height="4" fill="#0f0"/>)svg"},
    {R"svg(<rect width="4" height="4" style="--A:red;--a:blue;fill:var(--A)"/>)svg", "color-syntax",
     R"svg(<rect width="4" height="4" fill="#f00"/>)svg"},
    {R"svg(<defs><rect id="r" width="4" height="4" style="fill:var(--c,red)"/></defs><use href="#r" style="--c:lime"/><use href="#r" x="5"/>)svg",
     "color-syntax href href",
     R"svg(<rect width="4" height="4" fill="#0f0"/><rect x="5" width="4" height="4" fill="#f00"/>)svg"},
    {R"svg(<circle cx="4" cy="4" r="2" style="--r:3px;r:var(--r)"/>)svg", "computed-value", nullptr},
    {R"svg(<path d="M0 2h20" stroke="red" style="--w:calc(1px + 2px);stroke-width:var(--w)"/>)svg",
     "computed-value", nullptr},
    {R"svg(<rect width="4" height="4" style="--a:initial;fill:var(--a,lime)"/>)svg", "color-syntax",
     R"svg(<rect width="4" height="4" fill="#0f0"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<g fill="red"><rect width="4" height="4" style="fill:var(--a)"/></g>)svg",
    R"svg(<g fill="red"><rect width="4" height="4" style="--a:nonsense;fill:var(--a)"/></g>)svg",
};
// clang-format on

} // namespace

TEST(ConformVariables, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformVariables, LeavesAlone) { ExpectUnchanged(kUnchanged); }
