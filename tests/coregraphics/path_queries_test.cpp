#include "owned.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace {

using Polygon = std::vector<CGPoint>;

/// A path of random lines and curves, and the same subpaths as polygons with many short sides.
struct RandomPath {
    explicit RandomPath(std::mt19937& random) {
        const auto point = [&] {
            std::uniform_int_distribution<int> coordinate(-100, 100); // integers, so that some coincide
            const double x = coordinate(random);
            return CGPoint{x, static_cast<double>(coordinate(random))};
        };
        for (unsigned subpath = 0; subpath < 1 + random() % 3; ++subpath) {
            CGPoint from = point();
            CGPathMoveToPoint(path, nullptr, from.x, from.y);
            polygons.push_back({from});
            for (unsigned segment = 0; segment < 1 + random() % 5; ++segment) {
                CGPoint p[] = {from, point(), point(), point()};
                const size_t degree = 1 + random() % 3;
                if (degree == 1) CGPathAddLineToPoint(path, nullptr, p[1].x, p[1].y);
                if (degree == 2) CGPathAddQuadCurveToPoint(path, nullptr, p[1].x, p[1].y, p[2].x, p[2].y);
                if (degree == 3)
                    CGPathAddCurveToPoint(path, nullptr, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
                addSamples(p, degree);
                from = p[degree];
            }
            if (random() % 2) CGPathCloseSubpath(path);
        }
    }

    void addSamples(const CGPoint* p, size_t degree) {
        constexpr int steps = 1000;
        for (int i = 1; i <= steps; ++i) {
            const double t = double(i) / steps, s = 1 - t;
            const double weights[3][4] = {{s, t, 0, 0},
                                          {s * s, 2 * s * t, t * t, 0},
                                          {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t}};
            CGPoint sample = {0, 0};
            for (size_t j = 0; j <= degree; ++j) {
                sample.x += weights[degree - 1][j] * p[j].x;
                sample.y += weights[degree - 1][j] * p[j].y;
            }
            polygons.back().push_back(sample);
        }
    }

    Owned<CGMutablePathRef> path{CGPathCreateMutable()};
    std::vector<Polygon> polygons;
};

/// The winding number, from the angles that the sides subtend at the point. NaN for a point close to a side.
double windingByAngles(const std::vector<Polygon>& polygons, CGPoint p) {
    double sum = 0;
    for (const Polygon& polygon : polygons) {
        for (size_t i = 0; i < polygon.size(); ++i) {
            const CGPoint a = polygon[i], b = polygon[(i + 1) % polygon.size()];
            const double ax = a.x - p.x, ay = a.y - p.y, bx = b.x - p.x, by = b.y - p.y;
            const double cross = ax * by - ay * bx, dot = ax * bx + ay * by;
            if (std::abs(cross) < 0.05 * std::hypot(b.x - a.x, b.y - a.y) && dot <= 0.01)
                return std::numeric_limits<double>::quiet_NaN();
            sum += std::atan2(cross, dot);
        }
    }
    return std::round(sum / (2 * std::numbers::pi));
}

TEST(PathBounds, AreTightAroundRandomCurves) {
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        const RandomPath r(random);
        double x0 = 1e9, y0 = 1e9, x1 = -1e9, y1 = -1e9;
        for (const Polygon& polygon : r.polygons) {
            for (const CGPoint p : polygon) {
                x0 = std::min(x0, p.x);
                y0 = std::min(y0, p.y);
                x1 = std::max(x1, p.x);
                y1 = std::max(y1, p.y);
            }
        }
        const CGRect box = CGPathGetPathBoundingBox(r.path);
        constexpr double rounding = 1e-9, sampling = 1e-3;
        for (const double outside : {x0 - CGRectGetMinX(box), y0 - CGRectGetMinY(box),
                                     CGRectGetMaxX(box) - x1, CGRectGetMaxY(box) - y1}) {
            EXPECT_GE(outside, -rounding) << textOf(r.path);
            EXPECT_LE(outside, sampling) << textOf(r.path);
        }
        EXPECT_TRUE(CGRectContainsRect(CGRectInset(CGPathGetBoundingBox(r.path), -rounding, -rounding), box));
    }
}

