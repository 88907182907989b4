// Rewriting markers.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform::test;

namespace {

// The drawing, the rules of its findings, the result.
// clang-format off
constexpr Case kCases[] = {
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2"><rect width="4" height="4" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000"/><g fill="#f00"><rect x="2" y="2" width="4" height="4"/><rect x="12" y="2" width="4" height="4"/><rect x="12" y="12" width="4" height="4"/></g>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2"><rect width="4" height="4" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2" style="marker:url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2"/><g fill="#f00"><rect width="8" height="8"/><rect x="10" width="8" height="8"/><rect x="10" y="10" width="8" height="8"/></g>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2" orient="auto"><path d="M0 0l4 2l-4 2" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<defs><clipPath id="c1"><path d="M14 1.172 16.828 4 14 6.828 11.172 4z"/></clipPath></defs><path d="M4 4h10v10" fill="none" stroke="#000"/><path d="M2 2l4 2-4 2" fill="#f00"/><path d="M14 1.172l1.414 4.242L11.172 4" fill="#f00" clip-path="url(#c1)"/><path d="M16 12l-2 4-2-4" fill="#f00"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2" orient="auto-start-reverse"><path d="M0 0l4 2l-4 2" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000"/><g fill="#f00"><path d="M6 6 2 4l4-2"/><path d="M16 12l-2 4-2-4"/></g>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2" orient="30"><path d="M0 0l4 2l-4 2" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<defs><clipPath id="c1"><path d="M3.268 1.268l3.464 2-2 3.464-3.464-2z"/></clipPath><clipPath id="c2"><path d="M13.268 11.268l3.464 2-2 3.464-3.464-2z"/></clipPath></defs><path d="M4 4h10v10" fill="none" stroke="#000"/><path d="M3.268 1.268 5.732 5l-4.464-.268" fill="#f00" clip-path="url(#c1)"/><path d="M13.268 11.268 15.732 15l-4.464-.268" fill="#f00" clip-path="url(#c2)"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2" orient="0.1turn"><path d="M0 0l4 2l-4 2" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<defs><clipPath id="c1"><path d="M3.558 1.206l3.236 2.352-2.352 3.236-3.236-2.352z"/></clipPath><clipPath id="c2"><path d="M13.558 11.206l3.236 2.352-2.352 3.236-3.236-2.352z"/></clipPath></defs><path d="M4 4h10v10" fill="none" stroke="#000"/><path d="M3.558 1.206l2.06 3.97-4.412-.734" fill="#f00" clip-path="url(#c1)"/><path d="M13.558 11.206l2.06 3.97-4.412-.734" fill="#f00" clip-path="url(#c2)"/>)svg"},
    {R"svg(<marker id="m" viewBox="0 0 10 10" refX="5" refY="5"><path d="M0 0l10 5l-10 5" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2"/><g fill="#f00"><path d="M1 1l6 3-6 3"/><path d="M11 11l6 3-6 3"/></g>)svg"},
    {R"svg(<marker id="m" viewBox="0 0 10 10" refX="5" refY="5" markerWidth="5" markerHeight="3"><path d="M0 0l10 5l-10 5" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2"/><g fill="#f00"><path d="M1 1l6 3-6 3"/><path d="M11 11l6 3-6 3"/></g>)svg"},
    {R"svg(<marker id="m" viewBox="0 0 10 10" refX="5" refY="5" markerWidth="5" markerHeight="3" preserveAspectRatio="none"><path d="M0 0l10 5l-10 5" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2"/><g fill="#f00"><path d="M-1 1 9 4-1 7"/><path d="M9 11l10 3-10 3"/></g>)svg"},
    {R"svg(<marker id="m" viewBox="0 0 10 10" refX="center" refY="bottom" markerUnits="userSpaceOnUse" markerWidth="6" markerHeight="6"><path d="M0 0l10 5l-10 5" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2"/><g fill="#f00"><path d="M1-2l6 3-6 3"/><path d="M11 8l6 3-6 3"/></g>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" overflow="visible"><circle r="3" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#000"/><g fill="#f00"><circle cx="4" cy="4" r="3"/><circle cx="14" cy="14" r="3"/></g>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4"><circle r="3" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<defs><clipPath id="c1"><path d="M4 4h4v4H4z"/></clipPath><clipPath id="c2"><path d="M14 14h4v4h-4z"/></clipPath></defs><path d="M4 4h10v10" fill="none" stroke="#000"/><circle cx="4" cy="4" r="3" fill="#f00" clip-path="url(#c1)"/><circle cx="14" cy="14" r="3" fill="#f00" clip-path="url(#c2)"/>)svg"},
    {R"svg(<marker id="m" markerWidth="0" markerHeight="4"><circle r="3" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker", R"svg(<path d="M4 4h10v10" fill="none" stroke="#000"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2" fill="context-stroke" stroke="context-fill"/></marker><path d="M4 4h10v10" fill="lime" stroke="red" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="#0f0" stroke="#f00"/><g fill="#f00" stroke="#0f0"><circle cx="4" cy="4" r="2"/><circle cx="14" cy="14" r="2"/></g>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><polyline points="4 4 14 4 14 14" fill="none" stroke="red" marker-start="url(#m)" marker-mid="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10" fill="none" stroke="#f00"/><circle cx="4" cy="4" r="2"/><circle cx="14" cy="4" r="2"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><polygon points="4 4 14 4 14 14" fill="none" stroke="red" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v10z" fill="none" stroke="#f00"/><circle cx="4" cy="4" r="2"/><circle cx="14" cy="4" r="2"/><circle cx="14" cy="14" r="2"/><circle cx="4" cy="4" r="2"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><line x1="4" y1="4" x2="14" y2="14" stroke="red" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4l10 10" fill="none" stroke="#f00"/><circle cx="4" cy="4" r="2"/><circle cx="14" cy="14" r="2"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible" orient="auto"><path d="M-2 -2l4 2l-4 2"/></marker><path d="M4 4q10 0 10 10t6 2" stroke="red" fill="none" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker quadratic-curve",
     R"svg(<path d="M4 4c6.667 0 10 3.333 10 10s2 7.333 6 2" fill="none" stroke="#f00"/><path d="M2 2l4 2-4 2"/><path d="M16 12l-2 4-2-4"/><path d="M17.2 16.4l4-2-.8 4.4"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible" orient="auto"><path d="M-2 -2l4 2l-4 2"/></marker><path d="M4 4a6 6 0 0 1 12 6" stroke="red" fill="none" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker arc",
     R"svg(<path d="M4 4C5.657.686 9.686-.657 13 1s4.657 5.686 3 9" fill="none" stroke="#f00"/><path d="M1.317 4.894l3.577-2.683v4.472"/><path d="M18.683 9.106l-3.577 2.683V7.317"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible" orient="auto"><path d="M-2 -2l4 2l-4 2"/></marker><path d="M4 4h10v8z" stroke="red" fill="none" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v8z" fill="none" stroke="#f00"/><path d="M1.451 5.225l3.211-3.112.563 4.436"/><path d="M14 1.172l1.414 4.242L11.172 4"/><path d="M16.669 12.936l-4.472-.07 2.739-3.535"/><path d="M1.451 5.225l3.211-3.112.563 4.436"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible" orient="auto"><path d="M-2 -2l4 2l-4 2"/></marker><path d="M4 4h10v8zM4 16h8v4" stroke="red" fill="none" marker-start="url(#m)" marker-mid="url(#m)" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v8zM4 16h8v4" fill="none" stroke="#f00"/><path d="M1.451 5.225l3.211-3.112.563 4.436"/><path d="M14 1.172l1.414 4.242L11.172 4"/><path d="M16.669 12.936l-4.472-.07 2.739-3.535"/><path d="M1.451 5.225l3.211-3.112.563 4.436"/><path d="M2 14l4 2-4 2"/><path d="M12 13.172l1.414 4.242L9.172 16"/><path d="M14 18l-2 4-2-4"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible" opacity=".5" fill="blue"><circle r="2"/><circle cx="2" r="2"/></marker><path d="M4 4h10v8" stroke="red" fill="none" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v8" fill="none" stroke="#f00"/><g fill="#00f"><path d="M15 10.269c-.598.345-1 .991-1 1.731s.402 1.386 1 1.731c-.294.171-.635.269-1 .269-1.105 0-2-.895-2-2s.895-2 2-2c.365 0 .706.098 1 .269z" opacity=".5"/><circle cx="16" cy="12" r="2" opacity=".5"/></g>)svg"},
    {R"svg(<g fill="lime"><marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker></g><path d="M4 4h10v8" stroke="red" fill="none" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h10v8" fill="none" stroke="#f00"/><circle cx="14" cy="12" r="2" fill="#0f0"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><path d="M4 4h10v8" stroke="none" fill="none" marker-end="url(#m)"/>)svg",
     "marker", R"svg(<circle cx="14" cy="12" r="2"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><path d="M4 4h10v8" stroke-width="0" stroke="red" marker-end="url(#m)"/>)svg",
     "marker", R"svg(<path d="M4 4h10v8"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><path d="M4 4h10v8" visibility="hidden" marker-end="url(#m)"/>)svg",
     "visibility", R"svg()svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><g marker-end="url(#m)"><path d="M4 4h10v8"/></g>)svg",
     "marker", R"svg(<path d="M4 4h10v8"/><circle cx="14" cy="12" r="2"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><path d="M4 4h10v8" fill="red" stroke="lime" paint-order="markers" marker-end="url(#m)"/>)svg",
     "marker paint-order",
     R"svg(<circle cx="14" cy="12" r="2"/><path d="M4 4h10v8" fill="#f00"/><path d="M4 4h10v8" fill="none" stroke="#0f0"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><path d="M0 0h3" stroke="red" marker-end="url(#m)"/></marker><path d="M4 4h10v8" stroke="lime" marker-end="url(#m)"/>)svg",
     "marker", R"svg(<path d="M4 4h10v8" stroke="#0f0"/><path d="M14 12h3" stroke="#f00"/>)svg"},
    {R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible" markerUnits="userSpaceOnUse"><circle r="2"/></marker><path d="M4 4h6v4" transform="scale(2 1)" fill="none" stroke="lime" marker-end="url(#m)"/>)svg",
     "marker",
     R"svg(<path d="M4 4h6v4" transform="scale(2 1)" fill="none" stroke="#0f0"/><ellipse cx="20" cy="8" rx="4" ry="2"/>)svg"},
};

// Nothing is found in these, and nothing changes.
constexpr const char* kUnchanged[] = {
    R"svg(<marker id="m" markerWidth="4" markerHeight="4" refX="2" refY="2"><rect width="4" height="4" fill="red"/></marker><path d="M4 4h10v10" fill="none" stroke="#000" stroke-width="2" marker="url(#m)"/>)svg",
    R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><rect x="4" y="4" width="14" height="14" stroke="red" fill="none" marker-start="url(#m)" marker-end="url(#m)"/>)svg",
    R"svg(<marker id="m" markerWidth="4" markerHeight="4" style="overflow:visible"><circle r="2"/></marker><circle cx="12" cy="12" r="8" stroke="red" fill="none" marker-start="url(#m)" marker-mid="url(#m)"/>)svg",
    R"svg(<path d="M4 4h6v4" fill="none" stroke="lime" marker-end="url(#none)"/>)svg",
};
// clang-format on

} // namespace

TEST(ConformMarkers, RewritesOrRefuses) { ExpectCases(kCases); }

TEST(ConformMarkers, LeavesAlone) { ExpectUnchanged(kUnchanged); }
