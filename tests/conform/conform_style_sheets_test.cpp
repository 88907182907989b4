// Rewriting selectors, at-rules, the cascade and declarations.
#include "conform_cases.h"

#include <gtest/gtest.h>

#include <string>

using namespace ozm::conform::test;

namespace {

// Sheets that make a rectangle red which follows them.
constexpr const char* kReddening[] = {
    "rect:not(.a){fill:red}",
    "rect:nth-child(2){fill:red}",
    "rect:first-of-type{fill:red}",
    "rect:last-of-type{fill:red}",
    "svg>rect{fill:red}",
    "style+rect{fill:red}",
    R"([width="14"]{fill:red})",
    "rect{fill:red;fill:bogus}",
    "rect{fill:red",
    "rect{FILL:RED}",
    "*|rect{fill:red}",
    "@media not print{rect{fill:red}}",
    "@media (prefers-color-scheme:light){rect{fill:red}}",
    "@media (prefers-color-scheme:dark) or (prefers-color-scheme:light){rect{fill:red}}",
    "@media screen and (not ((color) and (scripting))){rect{fill:red}}",
    "@media only screen{rect{fill:red}}",
    "@supports (fill:red){rect{fill:red}}",
    "@import url(foo.css);rect{fill:red}",
    "@font-face{font-family:x}rect{fill:red}",
    "@layer a{rect{fill:red}}",
    "/* c */rect/* c */{/* c */fill/* c */:/* c */red/* c */}",
    "<![CDATA[rect{fill:red}]]>",
    R"(@charset "utf-8";rect{fill:red})",
};

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<g font-size="20"><rect style="all:unset;font-size:8px;width:1em;height:1em"/></g>)svg",
     "geometry-property geometry-property", R"svg(<rect width="8" height="8"/>)svg"},
    {R"svg(<defs><style>rect{fill:red}</style></defs><rect width="4" height="4"/>)svg", "style-sheet",
     R"svg(<rect width="4" height="4" fill="#f00"/>)svg"},
    {R"svg(<style media="screen">rect{fill:red}</style><rect width="4" height="4"/>)svg", "style-sheet",
     R"svg(<rect width="4" height="4" fill="#f00"/>)svg"},
    {R"svg(<style>@media print{rect{fill:red}}@media screen{rect{stroke:blue}}</style><rect x="2" y="2" width="4" height="4"/>)svg",
     "style-sheet", R"svg(<rect x="2" y="2" width="4" height="4" stroke="#00f"/>)svg"},
    {R"svg(<style>.a{fill:red}</style><rect class="a b" width="14" height="14"/>)svg", "style-sheet",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect.a{fill:red}</style><rect class=" a " width="14" height="14"/>)svg", "style-sheet",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>#a{fill:red}.a{fill:blue}</style><rect class="a" id="a" width="14" height="14"/>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect:is(.a,.b){fill:red}</style><rect width="14" height="14" class="b"/>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect:where(.a){fill:red}rect{fill:blue}</style><rect width="14" height="14" class="a"/>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#00f"/>)svg"},
    {R"svg(<style>:root{fill:red}</style><rect width="14" height="14"/>)svg", "root-style",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>g rect,a rect{fill:red}</style><g><g><rect width="14" height="14"/></g></g>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>style~rect{fill:red}</style><g/><rect width="14" height="14"/>)svg", "style-sheet",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>[class^=a][height$="4"]{fill:red}</style><rect class="ab" width="14" height="14"/>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>*{fill:red}</style><rect width="14" height="14" fill="blue"/>)svg", "style-sheet",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect{fill:red!important}</style><rect width="14" height="14" style="fill:blue"/>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect{fill:red;;stroke:blue}</style><rect x="2" y="2" width="14" height="14"/>)svg",
     "style-sheet style-sheet",
     R"svg(<rect x="2" y="2" width="14" height="14" fill="#f00" stroke="#00f"/>)svg"},
    {R"svg(<style>g{fill:red}rect{fill:inherit}</style><g><rect fill="blue" width="14" height="14"/></g>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect{all:unset}</style><rect fill="red" width="14" height="14"/>)svg", "shape-syntax",
     R"svg()svg"},
    {R"svg(<style>rect{all:initial;fill:lime}</style><rect stroke="red" width="14" height="14"/>)svg",
     "shape-syntax", R"svg()svg"},
    {R"svg(<style>rect{stroke:red;stroke-width:2px;stroke-dasharray:2px 1px;stroke-linejoin:round}</style><rect x="2" y="2" width="14" height="14"/>)svg",
     "style-sheet style-sheet style-sheet style-sheet",
     R"svg(<rect x="2" y="2" width="14" height="14"/><path d="M2 4V2h2M5 2h2M8 2h2M11 2h2M14 2h2M16 3v2M16 6v2M16 9v2M16 12v2M16 15v1h-1M14 16h-2M11 16H9M8 16H6M5 16H3M2 16v-2M2 13v-2M2 10V8M2 7V5" fill="none" stroke="#f00" stroke-width="2" stroke-linejoin="round"/>)svg"},
    {R"svg(<style>svg{fill:red}</style><rect width="14" height="14"/>)svg", "root-style",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<style>rect{fill:red}</style><style>rect{fill:blue}</style><rect width="14" height="14"/>)svg",
     "style-sheet", R"svg(<rect width="14" height="14" fill="#00f"/>)svg"},
    {R"svg(<style>rect[fill]{stroke:red}</style><rect x="2" y="2" fill="lime" width="14" height="14"/>)svg",
     "style-sheet", R"svg(<rect x="2" y="2" width="14" height="14" fill="#0f0" stroke="#f00"/>)svg"},
    {R"svg(<style>g rect{fill:red}</style><defs><rect id="r" width="14" height="14"/></defs><g><use href="#r"/></g>)svg",
     "href", R"svg(<rect width="14" height="14"/>)svg"},
    {R"svg(<rect width="14" height="14" style="fill:red /* x */; /* stroke:blue */"/>)svg", "style-syntax",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<rect width="14" height="14" style="fill:red !important" />)svg", "style-syntax",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<rect width="14" height="14" style="fill:red;garbage;stroke:blue" />)svg", "style-syntax",
     R"svg(<rect width="14" height="14" fill="#f00" stroke="#00f"/>)svg"},
    {R"svg(<rect width="14" height="14" style="FILL:red" />)svg", "style-syntax",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<rect width="14" height="14" style="fill:url(&quot;#a&quot;) red" />)svg", "entity",
     R"svg(<rect width="14" height="14" fill="#f00"/>)svg"},
    {R"svg(<rect width="14" height="14" style="all:unset" fill="red"/>)svg", "shape-syntax", R"svg()svg"},
    {R"svg(<style>path:nth-child(2n){fill:red}</style><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet",
     R"svg(<path d="M0 0h2v2z" fill="#f00"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<style>path:nth-child(odd){fill:red}</style><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z"/><path d="M4 0h2v2z" fill="#f00"/><path d="M8 0h2v2z"/>)svg"},
    {R"svg(<style>path:nth-of-type(2n+1){fill:red}</style><g/><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet",
     R"svg(<path d="M0 0h2v2z" fill="#f00"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<style>path:nth-of-type(-n+2){fill:red}</style><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet",
     R"svg(<g fill="#f00"><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/></g><path d="M8 0h2v2z"/>)svg"},
    {R"svg(<style>path:nth-last-child(1){fill:red}</style><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<style>path:nth-last-of-type( 2 ){fill:red}</style><path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z"/><path d="M4 0h2v2z" fill="#f00"/><path d="M8 0h2v2z"/>)svg"},
    {R"svg(<style>path:only-child{fill:red}</style><g><path d="M0 0h2v2z"/></g><g><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/></g>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z" fill="#f00"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg"},
    {R"svg(<style>path:only-of-type{fill:red}</style><g><path d="M0 0h2v2z"/><rect/></g><g><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/></g>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z" fill="#f00"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg"},
    {R"svg(<style>path:not(.a,.b):not(#c){fill:red}</style><path class="a" d="M0 0h2v2z"/><path id="c" d="M4 0h2v2z"/><path d="M8 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z"/><path d="M4 0h2v2z"/><path d="M8 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<style>:is(g, svg) > path{fill:red}path{fill:lime}</style><path d="M0 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<style>:where(#a){fill:red}path{fill:lime}</style><path id="a" d="M0 0h2v2z"/>)svg", "style-sheet",
     R"svg(<path d="M0 0h2v2z" fill="#0f0"/>)svg"},
    {R"svg(<style>:is(#a, bogus:foo){fill:red}path{fill:lime}</style><path id="a" d="M0 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z" fill="#f00"/>)svg"},
    {R"svg(<style>@layer a{#a{fill:red}}path{fill:lime}</style><path id="a" d="M0 0h2v2z"/>)svg",
     "style-sheet", R"svg(<path d="M0 0h2v2z" fill="#0f0"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<path d="M0 0h5v5z"><g><rect width="4" height="14"/></g></path>)svg",
    R"svg(<style type="text/x">rect{fill:red}</style><rect width="4" height="4"/>)svg",
    R"svg(<style media="print">rect{fill:red}</style><rect width="4" height="4"/>)svg",
    R"svg(<style>@media not screen{rect{fill:red}}</style><rect x="2" y="2" width="4" height="4"/>)svg",
    R"svg(<style>@media (prefers-color-scheme:dark){rect{fill:red}}</style><rect x="2" y="2" width="4" height="4"/>)svg",
    R"svg(<style>@media screen and (max-width:10px){rect{fill:red}}</style><rect x="2" y="2" width="4" height="4"/>)svg",
    R"svg(<style>rect:hover{fill:red}</style><rect width="14" height="14"/>)svg",
    R"svg(<style>rect::before{fill:red}</style><rect width="14" height="14"/>)svg",
    R"svg(<style>rect{fill:red}</style><rect width="14" height="14" style="fill:blue"/>)svg",
    R"svg(<style>rect{fill:red}}path{stroke:blue}</style><path d="M2 2h9v9"/>)svg",
    R"svg(<style><!-- rect{fill:red} --></style><rect width="14" height="14"/>)svg",
    R"svg(<style>RECT{fill:red}</style><rect width="14" height="14"/>)svg",
    R"svg(<style>.A{fill:red}</style><rect class="a" width="14" height="14"/>)svg",
    R"svg(<style>rect , {fill:red}</style><rect width="14" height="14"/>)svg",
    R"svg(<style>rect, bogus:foo{fill:red}</style><rect width="14" height="14"/>)svg",
    R"svg(<style>svg|rect{fill:red}</style><rect width="14" height="14"/>)svg",
    R"svg(<rect width="14" height="14" style="fill:red;stroke:blue;"/>)svg",
    R"svg(<rect width="14" height="14" style=" fill : red ; stroke : blue "/>)svg",
    R"svg(<rect width="14" height="14" style="fill:'red'" />)svg",
    R"svg(<rect width="14" height="14" style="{fill:red}" />)svg",
    R"svg(<rect width="14" height="14" style="-inkscape-font:x;fill:red" />)svg",
    R"svg(<style>path:nth-child(n+){fill:red}</style><path d="M0 0h2v2z"/>)svg",
    R"svg(<style>:not(bogus:foo){fill:red}</style><path d="M0 0h2v2z"/>)svg",
};
// clang-format on

} // namespace

TEST(ConformStyleSheets, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformStyleSheets, LeavesAlone) { ExpectUnchanged(kUnchanged); }

TEST(ConformStyleSheets, ReachTheRectangleThatFollows) {
    for (const std::string sheet : kReddening) {
        const std::string body = "<style>" + sheet + R"(</style><rect width="14" height="14"/>)";
        const Case test = {body.c_str(), "style-sheet", R"(<rect width="14" height="14" fill="#f00"/>)"};
        ExpectCases({&test, 1});
    }
}
