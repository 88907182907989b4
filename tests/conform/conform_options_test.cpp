// Rewriting with options, and what stays whatever the options: tints, precision, titles and licences.
#include "conform_cases.h"

#include <gtest/gtest.h>

using namespace ozm::conform;
using namespace ozm::conform::test;

namespace {

/// A drawing's body and that of its result.
struct Row {
    const char *body, *result;
};

void ExpectResults(std::span<const Row> rows, const Options& options) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.body);
        const Result result = Conform(Drawing(row.body), options);
        EXPECT_FALSE(result.isRefused);
        // Input that needs no change is not ended by a line break.
        const std::string expected = Drawing(row.result);
        EXPECT_EQ(result.text, result.isChanged ? expected + "\n" : expected);
        EXPECT_EQ(Conform(result.text, options).text, result.text);
    }
}

} // namespace

TEST(ConformOptions, LeaveOutWhatAnApplicationTints) {
    // clang-format off
    constexpr Row kRows[] = {
        {R"svg(<path d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<path d="M0 0q1 1 2 2z" fill="black"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill="#000"/>)svg"},
        {R"svg(<path d="M0 0q1 1 2 2z" fill="#000"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill="#000"/>)svg"},
        {R"svg(<path d="M0 0q1 1 2 2z" fill="currentColor"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<g color="#000"><path d="M0 0q1 1 2 2z" fill="currentColor"/></g>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill="#000"/>)svg"},
        {R"svg(<g fill="red"><path fill="black" d="M0 0q1 1 2 2z"/></g>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill="#000"/>)svg"},
        {R"svg(<g fill="red"><path fill="initial" d="M0 0q1 1 2 2z"/></g>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill="#000"/>)svg"},
        {R"svg(<path fill-opacity=".5" d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill-opacity=".5"/>)svg"},
        {R"svg(<path fill="rgba(0,0,0,.5)" d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" fill="#000" fill-opacity=".5"/>)svg"},
        {R"svg(<path stroke="currentColor" d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z" stroke="#000"/>)svg"},
        {R"svg(<g opacity=".5"><rect width="4" height="4"/><rect x="2" width="4" height="4"/></g>)svg",
         R"svg(<path d="M2 4H0V0h2z" opacity=".5"/><rect x="2" width="4" height="4" opacity=".5"/>)svg"},
        {R"svg(<rect width="4" height="4" fill="currentColor" filter="url(#f)"/><filter id="f"><feColorMatrix type="saturate" values="0"/></filter>)svg",
         R"svg(<rect width="4" height="4" fill="#000"/>)svg"},
        {R"svg(<use href="#a"/><defs><path id="a" fill="context-fill" d="M0 0q1 1 2 2z"/></defs>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<mask id="m"><rect width="9" height="9" fill="#fff"/></mask><path mask="url(#m)" d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
    };
    // clang-format on
    ExpectResults(kRows, {});
}

TEST(ConformOptions, OutlineStrokes) {
    // clang-format off
    constexpr Row kRows[] = {
        {R"svg(<path fill="none" stroke="red" stroke-width="2" d="M2 2h8"/>)svg",
         R"svg(<path d="M2 1h8v2H2z" fill="#f00"/>)svg"},
        {R"svg(<path stroke="currentColor" stroke-width="2" d="M2 2h8v8"/>)svg",
         R"svg(<path d="M2 2h8v8"/><path d="M2 1h9v9H9V3H2z"/>)svg"},
        {R"svg(<circle cx="9" cy="9" r="4" fill="none" stroke="#000" stroke-width="2"/>)svg",
         R"svg(<path d="M14 9c0 2.761-2.239 5-5 5s-5-2.239-5-5 2.239-5 5-5 5 2.239 5 5zM12 9c0-1.657-1.343-3-3-3S6 7.343 6 9s1.343 3 3 3 3-1.343 3-3z" fill="#000"/>)svg"},
        {R"svg(<path fill="none" stroke="red" stroke-width="2" stroke-linecap="round" d="M2 2h8"/>)svg",
         R"svg(<path d="M2 1h8c.552 0 1 .448 1 1s-.448 1-1 1H2c-.552 0-1-.448-1-1s.448-1 1-1z" fill="#f00"/>)svg"},
        {R"svg(<path fill="none" stroke="red" stroke-width="2" stroke-dasharray="3 1" d="M2 2h8"/>)svg",
         R"svg(<path d="M2 1h3v2H2zM6 1h3v2H6z" fill="#f00"/>)svg"},
        {R"svg(<path fill="red" d="M2 2h8v8z"/>)svg",
         R"svg(<path fill="red" d="M2 2h8v8z"/>)svg"},
        {R"svg(<g transform="scale(2 1)"><path fill="none" stroke="red" d="M2 2v8"/></g>)svg",
         R"svg(<path d="M5 2v8H3V2z" fill="#f00"/>)svg"},
        {R"svg(<path fill="none" stroke="red" stroke-opacity=".5" d="M2 2h8"/>)svg",
         R"svg(<path d="M2 1.5h8v1H2z" fill="#f00" fill-opacity=".5"/>)svg"},
    };
    // clang-format on
    Options options;
    options.outlineStrokes = true;
    ExpectResults(kRows, options);
}

TEST(ConformOptions, LeaveOutWhatCantBeRewritten) {
    // clang-format off
    constexpr Row kRows[] = {
        {R"svg(<text>a</text><path d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<image href="a.png" width="2" height="2"/><path d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<foreignObject width="9" height="9"/><path d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<filter id="f"><feGaussianBlur stdDeviation="2"/></filter><path filter="url(#f)" d="M0 0h2v2z"/>)svg",
         R"svg(<path d="M0 0h2v2z"/>)svg"},
        {R"svg(<g style="mix-blend-mode:multiply"><path d="M0 0q1 1 2 2z"/></g>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<path clip-path="circle(5)" d="M0 0h2v2z"/>)svg",
         R"svg(<path d="M0 0h2v2z"/>)svg"},
        {R"svg(<use href="o.svg#a"/><path d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<rect width="calc(2px)" height="4"/><path d="M0 0q1 1 2 2z"/>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
        {R"svg(<pattern id="p" width=".01" height=".01"><path d="M0 0h2v2z"/></pattern><rect width="9" height="9" fill="url(#p)" stroke="red"/>)svg",
         R"svg(<rect width="9" height="9" fill="none" stroke="#f00"/>)svg"},
        {R"svg(<mask id="m"><rect width="9" height="9" fill="url(#a)"/></mask><linearGradient id="a"><stop/><stop offset="1" stop-color="#fff"/></linearGradient><rect width="9" height="9" mask="url(#m)"/>)svg",
         R"svg(<rect width="9" height="9"/>)svg"},
        {R"svg(<radialGradient id="a" r=".4" fr=".2" fx=".4"><stop/><stop offset="1" stop-color="red"/></radialGradient><rect width="9" height="9" fill="url(#a)"/>)svg",
         R"svg(<defs><radialGradient id="g1" gradientUnits="userSpaceOnUse" cx="4.5" cy="4.5" r="3.6" fx="3.6" fy="4.5"><stop offset="0" stop-color="#000"/><stop offset=".5" stop-color="#000"/><stop offset="1" stop-color="#f00"/></radialGradient></defs><rect width="9" height="9" fill="url(#g1)"/>)svg"},
        {R"svg(<g id="x"><use href="#x"/><path d="M0 0q1 1 2 2z"/></g>)svg",
         R"svg(<path d="M0 0c.667.667 1.333 1.333 2 2z"/>)svg"},
    };
    // clang-format on
    for (const Row& row : kRows) {
        const Result refused = Conform(Drawing(row.body));
        EXPECT_TRUE(refused.isRefused) << row.body;
        EXPECT_EQ(refused.text, "");
    }
    Options options;
    options.lossy = true;
    ExpectResults(kRows, options);
}

TEST(ConformOptions, ChooseDecimals) {
    const struct {
        int decimals;
        const char* data;
    } cases[] = {
        {0, "M0 1s1 1 2 2z"},
        {1, "M.1 1c.7.7 1.4 1.4 2 2.3z"},
        {2, "M.12 1c.67.67 1.34 1.43 2 2.3z"},
        {6, "M.123457 1c.666666.666667 1.333333 1.433333 2 2.3z"},
        {12, "M.123456789 1c.66666666667.66666666667 1.33333333333 1.43333333333 2 2.3z"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.decimals);
        Options options;
        options.decimals = test.decimals;
        const Result result = Conform(Drawing(R"svg(<path d="M0.123456789 1q1 1 2 2.3z"/>)svg"), options);
        EXPECT_EQ(result.text, Drawing(std::string("<path d=\"") + test.data + "\"/>") + "\n");
        EXPECT_EQ(Conform(result.text, options).text, result.text);
    }
}

TEST(ConformOptions, ScalePrecisionWithTheViewBox) {
    const struct {
        const char *viewBox, *data;
    } cases[] = {
        {"0 0 1 1", "M.1235.2c.0666.0667.1333.1819.2.3457z"},
        {"0 0 2.4 2.4", "M.1235.2c.0666.0667.1333.1819.2.3457z"},
        {"0 0 50 50", "M.123.2c.067.067.134.182.2.346z"},
        {"0 0 100 100", "M.12.2c.07.07.14.18.2.35z"},
        {"0 0 240 240", "M.12.2c.07.07.14.18.2.35z"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.viewBox);
        const std::string head = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" +
                                 std::string(test.viewBox) + "\"><path d=\"";
        const Result result = Conform(head + "M.123456789 .2q.1 .1 .2 .345678z\"/></svg>");
        EXPECT_EQ(result.text, head + test.data + "\"/></svg>\n");
    }
}
