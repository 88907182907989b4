#include "canvas.h"
#include "geometry/dash.h"
#include "geometry/flatten.h"
#include "geometry/path_reader.h"
#include "geometry/path_writer.h"
#include "geometry/stroke.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

using namespace ozm::conform;

namespace {

/// Makes a path the context's own.
void Use(const Path& path, CGContextRef context) {
    Segment segment;
    for (Segments segments(path); segments.Next(segment);) {
        const Point* const p = segment.points;
        switch (segment.verb) {
        case Verb::Move: CGContextMoveToPoint(context, p[0].x, p[0].y); break;
        case Verb::Line: CGContextAddLineToPoint(context, p[1].x, p[1].y); break;
        case Verb::Cubic:
            CGContextAddCurveToPoint(context, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
            break;
        case Verb::Close: CGContextClosePath(context); break;
        }
    }
}

/// How many pixels' worth two pictures differ by in the worst pixel and in sum.
struct Difference {
    int worst = 0;
    double sum = 0;
};

Difference Compare(const Canvas& a, const Canvas& b) {
    Difference difference;
    for (size_t y = 0; y < a.height(); ++y) {
        for (size_t x = 0; x < a.width(); ++x) {
            const int d = std::abs(a.at(x, y).a - b.at(x, y).a);
            difference.worst = std::max(difference.worst, d);
            difference.sum += d / 255.;
        }
    }
    return difference;
}

constexpr size_t kSize = 200;

Difference CompareOutline(const Path& path, const Stroke& stroke) {
    const Canvas stroked(kSize, kSize), filled(kSize, kSize);
    CGContextSetLineWidth(stroked, stroke.width);
    CGContextSetLineCap(stroked, static_cast<CGLineCap>(stroke.cap));
    CGContextSetLineJoin(stroked, static_cast<CGLineJoin>(stroke.join));
    CGContextSetMiterLimit(stroked, stroke.miterLimit);
    Use(path, stroked);
    CGContextStrokePath(stroked);
    Use(OutlineOf(path, stroke, 0.01), filled);
    CGContextFillPath(filled);
    return Compare(stroked, filled);
}

std::string Written(const Path& path, int decimals = 1) {
    std::string text;
    WritePath(path, decimals, text);
    return text;
}

} // namespace

TEST(OutlineOf, CoversWhatTheStrokeDoes) {
    const char* const paths[] = {
        "M40 40H160",
        "M40 40H160V160H40Z",
        "M40 160V40L160 50 50 60",
        "M40 40 160 60 40 80",
        "M40 100H160H60",
        "M40 150C40 20 160 20 160 150",
        "M40 150C160 20 40 20 160 150Z",
        "M100 40C133 40 160 67 160 100C160 133 133 160 100 160S40 133 40 100 67 40 100 40Z",
        "M40 100C40 40 100 40 100 100S160 160 160 100L150 100",
        "M60 60L60 60",
        "M60 60Z",
        "M50 50h30zM100 100h50l-20 40z",
        // Corners and rings rounder than the pen.
        "M48 40h104c4 0 8 4 8 8v104c0 4-4 8-8 8H48c-4 0-8-4-8-8V48C40 44 44 40 48 40Z",
        "M40 40H92C96 40 100 44 100 48V160",
        "M110 100C110 105 105 110 100 110S90 105 90 100 95 90 100 90 110 95 110 100Z",
        "M40 60C80 60 120 60 160 60V100C160 100 120 100 80 140",
    };
    for (const char* const data : paths) {
        const Path path = ReadPath(data).path;
        for (const LineCap cap : {LineCap::Butt, LineCap::Round, LineCap::Square}) {
            for (const LineJoin join : {LineJoin::Miter, LineJoin::Round, LineJoin::Bevel}) {
                for (const double width : {1., 12., 30.}) {
                    const Difference difference = CompareOutline(path, {width, cap, join, 5});
                    EXPECT_LT(difference.sum, 25) << data << ' ' << int(cap) << int(join) << ' ' << width;
                    EXPECT_LT(difference.worst, 130) << data << ' ' << int(cap) << int(join) << ' ' << width;
                }
            }
        }
    }
}

TEST(OutlineOf, StaysNearRandomCurves) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> inside(30, 170), width(1, 20);
    int unlike = 0;
    for (int i = 0; i < 300; ++i) {
        Path path;
        const auto point = [&] { return Point{inside(random), inside(random)}; };
        path.MoveTo(point());
        for (int k = 0; k < 3; ++k) path.CubicTo(point(), point(), point());
        const Difference d = CompareOutline(path, {width(random), LineCap::Round, LineJoin::Round, 4});
        unlike += d.sum > 12;
    }
    EXPECT_LE(unlike, 6); // Cusps.
}

TEST(OutlineOf, KeepsCurvesFew) {
    const auto count = [](const char* data, Stroke stroke) {
        return OutlineOf(ReadPath(data).path, stroke, 0.01).Verbs().size();
    };
    const Stroke round{2, LineCap::Round, LineJoin::Round, 4};
    EXPECT_EQ(Written(OutlineOf(ReadPath("M2 2h8v8").path, {2, LineCap::Butt, LineJoin::Miter, 4}, 0.01)),
              "M2 1h9v9H9V3H2z");
    EXPECT_EQ(Written(OutlineOf(ReadPath("M2 2h8v8h-8z").path, {2, LineCap::Butt, LineJoin::Miter, 4}, 0.01)),
              "M1 1h10v10H1zM3 3v6h6V3z");
    EXPECT_EQ(count("M2 2h8v8", round), 11U);
    // A circle is two of four curves each, with the ends of the lines between them.
    EXPECT_LE(count("M5 12a7 7 0 1 1 14 0a7 7 0 1 1-14 0z", round), 12U);
}

