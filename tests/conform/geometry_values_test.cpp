#include "geometry/matrix.h"
#include "geometry/number_text.h"
#include "geometry/shapes.h"
#include "geometry/transform_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace ozm::conform;

namespace {

void ExpectNear(const Matrix& a, const Matrix& b, const std::string& what) {
    for (const auto field : {&Matrix::a, &Matrix::b, &Matrix::c, &Matrix::d, &Matrix::e, &Matrix::f}) {
        EXPECT_NEAR(a.*field, b.*field, 1e-12) << what;
    }
}

} // namespace

TEST(Numbers, AreReadAsBrowsersDo) {
    const struct {
        const char* text;
        size_t length; ///< 0: no number.
        double value;
    } cases[] = {
        {"1", 1, 1},
        {"-1.5e2x", 6, -150},
        {"+.5", 3, .5},
        {"1.", 0, 0},
        {".", 0, 0},
        {"1e", 0, 0},
        {"1e+", 0, 0},
        {"1em", 1, 1},
        {"2ex", 1, 2},
        {"1.5.5", 3, 1.5},
        {"--1", 0, 0},
        {"", 0, 0},
        {" 1", 0, 0},
        {"1e39", 0, 0},
        {"1e313", 0, 0},
        {"1e-400", 6, 0},
        {"3.4028234e38", 12, 3.4028234e38},
        {"0e999", 5, 0},
        {"1-1", 1, 1},
        {"-0.1", 4, -.1},
        {"inf", 0, 0},
        {"0x10", 1, 0},
        {"nan", 0, 0},
        {"0.1234567890123456789", 21, 0.1234567890123456789},
        {"12345678901234567890", 20, 12345678901234567890.},
    };
    for (const auto& [text, length, value] : cases) {
        const std::string_view view(text);
        const char* p = view.data();
        double read = 99;
        EXPECT_EQ(ReadNumber(p, view.data() + view.size(), read), length > 0) << text;
        EXPECT_EQ(static_cast<size_t>(p - view.data()), length) << text;
        EXPECT_EQ(read, length > 0 ? value : 99) << text;
    }
}

TEST(Numbers, AreWrittenShort) {
    const struct {
        double value;
        int decimals;
        const char* text;
    } cases[] = {
        {1, 3, "1"},
        {0.5, 3, ".5"},
        {-0.5, 3, "-.5"},
        {-0.0001, 3, "0"},
        {100, 0, "100"},
        {0.9996, 3, "1"},
        {1.23456, 3, "1.235"},
        {1e30, 3, "1000000000000000000"},
        {NAN, 3, "0"},
        {-INFINITY, 0, "-1000000000000000000"},
        {1e-9, 15, ".000000001"},
        {10, -3, "10"},
    };
    for (const auto& [value, decimals, text] : cases) {
        std::string out;
        WriteNumber(value, decimals, out);
        EXPECT_EQ(out, text);
    }
    for (const auto& [value, text] :
         {std::pair{123.456, "123.5"}, {.00123456, ".001235"}, {0., "0"}, {1e9, "1000000000"}}) {
        std::string out;
        WriteSignificant(value, 4, 6, out);
        EXPECT_EQ(out, text);
    }
}

