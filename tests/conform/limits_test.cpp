// Input that asks for more than anyone can draw: deep nesting, circles of references, and references that
// multiply. All of it has to end, soon, and with a finding that says why.
#include <OzmiraConform/OzmiraConform.h>

#include "conform_cases.h"

#include <gtest/gtest.h>

#include <string>

using namespace ozm::conform;
using namespace ozm::conform::test;

namespace {

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

/// Text in which "@" is the number of a level and "~" that of the level below, for levels from 1 on.
std::string Levels(const std::string& pattern, int count) {
    std::string all;
    for (int level = 1; level <= count; ++level) {
        for (const char c : pattern) {
            if (c == '@') {
                all += std::to_string(level);
            } else if (c == '~') {
                all += std::to_string(level - 1);
            } else {
                all += c;
            }
        }
    }
    return all;
}

bool HasRule(const std::vector<Finding>& findings, std::string_view rule) {
    for (const Finding& finding : findings) {
        if (finding.rule == rule) return true;
    }
    return false;
}

/// Both functions agree about a drawing that has this finding, and refuse it.
void ExpectRefusal(const std::string& drawing, std::string_view rule) {
    const Result result = Conform(drawing);
    EXPECT_TRUE(result.isRefused);
    EXPECT_EQ(result.text, "");
    EXPECT_TRUE(HasRule(result.findings, rule)) << RulesOf(result.findings).substr(0, 200);
    EXPECT_TRUE(HasRule(Check(drawing), rule));
}

/// Whatever comes out has nothing left to rewrite.
void ExpectEnd(const std::string& drawing) {
    Options options;
    options.lossy = true;
    const Result result = Conform(drawing, options);
    if (result.isRefused) return;
    EXPECT_EQ(Conform(result.text).text, result.text) << result.text.substr(0, 500);
}

} // namespace

