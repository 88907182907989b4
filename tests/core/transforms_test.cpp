#include <Ozmira/SVG/ozmSVGParser.h>

#include <gtest/gtest.h>

#include <string>

using namespace ozm;

namespace {

Transform Parse(std::string_view text, bool isComplete) {
    Transform out{9, 9, 9, 9, 9, 9};
    EXPECT_EQ(SVGParser().ParseTransform(text, out), isComplete) << text;
    return out;
}

void ExpectMaps(std::string_view text, TVec2<double> from, TVec2<double> to) {
    const auto [a, b, c, d, tx, ty] = Parse(text, true);
    EXPECT_NEAR(a * from.x + c * from.y + tx, to.x, 1e-12) << text;
    EXPECT_NEAR(b * from.x + d * from.y + ty, to.y, 1e-12) << text;
}

} // namespace

TEST(ParseTransform, ReadsEveryItem) {
    const struct {
        const char* text;
        Transform transform;
    } cases[] = {
        {"matrix(1 2 3 4 5 6)", {1, 2, 3, 4, 5, 6}},
        {"matrix( 1,2 , 3\t4-5.5.5 )", {1, 2, 3, 4, -5.5, .5}},
        {"translate(5,6)", {1, 0, 0, 1, 5, 6}},
        {"translate( 5 , 6 )", {1, 0, 0, 1, 5, 6}},
        {"translate(5)", {1, 0, 0, 1, 5, 0}},
        {"translate(5,)", {1, 0, 0, 1, 5, 0}},
        {"scale(3)", {3, 0, 0, 3, 0, 0}},
        {"scale(3 -2)", {3, 0, 0, -2, 0, 0}},
        {"  scale(2)translate(1)\n\vscale(3)", {6, 0, 0, 6, 2, 0}},
        {"rotate(0)", {1, 0, 0, 1, 0, 0}},
    };
    for (const auto& [text, transform] : cases) EXPECT_EQ(Parse(text, true), transform) << text;
}

TEST(ParseTransform, AppliesTheLastItemFirst) {
    ExpectMaps("translate(10) scale(2)", {1, 1}, {12, 2});
    ExpectMaps("scale(2) translate(10)", {1, 1}, {22, 2});
    ExpectMaps("rotate(90)", {1, 0}, {0, 1});
    ExpectMaps("rotate(90 1 1)", {2, 1}, {1, 2});
    ExpectMaps("rotate(90 5)", {5, 0}, {5, 0});
    ExpectMaps("rotate(90 5)", {6, 0}, {5, 1});
    ExpectMaps("skewX(45)", {0, 1}, {1, 1});
    ExpectMaps("skewY(45)", {1, 0}, {1, 1});
    ExpectMaps("matrix(1 2 3 4 5 6) rotate(90)", {1, 0}, {1 * 0 + 3 * 1 + 5, 2 * 0 + 4 * 1 + 6});
    ExpectMaps("matrix(1 2 3 4 5 6) rotate(90)", {0, 1}, {-1 * 1 + 3 * 0 + 5, -1 * 2 + 4 * 0 + 6});
    ExpectMaps("matrix(1 2 3 4 5 6) rotate(90 7 8)", {7, 9}, {6 * 1 + 8 * 3 + 5, 6 * 2 + 8 * 4 + 6});
    ExpectMaps("matrix(1 2 3 4 5 6) skewX(45)", {1, 0}, {1 + 5, 2 + 6});
    ExpectMaps("matrix(1 2 3 4 5 6) skewY(45)", {0, 1}, {3 + 5, 4 + 6});
    ExpectMaps("matrix(1 2 3 4 5 6) skewX(45)", {0, 1}, {1 + 3 + 5, 2 + 4 + 6});
    ExpectMaps("matrix(1 2 3 4 5 6) skewY(45)", {1, 0}, {1 + 3 + 5, 2 + 4 + 6});
    ExpectMaps("matrix(2 3 4 5 6 7) skewX(45)", {0, 1}, {2 + 4 + 6, 3 + 5 + 7});
    ExpectMaps("matrix(2 3 4 5 6 7) skewY(45)", {1, 0}, {2 + 4 + 6, 3 + 5 + 7});
    ExpectMaps("matrix(1 2 3 4 5 6) matrix(0 1 -1 0 7 8)", {1, 0}, {7 + 3 * 9 + 5, 2 * 7 + 4 * 9 + 6});
}

TEST(ParseTransform, KeepsTheItemsBeforeAnError) {
    for (const char* const text :
         {"", " ", "matrix(1 0 0 1 0)", "matrix(1 0 0 1 0 0,)", "Rotate(45)", "skewx(45)", "scale (2)",
          "scale(1e2)", "scale(2", "scale(,2)", "translate(+5)", "translate(1,,2)", "translate(1 2 3)",
          "translate()", "translate(-)"}) {
        EXPECT_EQ(Parse(text, false), TransformIdentity) << text;
        EXPECT_EQ(Parse(std::string("translate(1 2) ") + text, false), (Transform{1, 0, 0, 1, 1, 2})) << text;
    }
    for (const char* const text : {"translate(1 2), scale(3)", "translate(1 2)rotate", "translate(1 2)\n"}) {
        EXPECT_EQ(Parse(text, false), (Transform{1, 0, 0, 1, 1, 2})) << text;
    }
}