TEST(ReadTransform, ReadsWhatBrowsersRead) {
    const double root = std::sqrt(0.5);
    const auto attribute = TransformSyntax::Attribute, style = TransformSyntax::Style;
    const struct {
        TransformSyntax syntax;
        const char* text;
        std::optional<Matrix> matrix;
    } cases[] = {
        {attribute, "", Matrix{}},
        {attribute, "none", Matrix{}},
        {attribute, "translate(5)", Matrix{1, 0, 0, 1, 5, 0}},
        {attribute, " translate ( +5e0 , 6 ) , scale(2)scale(1 3) ", Matrix{2, 0, 0, 6, 5, 6}},
        {attribute, "matrix(1 2,3 4-5.5.5)", Matrix{1, 2, 3, 4, -5.5, .5}},
        {attribute, "rotate(45)", Matrix{root, root, -root, root, 0, 0}},
        {attribute, "rotate(90 1 1)", Matrix{0, 1, -1, 0, 2, 0}},
        {style, "rotate(.25turn)rotate(100grad)", Matrix{-1, 0, 0, -1, 0, 0}},
        {attribute, "rotate(45deg)", {}},
        {attribute, "skewX(45)", Matrix{1, 0, 1, 1, 0, 0}},
        {attribute, "skewY(45)", Matrix{1, 1, 0, 1, 0, 0}},
        {attribute, "translate(1in 50%)", {}},
        {attribute, "scale(2),", {}},
        {attribute, "scale(2),,scale(2)", {}},
        {attribute, "scale(2,)", {}},
        {attribute, "scale()", {}},
        {attribute, "scale(1 2 3)", {}},
        {attribute, "rotate(90 1)", {}},
        {attribute, "matrix(1 2 3 4 5)", {}},
        {attribute, "Scale(2)", {}},
        {attribute, "scale(2", {}},
        {attribute, "scale(2) foo", {}},
        {attribute, "translateX(2)", {}},
        {style, "", {}},
        {style, "None", Matrix{}},
        {style, "translate(5px, 2em)", Matrix{1, 0, 0, 1, 5, 20}},
        {style, "TRANSLATE(50%,50%) rotateZ(90DEG)", Matrix{0, 1, -1, 0, 50, 100}},
        {style, "translate(0, 0)rotate(0)", Matrix{}},
        {style, "translatex(1pt)translateY(1rem)", Matrix{1, 0, 0, 1, 4. / 3, 16}},
        {style, "scale(50%) scalex(2) scaleY(4)", Matrix{1, 0, 0, 2, 0, 0}},
        {style, "skew(45deg, 45deg)", Matrix{1, 1, 1, 1, 0, 0}},
        {style, "matrix(1, 2, 3, 4, 5, 6)", Matrix{1, 2, 3, 4, 5, 6}},
        {style, "rotate(1.5707963267948966rad)", Matrix{0, 1, -1, 0, 0, 0}},
        {style, "translate(5, 2)", {}},
        {style, "translate(5px 2px)", {}},
        {style, "rotate(45)", {}},
        {style, "rotate(45deg, 1px, 1px)", {}},
        {style, "scale(2), scale(2)", {}},
        {style, "scale (2)", {}},
        {style, "matrix(1, 2, 3, 4, 5px, 6px)", {}},
        {style, "rotate3d(1, 1, 1, 45deg)", {}},
    };
    for (const auto& [syntax, text, matrix] : cases) {
        const auto read = ReadTransform(text, syntax, {{100, 200}, 10, 16});
        ASSERT_EQ(read.has_value(), matrix.has_value()) << text;
        if (read) ExpectNear(*read, *matrix, text);
    }
}

TEST(WriteTransform, WritesWhatOzmiraReads) {
    const struct {
        Matrix matrix;
        const char* text;
    } cases[] = {
        {Matrix{}, ""},
        {Matrix::Translation(1.23456, 0), "translate(1.235)"},
        {Matrix::Translation(0, -2), "translate(0 -2)"},
        {Matrix::Scaling(2, 2), "scale(2)"},
        {Matrix::Scaling(2, -1.0000001), "scale(2 -1)"},
        {Matrix{0, 1, -1, 0, 24, 0}, "matrix(0 1 -1 0 24 0)"},
        {Matrix::Rotation(1), "matrix(.540302 .841471 -.841471 .540302 0 0)"},
    };
    for (const auto& [matrix, text] : cases) {
        std::string out;
        WriteTransform(matrix, 3, 24, out);
        EXPECT_EQ(out, text);
        const Matrix read = OzmiraTransform(out);
        EXPECT_NEAR(read.c, matrix.c, 1e-5);
        EXPECT_NEAR(read.e, matrix.e, 1e-3);
    }
}