TEST(StrokeBoxOf, IsExact) {
    const auto box = [](const char* data, Stroke stroke, Matrix matrix = {}) {
        return StrokeBoxOf(ReadPath(data).path, stroke, matrix);
    };
    const Box line = box("M2 2h8", {2, LineCap::Round, LineJoin::Round, 4});
    EXPECT_NEAR(line.left, 1, 1e-9);
    EXPECT_NEAR(line.bottom, 3, 1e-9);
    const Box corner = box("M0 0h8v8", {2, LineCap::Butt, LineJoin::Miter, 4}, Matrix::Scaling(2, 3));
    EXPECT_EQ(corner, (Box{0, -3, 18, 24}));
    EXPECT_TRUE(box("M1 1h1", {0}).IsEmpty());
    EXPECT_NEAR(StrokeReach({2, LineCap::Square, LineJoin::Bevel, 4}), std::sqrt(2.), 1e-12);
}

TEST(DashesOf, CutLinesAndCurves) {
    const struct {
        const char* data;
        std::vector<double> lengths;
        double phase;
        const char* dashes;
    } cases[] = {
        {"M0 0h10", {3, 2}, 0, "M0 0h3M5 0h3"},
        {"M0 0h10", {3, 2}, 1, "M0 0h2M4 0h3M9 0h1"},
        {"M0 0h10", {3, 2}, -1, "M1 0h3M6 0h3"},
        {"M0 0h10", {3, 2}, 14, "M1 0h3M6 0h3"},
        {"M0 0h10", {4}, 0, "M0 0h4M8 0h2"},
        {"M0 0h10", {1, 2, 3}, 0, "M0 0h1M3 0h3M7 0h2"},
        {"M0 0h4v4", {3, 2}, 0, "M0 0h3M4 1v3"},
        {"M0 0h4v4h-4z", {3, 2}, 0, "M0 1V0h3M4 1v3M2 4H0V3"},
        // Over the start of a closed subpath.
        {"M0 0h4v4h-4z", {4, 4}, 2, "M0 2V0h2M4 2v2H2"},
        {"M0 0h4v4h-4z", {40, 4}, 2, "M0 0h4v4H0z"},
        {"M0 0h4zM0 5h4", {3, 9}, 0, "M0 0h3M0 5h3"},
        {"M0 0h6", {0, 3}, 0, "M0 0h0M3 0h0"},
        // Dashes without a gap between them are one.
        {"M0 0h6", {0, 3, 0, 0, 0, 0}, 0, "M0 0h0M3 0h0"},
        {"M0 0h8", {2, 0, 1, 2}, 0, "M0 0h2 1M5 0h2 1"},
        {"M0 0h4v4h-4z", {3, 0}, 0, "M0 0h4v4H0z"},
        {"M0 0h6", {0, 0}, 0, "M0 0h6"},
        {"M0 0h6", {}, 0, "M0 0h6"},
        {"M0 0h6", {-1, 2}, 0, "M0 0h6"},
        {"M0 0h6", {INFINITY, 2}, 0, "M0 0h6"},
        {"M0 0C0 0 8 0 8 0", {4, 9}, 0, "M0 0s2 0 4 0"},
        {"M0 0C0 5.5 4.5 10 10 10", {7.85, 100}, 0, "M0 0c0 2.8 1.1 5.3 2.9 7.1"},
    };
    for (const auto& [data, lengths, phase, dashes] : cases) {
        EXPECT_EQ(Written(DashesOf(ReadPath(data).path, lengths, phase, 100).value()), dashes)
            << data << phase;
    }
    const double dots[] = {0.001, 0.001};
    EXPECT_FALSE(DashesOf(ReadPath("M0 0h1000").path, dots, 0, 1000));
    const double vanishing[] = {1e-300, 1e-300};
    EXPECT_FALSE(DashesOf(ReadPath("M0 0h1000").path, vanishing, 0, 1000));
    EXPECT_NEAR(LengthOf(ReadPath("M0 0h3v4zM0 0A10 10 0 0 1 10 10").path), 12 + 5 * M_PI, 1e-2);
}

TEST(Flatten, StaysWithinItsTolerance) {
    const Path circle = ReadPath("M20 10A10 10 0 1 1 0 10A10 10 0 1 1 20 10Z").path;
    for (const double tolerance : {1., .1, .001}) {
        const std::vector<Polyline> lines = Flatten(circle, tolerance);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_TRUE(lines[0].isClosed);
        const std::vector<Point>& points = lines[0].points;
        double worst = 0;
        for (size_t i = 0; i < points.size(); ++i) {
            const Point middle = Mix(points[i], points[(i + 1) % points.size()], .5);
            worst = std::max(worst, 10 - Distance(middle, {10, 10}));
        }
        EXPECT_LT(worst, tolerance * 1.01 + 0.003); // The arcs are curves, not circles.
        EXPECT_LT(points.size(), 4 * (2 + 3 / std::sqrt(tolerance)));
    }
}
