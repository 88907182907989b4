// Rewriting transforms as attributes and as properties.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<rect width="6" height="6" transform="translate(2 3),,scale(2)"/>)svg", "transform-syntax",
     R"svg(<rect width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" transform=" translate ( 2 , 3 ) , scale ( 2 ) "/>)svg",
     "transform-syntax", R"svg(<rect x="2" y="3" width="12" height="12"/>)svg"},
    {R"svg(<rect width="6" height="6" transform="rotate(45,6)"/>)svg", "transform-syntax",
     R"svg(<rect width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" transform="translate(2e0,+3)"/>)svg", "transform-syntax",
     R"svg(<rect x="2" y="3" width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" transform="translate(2,3) foo"/>)svg", "transform-syntax",
     R"svg(<rect width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:translate(2px,3px)"/>)svg", "transform-property",
     R"svg(<rect x="2" y="3" width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:translateX(2px) translateY(50%)"/>)svg",
     "transform-property", R"svg(<rect x="2" y="12" width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:rotate(45deg)"/>)svg", "transform-property",
     R"svg(<path d="M0 0l4.243 4.243L0 8.485-4.243 4.243z"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:rotate(.1turn) scaleX(2) scaleY(.5)"/>)svg",
     "transform-property", R"svg(<path d="M0 0l9.708 7.053L7.945 9.48-1.763 2.427z"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:skew(10deg,5deg)"/>)svg", "transform-property",
     R"svg(<path d="M0 0l6 .525 1.058 6-6-.525z"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:matrix(1,.2,.3,1,2,3)"/>)svg", "transform-property",
     R"svg(<path d="M2 3l6 1.2 1.8 6-6-1.2z"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:scale(50%)"/>)svg", "transform-property",
     R"svg(<rect width="3" height="3"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:translate3d(2px,3px,0)"/>)svg", "computed-value",
     nullptr},
    {R"svg(<rect width="6" height="6" style="transform:rotateZ(30deg)"/>)svg", "transform-property",
     R"svg(<path d="M0 0l5.196 3-3 5.196-5.196-3z"/>)svg"},
    {R"svg(<rect width="6" height="6" style="transform:none" transform="translate(5 5)"/>)svg",
     "transform-property", R"svg(<rect width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" style="translate:5px 5px"/>)svg", "transform-property",
     R"svg(<rect x="5" y="5" width="6" height="6"/>)svg"},
    {R"svg(<rect width="6" height="6" style="rotate:30deg"/>)svg", "transform-property",
     R"svg(<path d="M0 0l5.196 3-3 5.196-5.196-3z"/>)svg"},
    {R"svg(<rect width="6" height="6" style="scale:2"/>)svg", "transform-property",
     R"svg(<rect width="12" height="12"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" transform="rotate(45)" transform-origin="8 8"/>)svg",
     "transform-property", R"svg(<path d="M8 3.757 12.243 8 8 12.243 3.757 8z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:center"/>)svg",
     "transform-property", R"svg(<path d="M12 2.101l4.243 4.242L12 10.586 7.757 6.343z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:50% 50%;transform-box:fill-box"/>)svg",
     "transform-property", R"svg(<path d="M8 3.757 12.243 8 8 12.243 3.757 8z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:top right;transform-box:fill-box"/>)svg",
     "transform-property", R"svg(<path d="M6.757.757 11 5 6.757 9.243 2.515 5z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-box:fill-box"/>)svg",
     "transform-property", R"svg(<path d="M5 5l4.243 4.243L5 13.485.757 9.243z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:bottom"/>)svg",
     "transform-property", R"svg(<path d="M20.485 5.615l4.243 4.243-4.243 4.243-4.242-4.243z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:8px"/>)svg",
     "transform-property", R"svg(<path d="M10.828 4.929l4.243 4.243-4.243 4.242-4.242-4.242z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:left 3px"/>)svg",
     "transform-property", R"svg(<path d="M2.121 7.95l4.243 4.242-4.243 4.243-4.242-4.243z"/>)svg"},
    {R"svg(<g transform="rotate(30)" transform-origin="50% 50%"><rect x="5" y="5" width="6" height="6"/></g>)svg",
     "transform-property", R"svg(<path d="M9.438 2.438l5.196 3-3 5.196-5.196-3z"/>)svg"},
    {R"svg(<g style="transform:rotate(30deg);transform-box:fill-box;transform-origin:center"><rect x="5" y="5" width="6" height="6"/><rect x="15" y="5" width="6" height="6"/></g>)svg",
     "transform-property",
     R"svg(<path d="M7.572 1.402l5.196 3-3 5.196-5.196-3z"/><path d="M16.232 6.402l5.196 3-3 5.196-5.196-3z"/>)svg"},
    {R"svg(<g style="transform:translate(50%,0);transform-box:fill-box"><rect x="5" y="5" width="6" height="6"/></g>)svg",
     "transform-property", R"svg(<rect x="8" y="5" width="6" height="6"/>)svg"},
    {R"svg(<g transform="scale(1e-3)"><rect width="6000" height="6000" stroke="red" stroke-width="500"/></g>)svg",
     "transform-syntax", R"svg(<rect width="6" height="6" stroke="#f00" stroke-width=".5"/>)svg"},
    {R"svg(<g transform="rotate(1e2)"><rect y="-10" width="6" height="6"/></g>)svg", "transform-syntax",
     R"svg(<path d="M9.848 1.736 8.806 7.645 2.897 6.603 3.939.695z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:rotate(45deg);transform-origin:1em 1em;font-size:8px"/>)svg",
     "transform-property", R"svg(<path d="M8 3.757 12.243 8 8 12.243 3.757 8z"/>)svg"},
    {R"svg(<rect x="5" y="5" width="6" height="6" style="transform:perspective(10px) rotateX(30deg)"/>)svg",
     "computed-value", nullptr},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<rect width="6" height="6" transform="translate(2,3)scale(2)"/>)svg",
    R"svg(<rect width="6" height="6" transform="translate(2)"/>)svg",
    R"svg(<rect width="6" height="6" transform="scale(2 1)"/>)svg",
    R"svg(<rect width="6" height="6" transform="rotate(45)"/>)svg",
    R"svg(<rect width="6" height="6" transform="rotate(45,6,6)"/>)svg",
    R"svg(<rect width="6" height="6" transform="rotate(45deg)"/>)svg",
    R"svg(<rect width="6" height="6" transform="skewX(20)skewY(10)"/>)svg",
    R"svg(<rect width="6" height="6" transform="matrix(1 .2 .3 1 2 3)"/>)svg",
    R"svg(<rect width="6" height="6" transform="matrix(1 .2 .3 1 2)"/>)svg",
    R"svg(<rect width="6" height="6" transform="translate(2px,3px)"/>)svg",
    R"svg(<rect width="6" height="6" transform="Translate(2,3)"/>)svg",
    R"svg(<rect width="6" height="6" transform="translateX(2)"/>)svg",
    R"svg(<rect width="6" height="6" transform="none"/>)svg",
    R"svg(<rect width="6" height="6" transform=""/>)svg",
    R"svg(<rect width="6" height="6" style="transform:translate(2,3)"/>)svg",
    R"svg(<rect width="6" height="6" style="transform:rotate(45)"/>)svg",
    R"svg(<rect width="6" height="6" style="transform:matrix(1,.2,.3,1,2px,3px)"/>)svg",
    R"svg(<g transform="scale(2,1)"><rect x="2" y="2" width="6" height="6" stroke="red"/></g>)svg",
    R"svg(<g transform="scale(-1,1) translate(-24 0)"><path d="M2 2h10v8" stroke="red"/></g>)svg",
    R"svg(<g transform="scale(0)"><rect x="2" y="2" width="6" height="6" stroke="red"/></g>)svg",
    R"svg(<g transform="scale(1 0)"><rect x="2" y="2" width="6" height="6" stroke="red"/></g>)svg",
    R"svg(<g transform="skewX(90)"><rect x="2" y="2" width="6" height="6"/></g>)svg",
    R"svg(<rect x="5" y="5" width="6" height="6" style="zoom:2"/>)svg",
};
// clang-format on

} // namespace

TEST(ConformTransforms, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformTransforms, LeavesAlone) { ExpectUnchanged(kUnchanged); }