TEST(Matrices, ComposeAndInvert) {
    const Matrix m =
        Matrix::Translation(1, 2) * Matrix::Rotation(1) * Matrix::SkewX(.5) * Matrix::Scaling(3, -4);
    ExpectNear(m * Inverse(m).value(), Matrix{}, "inverse");
    EXPECT_FALSE(Inverse(Matrix{1, 2, 2, 4, 0, 0}));
    EXPECT_FALSE(Inverse(Matrix::Scaling(0, 1)));
    EXPECT_FALSE(Inverse(Matrix::Scaling(NAN, 1)));
    EXPECT_TRUE(Inverse(Matrix::Scaling(1e-9, 1e-9)));
    EXPECT_NEAR(SimilarityScale(Matrix::Rotation(2) * Matrix::Scaling(-3, 3)).value(), 3, 1e-12);
    EXPECT_FALSE(SimilarityScale(Matrix::Scaling(2, 3)));
    EXPECT_FALSE(SimilarityScale(Matrix::SkewX(.1)));
    EXPECT_NEAR(LargestScale(Matrix::Rotation(1) * Matrix::Scaling(2, -5) * Matrix::Rotation(2)), 5, 1e-12);
    EXPECT_NEAR(MeanScale(Matrix::Scaling(2, -8)), 4, 1e-12);
}

TEST(Matrices, KeepTheStripesOfLinearGradients) {
    const Matrix m = Matrix::SkewX(.7) * Matrix::Scaling(2, 1) * Matrix::Rotation(.3);
    const LinearVector vector{{1, 2}, {5, 7}};
    const LinearVector mapped = MapLinearGradient(m, vector);
    const Point start = mapped.start, end = mapped.end;
    const auto offset = [&](Point p) {
        return Dot(m.Map(p) - start, end - start) / Dot(end - start, end - start);
    };
    for (const Point p : {Point{0, 0}, {5, 7}, {-3, 9}}) {
        const Point along = vector.end - vector.start;
        EXPECT_NEAR(offset(p), Dot(p - vector.start, along) / Dot(along, along), 1e-12);
    }
}

TEST(Shapes, HaveTheirExactBoxes) {
    const auto expectBox = [](const Box& a, const Box& b) {
        for (const auto edge : {&Box::left, &Box::top, &Box::right, &Box::bottom})
            EXPECT_NEAR(a.*edge, b.*edge, 1e-3);
    };
    expectBox(BoxOf(PathOf(Ellipse{5, 6, 2, 3})), {3, 3, 7, 9});
    const double reach = std::sqrt(2.) * 2;
    expectBox(
        BoxOf(PathOf(Ellipse{0, 0, 2, 2}), Matrix::Rotation(.78539816339744830961) * Matrix::Scaling(2, 0)),
        {-reach, -reach, reach, reach});
    Path path;
    path.MoveTo({-50, -50});
    path.MoveTo({0, 0});
    path.CubicTo({0, 4}, {3, 4}, {3, 0});
    expectBox(BoxOf(path), {0, 0, 3, 3});
    path.CubicTo({8, 1}, {-2, 1}, {3, 2}); // Beyond its ends on both sides.
    const Box box = BoxOf(path);
    EXPECT_NEAR(box.right, 4.443, 1e-3);
    path.MoveTo({99, 99});
    expectBox(BoxOf(path), box);
    EXPECT_TRUE(BoxOf(PathOf(Rectangle{1, 1, 0, 5})).IsEmpty());
}

TEST(Shapes, RoundCornersAsSVGDoes) {
    const struct {
        std::optional<double> rx, ry;
        double resolvedX, resolvedY;
    } cases[] = {
        {{}, {}, 0, 0}, {1, {}, 1, 1}, {{}, 1, 1, 1}, {10, {}, 2, 10}, {{}, 60, 2, 50},
        {1, 0, 1, 0},   {-1, 3, 2, 3}, {9, 9, 2, 9},  {-1, -1, 0, 0},
    };
    for (const auto& [rx, ry, x, y] : cases) {
        Rectangle rectangle{0, 0, 4, 100};
        ResolveRadii(rectangle, rx, ry);
        EXPECT_EQ(rectangle.rx, x);
        EXPECT_EQ(rectangle.ry, y);
        const bool isRound = x > 0 && y > 0;
        EXPECT_EQ(PathOf(rectangle).Verbs().size(), isRound ? x == 2 ? y == 50 ? 6U : 8U : 10U : 5U);
    }
}
