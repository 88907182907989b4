// Rewriting prefixes, other namespaces, entities and what is no element.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<svg xmlns="http://www.w3.org/2000/svg" xmlns:s="http://www.w3.org/2000/svg" viewBox="0 0 24 24"><s:g fill="red"><s:rect width="6" height="6"/></s:g><rect x="9" width="6" height="6"/></svg>)svg",
     "prefix",
     R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24"><rect width="6" height="6" fill="#f00"/><rect x="9" width="6" height="6"/></svg>)svg"},
    {R"svg(<rect width="6" height="6" fill="&#35;f00"/><path d="M9 9h&#x34;v4"/>)svg", "entity entity",
     R"svg(<rect width="6" height="6" fill="#f00"/><path d="M9 9h4v4"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<svg xmlns="http://www.w3.org/2000/svg" xmlns:i="http://www.inkscape.org/namespaces/inkscape" viewBox="0 0 24 24"><i:g><rect width="6" height="6"/></i:g><rect x="9" width="6" height="6" i:fill="red"/></svg>)svg",
    R"svg(<rect width="6" height="6" fill='red' stroke="&quot;"/>)svg",
    R"svg(<g><!-- <rect width="6" height="6"/> --><rect x="9" width="6" height="6"/><![CDATA[<rect width="6" height="6"/>]]></g>)svg",
};
// clang-format on

} // namespace

TEST(ConformEncodings, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformEncodings, LeavesAlone) { ExpectUnchanged(kUnchanged); }
