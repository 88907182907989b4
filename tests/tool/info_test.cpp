#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::HasSubstr;

namespace {

class Info : public ToolTest {
protected:
    Info() {
        Write(
            "icon.svg",
            "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' xmlns:x='x' "
            "width='10cm' height='5' viewBox='0 0 2 1'><title>t</title><text>x<tspan/></text>"
            "<g fill='url(#f)'><path d='M0 0A1 1 0 0 0 1 1Q1 1 2 2'><animate/></path></g>"
            "<rect display='none' clip-path='url(#c)' stroke-dasharray='1 2' stroke='url(#s)'/><use "
            "href='#a'/>"
            "<use xlink:href='#gone'/><linearGradient href='#f'><stop/></linearGradient>"
            "<x:y/><symbol><text/></symbol></svg>");
        Write("cycle.svg", "<svg viewBox='0 0 2 1'><g id='a'><use xlink:href='#a'/></g></svg>");
        Write("bad.svg", "<svg>");
    }
};

} // namespace

TEST_F(Info, SummarisesAFile) {
    EXPECT_EQ(Run("ozmira info icon.svg").output,
              "icon.svg\n"
              "  size        10 CM x 5 PX\n"
              "  view box    0 0 2 1\n"
              "  elements    7 (2 Group, 1 Path, 1 Rect, 2 Use, 1 GradientElement, 1 hidden)\n"
              "  styles      2\n"
              "  definitions 0\n"
              "  gradients   1\n"
              "  drawing     7 elements, 1 segment, 3 levels deep\n"
              "  missing     #c, #f, #gone\n"
              "  differs     1 arc, 1 quadratic-curve, 1 size, 1 text\n");
    EXPECT_EQ(
        Run("ozmira info --json icon.svg").output,
        R"([{"file":"icon.svg","size":{"width":{"unit":"CM","value":10},"height":{"unit":"PX","value":5}},)"
        R"("viewBox":[0,0,2,1],)"
        R"("elements":{"Group":2,"Path":1,"Rect":1,"Use":2,"GradientElement":1},"hidden":1,"styles":2,)"
        R"("definitions":0,"gradients":1,)"
        R"("drawing":{"possible":true,"elements":7,"segments":1,"depth":3},"missing":["c","f","gone"],)"
        R"("differences":{"arc":1,"quadratic-curve":1,"size":1,"text":1}}])"
        "\n");
}

TEST_F(Info, ContinuesAfterABadFile) {
    Outcome outcome = Run("ozmira info bad.svg none.svg cycle.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, testing::MatchesRegex("ozmira: bad.svg: not well-formed XML: .*\n"
                                                      "ozmira: none.svg: no such file.*\n"));
    EXPECT_THAT(outcome.output, HasSubstr("drawing     not possible: its references form a cycle"));
    outcome = Run("ozmira info --json bad.svg");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.output,
                testing::MatchesRegex(R"(\[\{"file":"bad.svg","problem":"not well-formed .*"\}\])"
                                      "\n"));
    Write("flat.svg", "<svg width='0' height='5' viewBox='0 0 2 1'/>");
    EXPECT_THAT(Run("ozmira info flat.svg").output,
                HasSubstr("drawing     not possible: has the size 0 x 5; give its svg element a width"));
    EXPECT_THAT(Run("ozmira info --json cycle.svg").output,
                HasSubstr(R"("drawing":{"possible":false,"problem":"its references form a cycle)"));
}