TEST(Limits, RefuseWhatNestsTooDeeply) {
    const struct {
        const char* what;
        std::string body;
        const char* rule;
    } cases[] = {
        {"groups", Repeated("<g>", 1'030) + Repeated("</g>", 1'030), "too-deep"},
        {"viewports", Repeated("<svg>", 1'030) + Repeated("</svg>", 1'030), "too-deep"},
        {"references",
         "<defs>" + Levels("<g id='u@'><use href='#u~'/></g>", 1'100) +
             "<rect id='u0' width='1' height='1'/></defs><use href='#u1100'/>",
         "too-deep"},
        {"a stylesheet", "<style>" + Repeated("@media all{", 5'000) + "</style>", nullptr},
        {"selectors", "<style>" + Repeated(":not(", 5'000) + Repeated(")", 5'000) + "{fill:red}</style>",
         nullptr},
        {"a selector", "<style>" + Repeated("g>", 5'000) + "g{fill:red}</style>", nullptr},
        {"parentheses", "<path d='M0 0h9v9z' style='fill:" + Repeated("var(--a,", 5'000) + "red'/>", nullptr},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        const std::string drawing = Drawing(test.body);
        if (test.rule) ExpectRefusal(drawing, test.rule);
        ExpectEnd(drawing);
    }
}

TEST(Limits, DrawWhatNestsAsDeeplyAsOzmiraReads) {
    const std::string drawing =
        Drawing(Repeated("<g>", 1'000) + "<path d='M0 0q1 1 2 2z'/>" + Repeated("</g>", 1'000));
    const Result result = Conform(drawing);
    EXPECT_EQ(RulesOf(result.findings), "quadratic-curve");
    EXPECT_EQ(result.text, Drawing("<path d=\"M0 0c.667.667 1.333 1.333 2 2z\"/>") + "\n");
}

TEST(Limits, EndCirclesOfReferences) {
    const struct {
        const char* body;
        bool isCycle; ///< A browser shows nothing of it, so that it is refused.
    } cases[] = {
        {"<use id='a' href='#a'/>", true},
        {"<g id='a'><use href='#a'/></g>", true},
        {"<g id='a'><g><rect id='b' width='1' height='1'/><use href='#a'/></g></g>", true},
        {"<use id='a' href='#b'/><use id='b' href='#a'/>", true},
        {"<symbol id='a'><use href='#b'/></symbol><symbol id='b'><use href='#a'/></symbol><use href='#a'/>",
         true},
        {"<svg><g id='a'><svg><use href='#a'/></svg></g></svg>", true},
        {"<clipPath id='c' clip-path='url(#c)'><rect width='9' height='9'/></clipPath>"
         "<rect width='9' height='9' clip-path='url(#c)'/>",
         true},
        {"<clipPath id='c'><rect width='9' height='9' clip-path='url(#c)'/></clipPath>"
         "<rect width='9' height='9' clip-path='url(#c)'/>",
         true},
        {"<clipPath id='c' clip-path='url(#d)'><rect width='9' height='9'/></clipPath>"
         "<clipPath id='d' clip-path='url(#c)'><rect width='9' height='9'/></clipPath>"
         "<rect width='9' height='9' clip-path='url(#c)'/>",
         true},
        {"<clipPath id='c'><use id='u' href='#u'/></clipPath><rect width='9' height='9' "
         "clip-path='url(#c)'/>",
         false},
        {"<mask id='m' mask='url(#m)'><rect width='9' height='9' fill='#fff'/></mask>"
         "<rect width='9' height='9' mask='url(#m)'/>",
         true},
        {"<mask id='m'><rect width='9' height='9' fill='#fff' mask='url(#m)'/></mask>"
         "<rect width='9' height='9' mask='url(#m)'/>",
         true},
        {"<mask id='m'><rect width='9' height='9' fill='#fff' mask='url(#n)'/></mask>"
         "<mask id='n'><g mask='url(#m)'><rect width='9' height='9' fill='#fff'/></g></mask>"
         "<rect width='9' height='9' mask='url(#m)'/>",
         true},
        {"<pattern id='p' width='1' height='1'><rect width='9' height='9' fill='url(#p)'/></pattern>"
         "<rect width='9' height='9' fill='url(#p)'/>",
         false},
        {"<pattern id='p' width='1' height='1'><rect width='9' height='9' fill='url(#q)'/></pattern>"
         "<pattern id='q' width='1' height='1'><rect width='9' height='9' stroke='url(#p)'/></pattern>"
         "<rect width='9' height='9' fill='url(#p)'/>",
         false},
        {"<pattern id='p' href='#q'/><pattern id='q' href='#p'/><rect width='9' height='9' fill='url(#p)'/>",
         false},
        {"<linearGradient id='a' href='#b'/><radialGradient id='b' href='#a'/>"
         "<rect width='9' height='9' fill='url(#a)'/>",
         false},
        {"<marker id='m'><path d='M0 0h1' marker-start='url(#m)'/></marker><path d='M0 0h9' "
         "marker-end='url(#m)'/>",
         false},
        {"<marker id='m'><path d='M0 0h1' marker-start='url(#n)'/></marker>"
         "<marker id='n'><path d='M0 0h1' marker-start='url(#m)'/></marker><path d='M0 0h9' "
         "marker-end='url(#m)'/>",
         false},
        {"<marker id='m'><use href='#u'/></marker><path id='u' d='M0 0h9' marker-end='url(#m)'/>", false},
        {"<rect width='9' height='9' style='--a:var(--b);--b:var(--a);fill:var(--a)'/>", false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.body);
        const std::string drawing = Drawing(test.body);
        const std::vector<Finding> findings = Check(drawing);
        EXPECT_EQ(HasRule(findings, "reference-cycle"), test.isCycle) << RulesOf(findings);
        EXPECT_EQ(Conform(drawing).isRefused, test.isCycle);
        ExpectEnd(drawing);
    }
}

TEST(Limits, EndReferencesThatMultiply) {
    const std::string ten = "<g id='u@'>" + Repeated("<use href='#u~'/>", 10) + "</g>";
    const struct {
        const char* what;
        std::string body;
    } cases[] = {
        {"use", "<defs><path id='u0' d='M0 0h1v1z'/>" + Levels(ten, 9) + "</defs><use href='#u9'/>"},
        {"nested patterns", "<pattern id='p0' width='1' height='1' patternUnits='userSpaceOnUse'><path d='M0 "
                            "0h1v1z'/></pattern>" +
                                Levels("<pattern id='p@' width='9' height='9' patternUnits='userSpaceOnUse'>"
                                       "<rect width='9' height='9' fill='url(#p~)'/></pattern>",
                                       9) +
                                "<rect width='90' height='90' fill='url(#p9)'/>"},
        {"markers on markers",
         "<marker id='m0'><path d='M0 0h1'/></marker>" +
             Levels("<marker id='m@'><path d='M0 0h1h1h1h1h1h1h1h1h1' marker-mid='url(#m~)'/></marker>", 9) +
             "<path d='M0 0h1h1h1h1h1h1h1h1h1' marker-mid='url(#m9)'/>"},
        {"masks",
         "<mask id='m0'><path d='M0 0h9v9z'/></mask>" +
             Levels("<mask id='m@'><path mask='url(#m~)' d='M0 0h9v9z'/><path mask='url(#m~)' d='M0 0h9v9z'/>"
                    "<path mask='url(#m~)' d='M0 0h9v9z'/></mask>",
                    12) +
             "<path mask='url(#m12)' d='M0 0h9v9z'/>"},
        {"boxes of groups",
         "<clipPath id='c' clipPathUnits='objectBoundingBox'><rect width='1' height='1'/></clipPath>" +
             Repeated("<g clip-path='url(#c)'>", 500) + "<path d='M0 0h9v9z'/>" + Repeated("</g>", 500)},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        const std::string drawing = Drawing(test.body);
        const std::vector<Finding> findings = Check(drawing);
        EXPECT_FALSE(findings.empty());
        ExpectEnd(drawing);
    }
    ExpectRefusal(Drawing(cases[0].body), "too-large");
}

TEST(Limits, RefuseWhatCostsTooMuchStyle) {
    const std::string shapes = Repeated("<path class='a' d='M0 0h9v9z'/>", 8'000);
    const struct {
        const char* what;
        std::string style;
    } cases[] = {
        {"selectors", Repeated("g path{fill:red}", 15'000)},
        {"custom properties", "svg{--a:" + std::string(16'000, 'a') + "}path{fill:var(--a)}"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        ExpectRefusal(Drawing("<style>" + test.style + "</style>" + shapes), "too-large");
    }
}

TEST(Limits, EndTextThatMultiplies) {
    std::string entities = "<!DOCTYPE svg [<!ENTITY e0 'M0 0h1v1z '>";
    for (int i = 1; i < 10; ++i) {
        entities +=
            "<!ENTITY e" + std::to_string(i) + " '" + Repeated("&e" + std::to_string(i - 1) + ";", 10) + "'>";
    }
    ExpectRefusal(entities + "]>" + Drawing("<path d='&e9;'/>"), "ill-formed");

    std::string variables = "--v0:1 1";
    for (int i = 1; i < 15; ++i) {
        variables += ";--v" + std::to_string(i) + ":" + Repeated("var(--v" + std::to_string(i - 1) + ")", 10);
    }
    ExpectEnd(Drawing("<path d='M0 0h9v9z' style='" + variables + ";stroke-dasharray:var(--v14)'/>"));
    // A value that comes to nothing costs time all the same.
    std::string empty = "--v0:var(--none,)";
    for (int i = 1; i < 15; ++i) {
        empty += ";--v" + std::to_string(i) + ":" + Repeated("var(--v" + std::to_string(i - 1) + ",)", 10);
    }
    ExpectEnd(Drawing("<path d='M0 0h9v9z' style='" + empty + ";fill:var(--v14)'/>"));
}

TEST(Limits, RefuseTooManyParts) {
    const struct {
        const char* what;
        std::string body;
        const char* rule;
    } cases[] = {
        {"dashes", "<path d='M0 0h24' stroke='red' stroke-dasharray='.0001'/>", "dash-count"},
        {"tiles",
         "<pattern id='p' width='.001' height='.001'><path d='M0 0h1v1z'/></pattern>"
         "<path d='M0 0h24v24z' fill='url(#p)'/>",
         "pattern-size"},
        {"areas of a group",
         "<g opacity='.5'>" + Repeated("<rect width='9' height='9' fill='red' fill-opacity='.5'/>", 200) +
             "</g>",
         "group-overlap"},
        {"areas of a mask",
         "<mask id='m'>" + Repeated("<rect width='9' height='9' fill='#fff'/>", 200) +
             "</mask><rect width='9' height='9' mask='url(#m)'/>",
         "mask-shading"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        ExpectRefusal(Drawing(test.body), test.rule);
    }
}

TEST(Limits, MatchManySelectorsInTime) {
    const std::string sheet =
        "<style>" + Repeated("g *~*~*~* g:nth-last-of-type(7n+3){fill:red}", 3'000) + "</style>";
    ExpectEnd(Drawing(sheet + Repeated("<g>", 300) + Repeated("<path d='M0 0h1'/>", 1'000) +
                      Repeated("</g>", 300)));
}

TEST(Limits, TakeAnyNumber) {
    for (const char* const number :
         {"1e38", "-1e38", "1e-38", "3.5e38", "1e999", "nan", "inf", "99999999999999999999"}) {
        SCOPED_TRACE(number);
        for (std::string body :
             {"<rect x='@' y='@' width='@' height='@' rx='@' stroke='red' stroke-width='@'/>",
              "<path d='M@ @L@ 0A@ @ @ 1 1 @ 5Q@ 1 2 @T1 @C@ 1 @ 2 @ 3z' stroke='red' stroke-dasharray='@ "
              "1'/>",
              "<g transform='scale(@)translate(@ @)rotate(@)'><circle r='@' cx='1' stroke='red'/></g>",
              "<svg viewBox='@ 0 @ 24' width='@'><path d='M0 0h1v1z'/></svg>",
              "<linearGradient id='a' x1='@' x2='@' gradientTransform='scale(@)' spreadMethod='repeat'><stop "
              "offset='@'/>"
              "<stop offset='1' stop-color='red'/></linearGradient><rect width='9' height='9' "
              "fill='url(#a)'/>",
              "<radialGradient id='a' r='@' fx='@' fr='@'><stop/><stop offset='1' "
              "stop-color='red'/></radialGradient>"
              "<rect width='9' height='9' fill='url(#a)'/>",
              "<pattern id='p' x='@' width='@' height='@'><path d='M0 0h1v1z'/></pattern>"
              "<rect width='9' height='9' fill='url(#p)'/>",
              "<path d='M0 0h9v9z' fill='rgb(@ @ @ / @)' stroke='color(xyz @ @ @)' opacity='@'/>",
              "<path d='M0 0h9v9z' fill='lch(@ @ @)' stroke='oklab(@ @ @)'/>",
              "<marker id='m' refX='@' markerWidth='@' orient='@'><path d='M0 0h1v1z'/></marker>"
              "<path d='M0 0h9' stroke='red' stroke-width='@' marker-end='url(#m)'/>",
              "<path d='M0 0h9v9z' stroke='red' pathLength='@' stroke-dasharray='@' stroke-dashoffset='@'/>",
              "<path d='M0 0h9v9z' style='filter:brightness(@);rotate:@;scale:@;translate:@'/>"}) {
            for (size_t at = body.find('@'); at != std::string::npos; at = body.find('@', at)) {
                body.replace(at, 1, number);
            }
            SCOPED_TRACE(body);
            ExpectEnd(Drawing(body));
        }
    }
}
