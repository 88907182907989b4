// Rewriting clip paths.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<clipPath id="c"><path d="M0 0h1e31v24h-1e31z"/></clipPath><rect width="4" height="4" clip-path="url(#c)"/>)svg",
     "coordinate-range", nullptr},
    {R"svg(<clipPath id="c" transform="translate(4 0)"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M24 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c" style="transform:translate(4px,0)"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M24 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c" clipPathUnits="objectBoundingBox"><circle cx=".5" cy=".5" r=".3"/></clipPath><rect x="4" width="20" height="12" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M20 6c0 1.988-2.686 3.6-6 3.6S8 7.988 8 6s2.686-3.6 6-3.6 6 1.612 6 3.6z"/></clipPath></defs><rect x="4" width="20" height="12" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c" clipPathUnits="objectBoundingBox" transform="scale(.5)"><rect width="1" height="1"/></clipPath><rect x="4" y="4" width="16" height="12" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M2 2h8v6H2z"/></clipPath></defs><rect x="4" y="4" width="16" height="12" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c" clipPathUnits="objectBoundingBox"><circle cx=".5" cy=".5" r=".3"/></clipPath><g clip-path="url(#c)"><rect x="4" width="10" height="12"/><rect x="14" y="6" width="10" height="12"/></g>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M20 9c0 2.982-2.686 5.4-6 5.4S8 11.982 8 9s2.686-5.4 6-5.4 6 2.418 6 5.4z"/></clipPath></defs><g clip-path="url(#c1)"><rect x="4" width="10" height="12"/><rect x="14" y="6" width="10" height="12"/></g>)svg"},
    {R"svg(<clipPath id="c" clipPathUnits="objectBoundingBox"><circle cx=".5" cy=".5" r=".3"/></clipPath><path d="M2 8h20" stroke="red" stroke-width="4" clip-path="url(#c)"/>)svg",
     "clip-path", R"svg()svg"},
    {R"svg(<clipPath id="c"><path clip-rule="evenodd" d="M2 2h20v20H2zM6 6h8v8H6z"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-rule",
     R"svg(<defs><clipPath id="c1"><path d="M2 2h20v20H2zM6 14h8V6H6z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c" clip-rule="evenodd"><path d="M2 2h20v20H2zM6 6h8v8H6z"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-rule",
     R"svg(<defs><clipPath id="c1"><path d="M2 2h20v20H2zM6 14h8V6H6z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c"><path d="M2 2h20v20H2zM6 6v8h8v-8z"/><path d="M8 8h10v10h-10z"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-rule",
     R"svg(<defs><clipPath id="c1"><path d="M2 2h20v20H2zM6 6v8h8V6zM8 8h10v10H8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8" display="none"/><circle cx="12" cy="12" r="4"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M16 12c0 2.209-1.791 4-4 4s-4-1.791-4-4 1.791-4 4-4 4 1.791 4 4z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8" visibility="hidden"/><circle cx="12" cy="12" r="4"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M16 12c0 2.209-1.791 4-4 4s-4-1.791-4-4 1.791-4 4-4 4 1.791 4 4z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c" visibility="hidden"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path", R"svg()svg"},
    {R"svg(<defs><circle id="k" cx="12" cy="12" r="8"/></defs><clipPath id="c"><use href="#k" x="3"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M23 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<defs><g id="k"><circle cx="12" cy="12" r="8"/></g></defs><clipPath id="c"><use href="#k" x="3"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path", R"svg()svg"},
    {R"svg(<clipPath id="d"><rect width="12" height="24"/></clipPath><clipPath id="c"><circle cx="12" cy="12" r="8" clip-path="url(#d)"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M12 20c-4.418 0-8-3.582-8-8s3.582-8 8-8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="d"><rect width="12" height="24"/></clipPath><clipPath id="c" clip-path="url(#d)"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M20 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath><clipPath id="c2"><path d="M0 0h12v24H0z"/></clipPath></defs><g clip-path="url(#c2)"><rect width="24" height="24" clip-path="url(#c1)"/></g>)svg"},
    {R"svg(<clipPath id="c" clip-path="url(#c)"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path reference-cycle", nullptr},
    {R"svg(<clipPath id="c" clip-path="url(#none)"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M20 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<rect width="20" height="20" clip-path="inset(2px 3px 4px 5px)"/>)svg", "clip-shape", nullptr},
    {R"svg(<rect width="20" height="20" clip-path="circle(5px at 10px 10px)"/>)svg", "clip-shape", nullptr},
    {R"svg(<rect width="20" height="20" clip-path="polygon(0 0,20px 0,10px 20px)"/>)svg", "clip-shape",
     nullptr},
    {R"svg(<rect width="20" height="20" clip-path="fill-box"/>)svg", "clip-shape", nullptr},
    {R"svg(<rect width="20" height="20" clip-path="path('M0 0h10v10z')"/>)svg", "clip-shape", nullptr},
    {R"svg(<rect width="20" height="20" style="clip-path:ellipse(50% 20%)"/>)svg", "clip-shape", nullptr},
    {R"svg(<clipPath id="c"><rect x="4" y="4" width="50%" height="2em" rx="2" font-size="5"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M6 4h8c1.105 0 2 .895 2 2v6c0 1.105-.895 2-2 2H6c-1.105 0-2-.895-2-2V6c0-1.105.895-2 2-2z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c"><path d="M4 4a8 8 0 0 1 16 0z"/></clipPath><rect width="24" height="24" clip-path="url(#c)" stroke="red" stroke-width="4"/>)svg",
     "clip-path",
     R"svg(<defs><clipPath id="c1"><path d="M4 4c0-4.418 3.582-8 8-8s8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" stroke="#f00" stroke-width="4" clip-path="url(#c1)"/>)svg"},
    {R"svg(<clipPath id="c"><text y="10">A</text></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
     "text", nullptr},
    {R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" style="clip-path:url('#c')"/>)svg",
     "value-syntax",
     R"svg(<defs><clipPath id="c1"><path d="M20 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<style>.k{clip-path:url(#c)}</style><clipPath id="c"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" class="k"/>)svg",
     "style-sheet",
     R"svg(<defs><clipPath id="c1"><path d="M20 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><path fill-rule="evenodd" d="M2 2h20v20H2zM6 6h8v8H6z"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><g><circle cx="12" cy="12" r="8"/></g></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"/><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><circle cx="12" cy="12" r="0"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8" opacity=".2" fill="none" stroke="red"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<rect width="20" height="20" clip-path="url(#none)"/>)svg",
    R"svg(<rect id="r"/><rect width="20" height="20" clip-path="url(#r)"/>)svg",
    R"svg(<rect width="20" height="20" clip-path="none"/>)svg",
    R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8"/></clipPath><g clip-path="url(#c)" transform="rotate(10)"><rect width="24" height="24"/></g>)svg",
    R"svg(<clipPath id="c"><circle cx="12" cy="12" r="8"/></clipPath><g clip-path="url(#c)"><rect width="12" height="24"/><g clip-path="url(#c)" transform="translate(8 0)"><rect width="24" height="24" fill="red"/></g></g>)svg",
    R"svg(<clipPath id="c"><line x2="24" y2="24" stroke-width="4" stroke="red"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><polygon points="2 2 20 2 12 20"/><polyline points="0 20 10 24 20 20"/></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><switch><circle cx="12" cy="12" r="8"/></switch></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
    R"svg(<clipPath id="c"><a><circle cx="12" cy="12" r="8"/></a></clipPath><rect width="24" height="24" clip-path="url(#c)"/>)svg",
};
// clang-format on

} // namespace

TEST(ConformClips, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformClips, LeavesAlone) { ExpectUnchanged(kUnchanged); }
