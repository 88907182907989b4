// Rewriting patterns.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<pattern id="p" width=".5" height=".5"><rect width="2" height="2" fill="red"/></pattern><rect x="2" y="2" width="8" height="6" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect x="2" y="2" width="2" height="2"/><rect x="6" y="2" width="2" height="2"/><rect x="2" y="5" width="2" height="2"/><rect x="6" y="5" width="2" height="2"/></g>)svg"},
    {R"svg(<pattern id="p" width=".5" height=".5" patternContentUnits="objectBoundingBox"><rect width=".2" height=".2" fill="red"/></pattern><rect x="2" y="2" width="10" height="8" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect x="2" y="2" width="2" height="1.6"/><rect x="7" y="2" width="2" height="1.6"/><rect x="2" y="6" width="2" height="1.6"/><rect x="7" y="6" width="2" height="1.6"/></g>)svg"},
    {R"svg(<pattern id="p" width=".5" height=".5" viewBox="0 0 10 10" preserveAspectRatio="none"><rect x="1" y="1" width="4" height="4"/></pattern><rect x="2" y="2" width="16" height="12" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<rect x="2.8" y="2.6" width="3.2" height="2.4"/><rect x="10.8" y="2.6" width="3.2" height="2.4"/><rect x="2.8" y="8.6" width="3.2" height="2.4"/><rect x="10.8" y="8.6" width="3.2" height="2.4"/>)svg"},
    {R"svg(<pattern id="p" width=".5" height="1" viewBox="0 0 10 10" preserveAspectRatio="xMinYMin slice"><rect x="1" y="1" width="4" height="4"/></pattern><rect x="2" y="2" width="16" height="12" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<rect x="3.2" y="3.2" width="4.8" height="4.8"/><rect x="11.2" y="3.2" width="4.8" height="4.8"/>)svg"},
    {R"svg(<pattern id="p" x="1" y="1" width="4" height="4" patternUnits="userSpaceOnUse" patternTransform="scale(2)"><rect width="2" height="2" fill="red"/></pattern><rect x="2" y="2" width="16" height="8" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect x="2" y="2" width="4" height="4"/><rect x="10" y="2" width="4" height="4"/></g>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse" style="transform:translate(1px,1px)"><rect width="2" height="2" fill="red"/></pattern><rect x="1" y="1" width="8" height="4" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect x="1" y="1" width="2" height="2"/><rect x="5" y="1" width="2" height="2"/></g>)svg"},
    {R"svg(<pattern id="p" width="8" height="8" patternUnits="userSpaceOnUse"><rect width="4" height="8" fill="red"/></pattern><path d="M0 4h16" fill="none" stroke="url(#p)" stroke-width="4"/>)svg",
     "pattern gradient-stroke",
     R"svg(<defs><clipPath id="c1"><path d="M0 2h16v4H0z"/></clipPath></defs><g clip-path="url(#c1)"><g fill="#f00"><rect width="4" height="8"/><rect x="8" width="4" height="8"/></g></g>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="4" fill="red"/></pattern><rect width="8" height="4" fill="url(#p)" stroke="#000" fill-opacity=".5"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect width="2" height="4" opacity=".5"/><rect x="4" width="2" height="4" opacity=".5"/></g><rect width="8" height="4" fill="none" stroke="#000"/>)svg"},
    {R"svg(<pattern id="q" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="2" fill="red"/></pattern><pattern id="p" href="#q" x="1"/><rect x="1" width="8" height="4" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect x="1" width="2" height="2"/><rect x="5" width="2" height="2"/></g>)svg"},
    {R"svg(<pattern id="q" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="2" fill="red"/></pattern><pattern id="p" xlink:href="#q" width="6"><rect width="3" height="1"/></pattern><rect width="12" height="4" fill="url(#p)"/>)svg",
     "pattern", R"svg(<rect width="3" height="1"/><rect x="6" width="3" height="1"/>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="4" height="4" fill="url(#p)"/><rect width="2" height="1"/></pattern><rect width="8" height="4" fill="url(#p)"/>)svg",
     "pattern", R"svg(<rect width="2" height="1"/><rect x="4" width="2" height="1"/>)svg"},
    {R"svg(<pattern id="q" width="2" height="2" patternUnits="userSpaceOnUse"><rect width="1" height="2" fill="red"/></pattern><pattern id="p" width="6" height="6" patternUnits="userSpaceOnUse"><rect width="4" height="4" fill="url(#q)"/></pattern><rect width="12" height="6" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<defs><clipPath id="c1"><path d="M6 0h4v4H6z"/></clipPath></defs><g fill="#f00"><rect width="1" height="2"/><rect x="2" width="1" height="2"/><rect y="2" width="1" height="2"/><rect x="2" y="2" width="1" height="2"/></g><g clip-path="url(#c1)"><g fill="#f00"><rect x="6" width="1" height="2"/><rect x="8" width="1" height="2"/><rect x="6" y="2" width="1" height="2"/><rect x="8" y="2" width="1" height="2"/></g></g>)svg"},
    {R"svg(<pattern id="p" width="25%" height="2em" patternUnits="userSpaceOnUse" font-size="4"><rect width="2" height="2" fill="red"/></pattern><rect width="12" height="8" fill="url(#p)" font-size="9"/>)svg",
     "pattern", R"svg(<g fill="#f00"><rect width="2" height="2"/><rect x="6" width="2" height="2"/></g>)svg"},
    {R"svg(<pattern id="p" width="8" height="8" patternUnits="userSpaceOnUse" fill="red"><rect width="2" height="2"/></pattern><rect width="16" height="8" fill="url(#p)"/>)svg",
     "pattern", R"svg(<g fill="#f00"><rect width="2" height="2"/><rect x="8" width="2" height="2"/></g>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="2"/></pattern><g fill="url(#p)"><rect width="8" height="4"/><rect x="12" width="4" height="4"/></g>)svg",
     "pattern pattern",
     R"svg(<rect width="2" height="2"/><rect x="4" width="2" height="2"/><rect x="12" width="2" height="2"/>)svg"},
    {R"svg(<pattern id="p" width="4" height="4" patternUnits="userSpaceOnUse" patternTransform="foo"><rect width="2" height="2"/></pattern><rect width="8" height="4" fill="url(#p)"/>)svg",
     "pattern", R"svg(<rect width="2" height="2"/><rect x="4" width="2" height="2"/>)svg"},
    {R"svg(<pattern id="p" width="8" height="8" patternUnits="userSpaceOnUse"><rect width="8" height="4"/></pattern><path fill-rule="evenodd" d="M0 0h16v8H0zM2 2h2v4H2z" fill="url(#p)"/>)svg",
     "pattern",
     R"svg(<defs><clipPath id="c1"><path d="M0 0h16v8H0zM2 6h2V2H2z"/></clipPath></defs><g clip-path="url(#c1)"><rect width="8" height="4"/><rect x="8" width="8" height="4"/></g>)svg"},
    {R"svg(<pattern id="p" width=".5" height="1"><rect width="2" height="2"/></pattern><path d="M2 12h20" stroke="url(#p) lime" stroke-width="3"/>)svg",
     "gradient-stroke", R"svg(<path d="M2 12h20" stroke="#0f0" stroke-width="3"/>)svg"},
    {R"svg(<pattern id="p" width=".5" height="1"><rect width="2" height="2"/></pattern><path d="M2 12h20" stroke="url(#p)" stroke-width="3"/>)svg",
     "gradient-stroke", R"svg(<path d="M2 12h20"/>)svg"},
    {R"svg(<pattern id="p" width="8" height="8" patternUnits="userSpaceOnUse"><rect width="8" height="8" fill="red" opacity=".5"/></pattern><rect width="16" height="8" fill="url(#p)" opacity=".5"/>)svg",
     "pattern",
     R"svg(<g fill="#f00"><rect width="8" height="8" opacity=".25"/><rect x="8" width="8" height="8" opacity=".25"/></g>)svg"},
    {R"svg(<pattern id="p" width="0" height="4" patternUnits="userSpaceOnUse"><rect width="2" height="2" fill="red"/></pattern><rect width="8" height="8" fill="url(#p) lime" stroke="red"/>)svg",
     "missing-reference", R"svg(<rect width="8" height="8" fill="#0f0" stroke="#f00"/>)svg"},
};
// clang-format on

} // namespace

TEST(ConformPatterns, RewritesOrRefuses) { ExpectCases(kCases); }
