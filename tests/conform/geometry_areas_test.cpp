#include "geometry/area.h"
#include "geometry/path_reader.h"
#include "geometry/path_writer.h"
#include "geometry/winding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

using namespace ozm::conform;

namespace {

constexpr double kTolerance = 0.01;

Path Read(const char* data) { return ReadPath(data).path; }

std::string Written(const Path& path) {
    std::string text;
    WritePath(path, 2, text);
    return text;
}

double AreaOf(const Path& path) {
    double area = 0;
    for (const Polyline& line : Flatten(path, 1e-4)) area += SignedArea(line) / 2;
    return area;
}

size_t CountOf(Verb verb, const Path& path) {
    return static_cast<size_t>(std::count(path.Verbs().begin(), path.Verbs().end(), verb));
}

} // namespace

TEST(Combine, Polygons) {
    const struct {
        const char *a, *b;
        AreaOperation operation;
        const char* result;
    } cases[] = {
        {"M0 0h4v4h-4z", "M2 2h4v4h-4z", AreaOperation::Intersection, "M4 4H2V2h2z"},
        {"M0 0h4v4h-4z", "M2 2h4v4h-4z", AreaOperation::Union, "M4 2h2v4H2V4H0V0h4z"},
        {"M0 0h4v4h-4z", "M2 2h4v4h-4z", AreaOperation::Difference, "M4 2H2v2H0V0h4z"},
        {"M0 0h4v4h-4z", "M1 1h2v2h-2z", AreaOperation::Difference, "M4 4H0V0h4zM1 1v2h2V1z"},
        {"M0 0h4v4h-4z", "M8 8h2v2h-2z", AreaOperation::Intersection, ""},
        {"", "M8 8h2v2h-2z", AreaOperation::Union, "M10 10H8V8h2z"},
        // An open subpath counts as closed, one without area as nothing.
        {"M0 0h4v4h-4", "M2 2h4M1e9 0z", AreaOperation::Union, "M4 4H0V0h4z"},
        {"M0 0h1e300v4z", "M0 0h1e30v1e-30z", AreaOperation::Union, ""},
    };
    for (const auto& [a, b, operation, result] : cases) {
        const Path first = Read(a), second = Read(b);
        EXPECT_EQ(Written(Combine(operation, {first}, {second}, kTolerance)), result) << a << ' ' << b;
    }
}

TEST(Combine, KeepsCurves) {
    const Path circle = Read("M20 10A10 10 0 0 1 0 10A10 10 0 0 1 20 10Z"), box = Read("M10 -5H30V15H10Z");
    const Path cut = Combine(AreaOperation::Intersection, {circle}, {box}, kTolerance);
    // A quarter and the piece below it.
    const double piece = 0.5 * (100 * std::asin(0.5) + 5 * std::sqrt(75.));
    EXPECT_NEAR(AreaOf(cut), 25 * M_PI + piece, 0.05);
    EXPECT_EQ(CountOf(Verb::Cubic, cut), 2U);
    EXPECT_LE(CountOf(Verb::Line, cut), 2U);
    const Path whole = Combine(AreaOperation::Union, {circle}, {circle}, kTolerance);
    EXPECT_EQ(CountOf(Verb::Cubic, whole), 4U);
    EXPECT_EQ(CountOf(Verb::Line, whole), 0U);
    EXPECT_NEAR(AreaOf(whole), 100 * M_PI, 0.1);
    const Path hole = Combine(AreaOperation::Difference, {box}, {circle}, kTolerance);
    EXPECT_NEAR(AreaOf(hole), 400 - 25 * M_PI - piece, 0.05);
    // Backwards along the circle.
    EXPECT_GE(CountOf(Verb::Cubic, hole), 2U);
}

TEST(Combine, PartsAddUp) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> inside(0, 100);
    const auto point = [&] { return Point{inside(random), inside(random)}; };
    const auto shape = [&] {
        Path path;
        for (int k = 0; k < 2; ++k) {
            path.MoveTo(point());
            for (int i = 0; i < 3; ++i) path.CubicTo(point(), point(), point());
            path.LineTo(point());
            path.Close();
        }
        return path;
    };
    for (int i = 0; i < 300; ++i) {
        const Path first = shape(), second = shape();
        const Area a{first, i % 2 ? FillRule::EvenOdd : FillRule::NonZero}, b{second};
        const double both = AreaOf(Combine(AreaOperation::Intersection, a, b, kTolerance));
        const double onlyA = AreaOf(Combine(AreaOperation::Difference, a, b, kTolerance));
        const double onlyB = AreaOf(Combine(AreaOperation::Difference, b, a, kTolerance));
        const double either = AreaOf(Combine(AreaOperation::Union, a, b, kTolerance));
        // Half the tolerance along some hundred units of outline.
        ASSERT_NEAR(AreaOf(Simplified(a, kTolerance)), both + onlyA, 3) << i;
        ASSERT_NEAR(either, both + onlyA + onlyB, 3) << i;
        ASSERT_GE(both, 0);
    }
}

