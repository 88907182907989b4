// Rewriting masks that come to areas and shares of opacity.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<mask id="m"><rect width="12" height="24" fill="#fff"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="12" height="24" fill="red"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" opacity=".2125" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="24" height="24" fill="#fff"/><circle cx="12" cy="12" r="6"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M24 24H0V0h24zM6 12c0 3.314 2.686 6 6 6s6-2.686 6-6-2.686-6-6-6-6 2.686-6 6z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" mask-type="alpha"><circle cx="12" cy="12" r="6"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M18 12c0 3.314-2.686 6-6 6s-6-2.686-6-6 2.686-6 6-6 6 2.686 6 6z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" style="mask-type:alpha"><circle cx="12" cy="12" r="6" fill-opacity=".5"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M18 12c0 3.314-2.686 6-6 6s-6-2.686-6-6 2.686-6 6-6 6 2.686 6 6z"/></clipPath></defs><rect width="24" height="24" opacity=".5" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" x="0" y="0" width=".5" height="1"><rect width="24" height="24" fill="#fff"/></mask><rect x="4" y="4" width="16" height="16" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 20H4V4h8z"/></clipPath></defs><rect x="4" y="4" width="16" height="16" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" maskUnits="userSpaceOnUse" x="0" y="0" width="10" height="10"><rect width="24" height="24" fill="#fff"/></mask><rect x="4" y="4" width="16" height="16" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M10 10H0V0h10z"/></clipPath></defs><rect x="4" y="4" width="16" height="16" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" maskContentUnits="objectBoundingBox"><circle cx=".5" cy=".5" r=".4" fill="#fff"/></mask><rect x="4" y="4" width="16" height="12" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M18.4 10c0 2.651-2.865 4.8-6.4 4.8S5.6 12.651 5.6 10 8.465 5.2 12 5.2s6.4 2.149 6.4 4.8z"/></clipPath></defs><rect x="4" y="4" width="16" height="12" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="24" height="24" fill="#fff" opacity=".5"/></mask><g mask="url(#m)"><rect width="14" height="14"/><rect x="6" y="6" width="14" height="14" fill="red"/></g>)svg",
     "mask group-opacity",
     R"svg(<path d="M14 6H6v8H0V0h14z" opacity=".5"/><rect x="6" y="6" width="14" height="14" fill="#f00" opacity=".5"/>)svg"},
    {R"svg(<mask id="m"><rect width="24" height="24" fill="gray"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask", R"svg(<rect width="24" height="24" opacity=".502"/>)svg"},
    {R"svg(<mask id="m"><path d="M2 2h20v20z" stroke="#fff" fill="none" stroke-width="4"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M24 26.4h-.428L-2.4.428V0H24zM6.828 4 20 17.172V4z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><g transform="rotate(10)"><rect x="2" width="14" height="14" fill="#fff"/></g></mask><g transform="translate(2 2)" mask="url(#m)"><rect width="24" height="24"/></g>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M17.757 4.778l-2.431 13.788-13.787-2.431L3.97 2.347z"/></clipPath></defs><rect x="2" y="2" width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"/><rect width="24" height="24" mask="url(#m)"/>)svg", "mask", R"svg()svg"},
    {R"svg(<mask id="n"><rect width="24" height="12" fill="#fff"/></mask><mask id="m"><rect width="12" height="24" fill="#fff" mask="url(#n)"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 12H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" mask="url(#m)"><rect width="12" height="24" fill="#fff"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "reference-cycle mask", nullptr},
    {R"svg(<clipPath id="c"><rect width="12" height="12"/></clipPath><mask id="m" clip-path="url(#c)"><rect width="24" height="24" fill="#fff"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask", R"svg(<rect width="24" height="24"/>)svg"},
    {R"svg(<clipPath id="c"><rect width="12" height="12"/></clipPath><mask id="m"><rect width="24" height="24" fill="#fff" clip-path="url(#c)"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 12H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" opacity=".5"><rect width="12" height="24" fill="#fff"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m" fill="#fff"><rect width="12" height="24"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="12" height="24" fill="#fff" visibility="hidden"/></mask><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask", R"svg()svg"},
    {R"svg(<mask id="m"><rect width="24" height="24" fill="#fff"/><rect width="12" height="24" fill="#000" fill-opacity=".5"/></mask><rect width="24" height="24" fill="red" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M24 24H12V0h12z"/></clipPath><clipPath id="c2"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" fill="#f00" clip-path="url(#c1)"/><rect width="24" height="24" fill="#f00" opacity=".5" clip-path="url(#c2)"/>)svg"},
    {R"svg(<mask id="m" maskUnits="userSpaceOnUse" x="0" y="0" width="24" height="24"><rect width="24" height="24" fill="#fff"/><circle cx="12" cy="12" r="3"/></mask><path d="M2 12h20" stroke="red" stroke-width="3" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M24 24H0V0h24zM9 12c0 1.657 1.343 3 3 3s3-1.343 3-3-1.343-3-3-3-3 1.343-3 3z"/></clipPath></defs><path d="M2 12h20" stroke="#f00" stroke-width="3" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><use href="#k"/></mask><circle id="k" cx="12" cy="12" r="8" fill="#fff"/><rect width="24" height="24" mask="url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M20 12c0 4.418-3.582 8-8 8s-8-3.582-8-8 3.582-8 8-8 8 3.582 8 8z"/></clipPath></defs><circle cx="12" cy="12" r="8" fill="#fff"/><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<linearGradient id="g"><stop stop-color="#fff"/><stop offset="1" stop-color="#fff"/></linearGradient><mask id="m"><rect width="12" height="24" fill="url(#g)"/></mask><rect width="24" height="24" mask=)svg",
     "ill-formed", nullptr},
    {R"svg(<mask id="m"><rect width="12" height="24" fill="#fff"/></mask><rect width="24" height="24" style="mask:url(#m)"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
    {R"svg(<mask id="m"><rect width="12" height="24" fill="#fff"/></mask><rect width="24" height="24" style="mask:url(#m) alpha"/>)svg",
     "mask",
     R"svg(<defs><clipPath id="c1"><path d="M12 24H0V0h12z"/></clipPath></defs><rect width="24" height="24" clip-path="url(#c1)"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<rect width="24" height="24" mask="url(#none)"/>)svg",
    R"svg(<mask id="m"><rect width="12" height="24" fill="#fff"/></mask><rect width="24" height="24" style="mask:linear-gradient(red,blue)"/>)svg",
};
// clang-format on

} // namespace

TEST(ConformMasks, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformMasks, LeavesAlone) { ExpectUnchanged(kUnchanged); }
