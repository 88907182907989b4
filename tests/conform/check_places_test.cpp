// Where findings stand: to the attribute, and within path data to the command.
#include "conform_cases.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace ozm::conform;
using namespace ozm::conform::test;

namespace {

/// Each finding stands at a "^" of the text, which is no part of the drawing, in their order.
struct Marked {
    const char *text, *rules;
};

constexpr std::string_view kRoot = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'>";

struct Place {
    uint32_t line = 1, column = 1;
};

/// The places of the marks, which are taken out of the text.
std::vector<Place> TakeMarks(std::string& text) {
    std::vector<Place> places;
    Place at;
    std::string plain;
    for (const char c : text) {
        const bool continues = (static_cast<unsigned char>(c) & 0xC0) == 0x80;
        if (c == '^') {
            places.push_back(at);
            continue;
        }
        plain += c;
        if (c == '\n') {
            at = {at.line + 1, 1};
        } else if (!continues) {
            ++at.column;
        }
    }
    text = plain;
    return places;
}

} // namespace

TEST(Check, NamesThePlace) {
    // clang-format off
    constexpr Marked kCases[] = {
        // Attributes
        {"\n<path d='M0 0h9v9z' ^fill='RED'/>", "color-syntax"},
        {"<path\n  d='M0 0h9v9z'\n\t^stroke-width='1e1'\n ^stroke='hsl(0 0% 0%)'/>", "units color-syntax"},
        {"<rect ^x='1em' ^width='50%' height='9'/>", "units units"},
        {"<g ^transform='translate(2,3),scale(2)'><path d='M0 0h9v9z'/></g>", "transform-syntax"},
        {"<g id='\xC3\xA4\xE2\x82\xAC'/><path ^fill='RED' d='M0 0h9v9z'/>", "color-syntax"},
        {"<!-- <path fill='RED'/> -->\r\n<path ^fill='RED' d='M0 0h9v9z'/>", "color-syntax"},
        {"<path d='M0 0h9v9z' ^fill='re&#x64;'/>", "entity"},
        // Within path data
        {"<path d='M0 0 ^a1 1 0 0 1 1 1 a1 1 0 0 1 1 1'/>", "arc"},
        {"<path d='M0 0\n ^Q1 1 2 2\n ^A1 1 0 0 1 3 3'/>", "quadratic-curve arc"},
        {"<path d='M0 0h9v9z^l3 3v3z'/>", "relative-after-z"},
        {"<path d='M0 0h9v9L1 1 2 ^x'/>", "path-syntax"},
        {"<path ^d='&#x4d;0 0 q1 1 2 2'/>", "entity"},
        // Within `style` and style sheets
        {"<path d='M0 0h9v9z' style='stroke:blue;^fill:RED'/>", "color-syntax"},
        {"<path d='M0 0h9v9z' style='/* c */ ^fill:red !important'/>", "style-syntax"},
        {"<style>\n .a { stroke-width: 2;\n  ^fill: red }</style><path class='a' d='M0 0h9v9z'/>", "style-sheet"},
        {"<style>@media all { path { ^fill: red } }</style><path d='M0 0h9v9z'/>", "style-sheet"},
        {"<path d='M0 0h9v9z' style='stroke-width:1;^fill:color-mix(in srgb, red, blue)'/>", nullptr},
        // Elements
        {"<defs/>\n  ^<text>t</text>", "text"},
        {"<g>^<image href='a.png' width='9' height='9'/></g>", "image"},
        {"<defs><path id='a' d='M0 0h9v9z'/></defs><use x='1' ^href='#a'/>", "href"},
        {"^<symbol id='a'><path d='M0 0h9v9z'/></symbol>"
         "<use xlink:href='#a' xmlns:xlink='http://www.w3.org/1999/xlink'/>", "symbol"},
        {"<path id='a' d='M0 0h9v9z'/>^<svg><path d='M0 0h9v9z'/></svg>", "nested-svg"},
        {"<g id='x'>\n^<use href='#x'/></g>", "reference-cycle"},
        {"^<linearGradient id='a'><stop/><stop offset='1' stop-color='red'/></linearGradient>"
         "<path fill='url(#a)' d='M0 0h9v9z'/>", "gradient-geometry"},
        {"<linearGradient id='a' x2='9' gradientUnits='userSpaceOnUse' ^spreadMethod='repeat'><stop/>"
         "<stop offset='1' stop-color='red'/></linearGradient><path fill='url(#a)' d='M0 0h9v9z'/>",
         "gradient-spread"},
        {"<clipPath id='c'><path d='M0 0h9v9z'/></clipPath>^<path clip-path='circle(4px)' d='M0 0h9v9z'/>", "clip-shape"},
    };
    // clang-format on
    for (const Marked& test : kCases) {
        SCOPED_TRACE(test.text);
        std::string text = std::string(kRoot) + test.text + "</svg>";
        const std::vector<Place> places = TakeMarks(text);
        const std::vector<Finding> findings = Check(text);
        if (test.rules) {
            EXPECT_EQ(RulesOf(findings), test.rules);
        }
        ASSERT_GE(findings.size(), places.size()) << RulesOf(findings);
        for (size_t i = 0; i < places.size(); ++i) {
            EXPECT_EQ(findings[i].line, places[i].line);
            EXPECT_EQ(findings[i].column, places[i].column) << findings[i].rule;
        }
    }
}

TEST(Check, NamesThePlaceOfFaults) {
    const struct {
        const char* text;
        const char* rule;
        uint32_t line, column;
    } cases[] = {
        {"<svg xmlns='http://www.w3.org/2000/svg'>\n<g></svg>", "ill-formed", 2, 6},
        {"<svg xmlns='http://www.w3.org/2000/svg'>\n\n <g a='1' a='2'/></svg>", "ill-formed", 3, 11},
        {"\n<html/>", "no-svg", 2, 1},
        {"", "ill-formed", 1, 1},
        {"<svg xmlns='http://www.w3.org/2000/svg'\n viewBox='0 0 9 9' ^='1'/>", "ill-formed", 2, 20},
        {"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'\n fill='red'><path d='M1 1h2v2z'/></svg>",
         "root-style", 2, 2},
        {"<svg xmlns='http://www.w3.org/2000/svg'\n viewBox='0,0,9,9'><path d='M1 1h2v2z'/></svg>",
         "view-box", 2, 2},
        {"<svg viewBox='0 0 9 9'><path d='M1 1h2v2z'/></svg>", "no-namespace", 1, 1},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.text);
        const std::vector<Finding> findings = Check(test.text);
        ASSERT_EQ(RulesOf(findings), test.rule);
        EXPECT_EQ(findings[0].line, test.line);
        EXPECT_EQ(findings[0].column, test.column);
    }
}
