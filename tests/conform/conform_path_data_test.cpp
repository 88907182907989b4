// Rewriting path data with all its commands and faults.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<path d="M0 0h1e31v4z"/>)svg", "coordinate-range", nullptr},
    {R"svg(<path style="d:path('M2 2h10v10z')"/>)svg", "geometry-property",
     R"svg(<path d="M2 2h10v10z"/>)svg"},
    {R"svg(<path style="d:path(&quot;M2 2h10v10z&quot;)" d="M0 0h4v4z"/>)svg", "geometry-property",
     R"svg(<path d="M2 2h10v10z"/>)svg"},
    {R"svg(<path style="d:none" d="M0 0h4v4z"/>)svg", "geometry-property", R"svg()svg"},
    {R"svg(<style>path{d:path("M2 2a4 4 0 0 1 8 0z")}</style><path/>)svg", "geometry-property",
     R"svg(<path d="M2 2C2-.209 3.791-2 6-2s4 1.791 4 4z"/>)svg"},
    {R"svg(<path d="M2 2A4 4 0 1 1 10 2z"/>)svg", "arc",
     R"svg(<path d="M2 2C2-.209 3.791-2 6-2s4 1.791 4 4z"/>)svg"},
    {R"svg(<path d="M2 2A4 4 0 00 10 2zM12 12a5 2 30 1110 0z"/>)svg", "arc",
     R"svg(<path d="M2 2c0 2.209 1.791 4 4 4s4-1.791 4-4zM12 12c-2.511-2.554-2.308-4.625.453-4.625S19.489 9.446 22 12z"/>)svg"},
    {R"svg(<path d="M2 2A0 4 0 0 0 10 12L2 8z"/>)svg", "arc", R"svg(<path d="M2 2l8 10-8-4z"/>)svg"},
    {R"svg(<path d="M2 2A-4 4 0 0 0 10 2z"/>)svg", "arc",
     R"svg(<path d="M2 2c0 2.209 1.791 4 4 4s4-1.791 4-4z"/>)svg"},
    {R"svg(<path d="M2 2A1 1 0 0 0 10 2z"/>)svg", "arc",
     R"svg(<path d="M2 2c0 2.209 1.791 4 4 4s4-1.791 4-4z"/>)svg"},
    {R"svg(<path d="M2 2A4 4 0 2 0 10 2z"/>)svg", "path-syntax", R"svg()svg"},
    {R"svg(<path d="M2 2Q10 2 10 10T20 12z"/>)svg", "quadratic-curve",
     R"svg(<path d="M2 2c5.333 0 8 2.667 8 8s3.333 6 10 2z"/>)svg"},
    {R"svg(<path d="M2 2T10 10T20 2z"/>)svg", "quadratic-curve",
     R"svg(<path d="M2 2s2.667 2.667 8 8 8.667 2.667 10-8z"/>)svg"},
    {R"svg(<path d="M2 2l5 5zl5 0 0 5zm1 1h3v3z"/>)svg", "relative-after-z",
     R"svg(<path d="M2 2l5 5zM2 2h5v5zM3 3h3v3z"/>)svg"},
    {R"svg(<path d="M2 2h5v5zh3v10z"/>)svg", "relative-after-z", R"svg(<path d="M2 2h5v5zM2 2h3v10z"/>)svg"},
    {R"svg(<path d="m2 2 5 0 0 5zm10 0 5 0 0 5z"/>)svg", "relative-after-z",
     R"svg(<path d="M2 2h5v5zM12 2h5v5z"/>)svg"},
    {R"svg(<path d="M2 2 L 10 2 10 10 5"/>)svg", "path-syntax", R"svg(<path d="M2 2h8v8"/>)svg"},
    {R"svg(<path d="L2 2L10 2 10 10"/>)svg", "path-syntax", R"svg()svg"},
    {R"svg(<path d="M2 2h20v20h-20zM6 6h8v8h-8z" fill-rule="EvenOdd"/>)svg", "value-syntax",
     R"svg(<path d="M2 2h20v20H2zM6 6h8v8H6z" fill-rule="evenodd"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<path d="M2 2A4 4 0 0 0 2 2L8 8v-4z"/>)svg",
    R"svg(<path d="M2 2S10 2 10 10s5 4 3 8z"/>)svg",
    R"svg(<path d="M2 2L10 2 10 10 foo L 2 10"/>)svg",
    R"svg(<path d="M2,2,L10,2"/>)svg",
    R"svg(<path d="M2 2L10,,2L10 10"/>)svg",
    R"svg(<path d="M2 2L10 2L10 10z z M4 12 h4 v4"/>)svg",
    R"svg(<path d="M2.5.5.5.5-5-.5"/>)svg",
    R"svg(<path d="M2 2e0L1e1 2L10 10"/>)svg",
    R"svg(<path d="M2 2h5v5h-5zM20 20" fill-rule="evenodd"/>)svg",
    R"svg(<path d="M2 2h20v20h-20zM6 6h8v8h-8z" fill-rule="evenodd"/>)svg",
    R"svg(<path d="M12 2l6 18L2 9h20L6 20z" fill-rule="evenodd"/>)svg",
    R"svg(<g fill-rule="evenodd"><path d="M12 2l6 18L2 9h20L6 20z"/><path d="M2 2h2v2z"/></g>)svg",
    R"svg(<path d="none"/>)svg",
    R"svg(<path d=""/>)svg",
    R"svg(<path d="  M 2 2 h 10 v 10 Z  "/>)svg",
};
// clang-format on

} // namespace

TEST(ConformPathData, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformPathData, LeavesAlone) { ExpectUnchanged(kUnchanged); }