TEST(Combine, FollowsTheRules) {
    const Path twice = Read("M0 0h10v10H0zM2 2h4v4H2z"), box = Read("M0 0h4v4H0z");
    const auto area = [&](FillRule rule) {
        return AreaOf(Combine(AreaOperation::Intersection, {twice, rule}, {box}, kTolerance));
    };
    EXPECT_NEAR(area(FillRule::NonZero), 16, 1e-6);
    EXPECT_NEAR(area(FillRule::EvenOdd), 12, 1e-6);
}

TEST(Overlap, NeedsMoreThanAnEdge) {
    const struct {
        const char *a, *b;
        bool overlap;
    } cases[] = {
        {"M0 0h4v4h-4z", "M2 2h4v4h-4z", true},
        {"M0 0h4v4h-4z", "M4 0h4v4h-4z", false},
        {"M0 0h4v4h-4z", "M3.999 0h4v4h-4z", false},
        {"M0 0h4v4h-4z", "M3.9 0h4v4h-4z", true},
        {"M0 0h4v4h-4z", "M9 9h4v4h-4z", false},
        {"M0 0h4v4h-4z", "M1 1h1v1h-1z", true},
        // Apart, though their boxes are not.
        {"M0 0L10 10V10H0z", "M1 0H10V9z", false},
        {"M0 0h10v10H0zM1 1v8h8V1z", "M2 2h6v6H2z", false},
    };
    for (const auto& [a, b, overlap] : cases) {
        const Path first = Read(a), second = Read(b);
        EXPECT_EQ(Overlap({first}, {second}, kTolerance), overlap) << a << ' ' << b;
        EXPECT_EQ(Overlap({second}, {first}, kTolerance), overlap) << a << ' ' << b;
    }
}

TEST(Windings, AreTurnedForBothRules) {
    const auto nonZero = FillRule::NonZero, evenOdd = FillRule::EvenOdd;
    const struct {
        const char* data;
        FillRule rule;
        const char* rewound;
        bool rulesAgree;
    } cases[] = {
        {"M0 0h9v9H0z", nonZero, "M0 0h9v9H0z", true},
        {"M0 0v9h9V0z", nonZero, "M9 0v9H0V0z", true},
        {"M0 0h9v9H0zM2 2h4v4H2z", evenOdd, "M0 0h9v9H0zM2 6h4V2H2z", false},
        {"M0 0h9v9H0zM2 2h4v4H2z", nonZero, "M0 0h9v9H0z", false},
        {"M0 0h9v9H0zM2 2v4h4V2z", nonZero, "M0 0h9v9H0zM2 2v4h4V2z", true},
        {"M0 0h9v9H0zM2 2v4h4V2zM3 3h1v1z", evenOdd, "M0 0h9v9H0zM2 2v4h4V2zM3 3h1v1z", true},
        {"M0 0h9v9H0zM20 0v4h4V0z", nonZero, "M0 0h9v9H0zM24 0v4h-4V0z", true},
        {"M0 0h9v9H0zM9 0h4v4H9z", nonZero, "M0 0h9v9H0zM9 0h4v4H9z", true},
        {"M2 2h4v4H2zM0 0h9v9H0z", evenOdd, "M2 6h4V2H2zM0 0h9v9H0z", false},
        {"M0 0C0 4 4 4 4 0z", nonZero, "M4 0c0 4-4 4-4 0z", true},
        {"M0 0h9v9H0zM1 1h3", nonZero, "M0 0h9v9H0z", true},
        // Crossing outlines are computed anew.
        {"M0 0h4v4H0zM2 2h4v4H2z", nonZero, "M4 2h2v4H2V4H0V0h4z", false},
        {"M0 0 4 4V0L0 4z", nonZero, "M4 4 2 2l2-2zM2 2 0 4V0z", true},
        {"M5 0 8 9 0 3h10L2 9z", evenOdd, nullptr, false},
        {"", nonZero, "", true},
    };
    for (const auto& [data, rule, rewound, rulesAgree] : cases) {
        const Path path = Read(data), result = Rewound({path, rule}, kTolerance);
        if (rewound) {
            EXPECT_EQ(Written(result), rewound) << data;
        }
        EXPECT_EQ(RulesAgree(path, kTolerance), rulesAgree) << data;
        EXPECT_TRUE(RulesAgree(result, kTolerance)) << data;
        EXPECT_GE(AreaOf(result), 0) << data;
    }
}

TEST(Windings, CrossingsAreFound) {
    const struct {
        const char* data;
        bool cross;
    } cases[] = {
        {"M0 0h4v4H0z", false},
        {"M0 0 4 4V0L0 4z", true},
        {"M0 0h4v4H0zM2 2h4v4H2z", true},
        {"M0 0h4v4H0zM4 0h4v4H4z", false},
        {"M0 0h4v4H0zM4 4h4v4H4z", false},
        {"M0 0C10 10 -6 10 4 0z", true},
        {"M0 0C0 10 4 10 4 0z", false},
    };
    for (const auto& [data, cross] : cases) EXPECT_EQ(Cross(Flatten(Read(data), kTolerance)), cross) << data;
}