TEST(PathBounds, OfKnownPaths) {
    struct Case {
        const char* path;
        CGRect all, tight;
    };
    const Case cases[] = {
        {"", CGRectNull, CGRectNull},
        {"M 3 4", CGRectMake(3, 4, 0, 0), CGRectMake(3, 4, 0, 0)},
        {"M 0 0 C 0 8 12 8 12 0", CGRectMake(0, 0, 12, 8), CGRectMake(0, 0, 12, 6)},
        {"M 0 0 Q 5 10 10 0", CGRectMake(0, 0, 10, 10), CGRectMake(0, 0, 10, 5)},
        {"M 0 0 C 0 1e300 1e300 1e300 1e300 0", CGRectMake(0, 0, 1e300, 1e300),
         CGRectMake(0, 0, 1e300, 7.5e299)},
        {"M 0 0 C 0 8e-300 1 8e-300 1 0", CGRectMake(0, 0, 1, 8e-300), CGRectMake(0, 0, 1, 6e-300)},
        {"M 5 5 L 1 1 M 9 9", CGRectMake(1, 1, 8, 8), CGRectMake(1, 1, 8, 8)},
        {"M 2 2 C 2 2 2 2 2 2 Z", CGRectMake(2, 2, 0, 0), CGRectMake(2, 2, 0, 0)},
    };
    const auto expectNear = [](CGRect found, CGRect expected, const char* path) {
        if (CGRectIsNull(expected)) {
            EXPECT_TRUE(CGRectIsNull(found)) << path;
        } else {
            EXPECT_EQ(found.origin, expected.origin) << path;
            EXPECT_DOUBLE_EQ(found.size.width, expected.size.width) << path;
            EXPECT_DOUBLE_EQ(found.size.height, expected.size.height) << path;
        }
    };
    for (const Case& c : cases) {
        const auto path = pathFromText(c.path);
        expectNear(CGPathGetBoundingBox(path), c.all, c.path);
        expectNear(CGPathGetPathBoundingBox(path), c.tight, c.path);
    }
    EXPECT_FALSE(CGRectIsNull(
        CGPathGetPathBoundingBox(pathFromText("M -1e308 0 C 1e308 -1e308 -1e308 1e308 1e308 0"))));
}

TEST(PathContains, AgreesWithSummedAngles) {
    std::mt19937 random(11);
    int tested = 0, inside = 0;
    for (int i = 0; i < 150; ++i) {
        const RandomPath r(random);
        for (int j = 0; j < 20; ++j) {
            std::uniform_int_distribution<int> coordinate(-100, 100);
            const double x = coordinate(random);
            const CGPoint p = {x, double(coordinate(random))};
            const double winding = windingByAngles(r.polygons, p);
            if (std::isnan(winding)) continue;
            ++tested;
            inside += winding != 0;
            ASSERT_EQ(CGPathContainsPoint(r.path, nullptr, p, false), winding != 0)
                << p << ' ' << textOf(r.path);
            ASSERT_EQ(CGPathContainsPoint(r.path, nullptr, p, true), std::fmod(winding, 2) != 0)
                << p << ' ' << textOf(r.path);
        }
    }
    EXPECT_GT(tested, 2000);
    EXPECT_GT(inside, 300);
}

TEST(PathContains, AcceptsExtremePointsAndATransform) {
    const auto path = pathFromText("M -1e308 -1e308 L 1e308 -1e308 L 0 1e308 Z");
    EXPECT_TRUE(CGPathContainsPoint(path, nullptr, {0, 0}, false));
    EXPECT_FALSE(CGPathContainsPoint(path, nullptr, {1e308, 1e307}, false));
    EXPECT_FALSE(CGPathContainsPoint(path, nullptr, {std::nan(""), 0}, false));
    EXPECT_FALSE(CGPathContainsPoint(path, nullptr, {0, std::numeric_limits<double>::infinity()}, false));
    const CGAffineTransform away = CGAffineTransformMakeTranslation(100, 0);
    const auto square = pathFromText("M 100 0 L 110 0 L 110 10 L 100 10");
    EXPECT_TRUE(CGPathContainsPoint(square, &away, {5, 5}, true));
    EXPECT_FALSE(CGPathContainsPoint(square, nullptr, {5, 5}, true));
}

TEST(PathIsRect, HoldsForASingleAxisAlignedRect) {
    struct Case {
        const char* path;
        bool isRect;
    };
    const Case cases[] = {
        {"M 1 2 L 4 2 L 4 6 L 1 6 Z", true},
        {"M 4 6 L 4 2 L 1 2 L 1 6 Z", true},
        {"M 1 2 L 4 2 L 4 6 L 1 6 L 1 2", true},
        {"M 1 2 L 4 2 L 4 6 L 1 6 L 1 2 Z", true},
        {"M 1 2 L 4 2 L 4 6 L 1 6", false},
        {"M 1 2 L 4 2 L 4 6 Z", false},
        {"M 1 2 L 4 2 L 4 6 L 1 5 Z", false},
        {"M 1 2 L 4 3 L 3 6 L 0 5 Z", false},
        {"M 1 2 L 4 2 L 4 6 L 1 6 L 0 0 Z", false},
        {"M 1 2 L 4 2 L 4 6 L 1 6 Z M 0 0", false},
        {"M 1 2 L 4 2 M 4 6 L 1 6 Z", false},
        {"M 1 2 Q 4 2 4 6 L 1 6 Z", false},
        {"", false},
    };
    for (const Case& c : cases) {
        CGRect rect = CGRectZero;
        EXPECT_EQ(CGPathIsRect(pathFromText(c.path), &rect), c.isRect) << c.path;
        EXPECT_EQ(rect, c.isRect ? CGRectMake(1, 2, 3, 4) : CGRectZero) << c.path;
    }
}

} // namespace
