// Rewriting opacity of groups.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<g opacity=".5"><rect width="14" height="14"/><rect x="6" y="6" width="14" height="14" fill="red"/></g>)svg",
     "group-opacity",
     R"svg(<path d="M14 6H6v8H0V0h14z" opacity=".5"/><rect x="6" y="6" width="14" height="14" fill="#f00" opacity=".5"/>)svg"},
    {R"svg(<g opacity=".5"><g opacity=".5"><rect width="14" height="14"/><rect x="6" y="6" width="14" height="14" fill="red"/></g><circle cx="12" cy="12" r="4" fill="lime"/></g>)svg",
     "group-opacity group-opacity",
     R"svg(<path d="M14 6H6v8H0V0h14z" opacity=".25"/><path d="M20 20H6V6h14zM8 12c0 2.209 1.791 4 4 4s4-1.791 4-4-1.791-4-4-4-4 1.791-4 4z" fill="#f00" opacity=".25"/><circle cx="12" cy="12" r="4" fill="#0f0" opacity=".5"/>)svg"},
    {R"svg(<g opacity=".5"><rect width="14" height="14" stroke="red" stroke-width="3"/></g>)svg",
     "group-opacity",
     R"svg(<path d="M12.5 12.5h-11v-11h11z" opacity=".5"/><path d="M15.5 15.5h-17v-17h17zM1.5 1.5v11h11v-11z" fill="#f00" opacity=".5"/>)svg"},
    {R"svg(<g opacity=".5"><rect width="14" height="14" fill-opacity=".5"/><rect x="6" y="6" width="14" height="14" fill="red"/></g>)svg",
     "group-opacity",
     R"svg(<path d="M14 6H6v8H0V0h14z" fill-opacity=".5" opacity=".5"/><rect x="6" y="6" width="14" height="14" fill="#f00" opacity=".5"/>)svg"},
    {R"svg(<g opacity=".5"><rect width="14" height="14"/><rect x="6" y="6" width="14" height="14" fill="red" fill-opacity=".5"/></g>)svg",
     "group-opacity",
     R"svg(<path d="M14 6H6v8H0V0h14z" fill="#000" opacity=".5"/><path d="M14 14H6V6h8z" fill="#800000" opacity=".5"/><path d="M20 20H6v-6h8V6h6z" fill="#f00" fill-opacity=".5" opacity=".5"/>)svg"},
    {R"svg(<g opacity=".5"><linearGradient id="a"><stop stop-color="red"/><stop offset="1" stop-color="blue"/></linearGradient><rect width="14" height="14"/><rect x="6" y="6" width="14" height="14" fill="url(#a)"/></g>)svg",
     "group-opacity gradient-geometry",
     R"svg(<defs><linearGradient id="g1" gradientUnits="userSpaceOnUse" x1="6" y1="6" x2="20" y2="6"><stop offset="0" stop-color="#f00"/><stop offset="1" stop-color="#00f"/></linearGradient></defs><path d="M14 6H6v8H0V0h14z" opacity=".5"/><rect x="6" y="6" width="14" height="14" fill="url(#g1)" opacity=".5"/>)svg"},
    {R"svg(<g opacity="2"><rect width="14" height="14"/></g>)svg", "opacity-syntax",
     R"svg(<rect width="14" height="14"/>)svg"},
    {R"svg(<g opacity="50%"><rect width="14" height="14"/></g>)svg", "opacity-syntax",
     R"svg(<rect width="14" height="14" opacity=".5"/>)svg"},
    {R"svg(<g opacity="inherit"><rect width="14" height="14"/></g>)svg", "opacity-syntax",
     R"svg(<rect width="14" height="14"/>)svg"},
    {R"svg(<g opacity=".5"><g opacity="inherit"><rect width="14" height="14"/></g></g>)svg", "opacity-syntax",
     R"svg(<rect width="14" height="14" opacity=".25"/>)svg"},
    {R"svg(<g opacity="foo"><rect width="14" height="14"/></g>)svg", "opacity-syntax",
     R"svg(<rect width="14" height="14"/>)svg"},
    {R"svg(<use href="#g" opacity=".5"/><defs><g id="g"><rect width="14" height="14"/><circle cx="14" cy="14" r="6" fill="red"/></g></defs>)svg",
     "group-opacity href",
     R"svg(<path d="M14 8c-3.314 0-6 2.686-6 6H0V0h14z" opacity=".5"/><circle cx="14" cy="14" r="6" fill="#f00" opacity=".5"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<g opacity=".5"><rect width="14" height="14"/></g>)svg",
    R"svg(<g opacity=".5"><rect width="10" height="14"/><rect x="10" width="14" height="14" fill="red"/></g>)svg",
    R"svg(<g opacity="0"><rect width="14" height="14"/></g>)svg",
    R"svg(<g opacity="-1"><rect width="14" height="14"/></g>)svg",
    R"svg(<g style="opacity:.5;isolation:isolate"><rect width="14" height="14"/></g>)svg",
};
// clang-format on

} // namespace

TEST(ConformOpacity, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformOpacity, LeavesAlone) { ExpectUnchanged(kUnchanged); }
