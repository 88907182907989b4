// How near the pixels of random scenes are to what the shapes exactly cover.
#include "canvas.h"
#include "exact_coverage.h"
#include "random_shapes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

constexpr size_t kSize = 32;

/// Red, green, blue and alpha; 0...1.
using Color = std::array<double, 4>;

/// A scene: a path, filled or stroked.
struct Scene {
    Owned<CGMutablePathRef> path;
    CGAffineTransform matrix = CGAffineTransformIdentity;
    bool strokes = false, evenOdd = false;
    ExactPen pen{};
};

// Turns, scales, mirrors and shears around the middle, or does nothing.
CGAffineTransform randomMatrix(Dice& dice) {
    CGAffineTransform m = CGAffineTransformMakeTranslation(16, 16);
    const int kind = dice.oneOf(4);
    if (kind == 1) m = CGAffineTransformRotate(m, dice.between(-3, 3));
    if (kind >= 2) {
        const double y = dice.between(0.5, 1.5), x = dice.between(0.5, 1.5);
        m = CGAffineTransformScale(m, dice.oneOf(2) ? x : -x, y);
    }
    if (kind == 3) m = CGAffineTransformConcat({1, dice.between(-0.6, 0.6), 0.3, 1, 0, 0}, m);
    return CGAffineTransformTranslate(m, -16, -16);
}

ExactPen randomPen(Dice& dice, double least, double greatest) {
    return {dice.between(least, greatest), static_cast<CGLineCap>(dice.oneOf(3)),
            static_cast<CGLineJoin>(dice.oneOf(3)), dice.between(1, 12)};
}

Scene fillOf(Dice& dice, bool curves) {
    Scene scene{randomPath(dice, {3, curves, true}, kSize), randomMatrix(dice)};
    scene.evenOdd = dice.oneOf(2);
    return scene;
}
Scene linesFilled(Dice& dice) { return fillOf(dice, false); }
Scene curvesFilled(Dice& dice) { return fillOf(dice, true); }

CGPoint pointIn(Dice& dice, const CGRect& box) {
    return {dice.between(CGRectGetMinX(box), CGRectGetMaxX(box)),
            dice.between(CGRectGetMinY(box), CGRectGetMaxY(box))};
}

Scene triangle(Dice& dice) {
    Scene scene{Owned<CGMutablePathRef>(CGPathCreateMutable())};
    const CGRect anywhere = {{-4, -4}, {kSize + 8, kSize + 8}};
    const CGPoint corners[] = {pointIn(dice, anywhere), pointIn(dice, anywhere), pointIn(dice, anywhere)};
    CGPathAddLines(scene.path, nullptr, corners, 3);
    scene.evenOdd = dice.oneOf(2);
    return scene;
}

Scene arch(Dice& dice) {
    Scene scene{Owned<CGMutablePathRef>(CGPathCreateMutable())};
    const CGPoint from = pointIn(dice, {{0, 20}, {10, 10}}), up = pointIn(dice, {{0, -4}, {14, 14}}),
                  down = pointIn(dice, {{18, -4}, {14, 14}}), to = pointIn(dice, {{22, 20}, {10, 10}});
    CGPathMoveToPoint(scene.path, nullptr, from.x, from.y);
    CGPathAddCurveToPoint(scene.path, nullptr, up.x, up.y, down.x, down.y, to.x, to.y);
    scene.evenOdd = dice.oneOf(2);
    return scene;
}

Scene strokeOf(Dice& dice, bool curves) {
    Scene scene{randomPath(dice, {2, curves, false}, kSize), randomMatrix(dice), true};
    scene.pen = randomPen(dice, 1, 6);
    return scene;
}
Scene linesStroked(Dice& dice) { return strokeOf(dice, false); }
Scene curvesStroked(Dice& dice) { return strokeOf(dice, true); }

// Lines whose corners are rounded, with radii from nothing to the pen's width.
Scene roundedCorners(Dice& dice) {
    Scene scene{Owned<CGMutablePathRef>(CGPathCreateMutable()), randomMatrix(dice), true};
    scene.pen = randomPen(dice, 1, 8);
    CGPoint points[4];
    for (CGPoint& point : points) point = pointIn(dice, {{4, 4}, {24, 24}});
    CGPathMoveToPoint(scene.path, nullptr, points[0].x, points[0].y);
    for (size_t i = 1; i < 3; ++i) {
        const CGPoint p = points[i], before = points[i - 1], after = points[i + 1];
        const double ax = before.x - p.x, ay = before.y - p.y, bx = after.x - p.x, by = after.y - p.y;
        const double tangent = std::tan(0.5 * std::abs(std::atan2(ax * by - ay * bx, ax * bx + ay * by)));
        // Each arc takes less than half of the shorter line.
        const double most = 0.45 * std::min(std::hypot(ax, ay), std::hypot(bx, by)) * tangent;
        CGPathAddArcToPoint(scene.path, nullptr, p.x, p.y, after.x, after.y,
                            std::min(dice.between(0.05, 1) * scene.pen.width, most));
    }
    CGPathAddLineToPoint(scene.path, nullptr, points[3].x, points[3].y);
    return scene;
}

Scene dashes(Dice& dice) {
    Scene scene = strokeOf(dice, dice.oneOf(2));
    scene.pen.width = dice.between(1, 4);
    for (int i = dice.oneOf(2); i >= 0; --i) {
        scene.pen.dashes.push_back(dice.oneOf(5) ? dice.between(1, 9) : 0);
        scene.pen.dashes.push_back(dice.between(1, 6));
    }
    scene.pen.phase = dice.between(0, 15);
    return scene;
}

Scene thinZigzag(Dice& dice) {
    Scene scene{Owned<CGMutablePathRef>(CGPathCreateMutable()), CGAffineTransformIdentity, true};
    CGPathMoveToPoint(scene.path, nullptr, 3, dice.between(4, 28));
    for (double x = dice.between(5, 7); x < 28; x += dice.between(2, 6))
        CGPathAddLineToPoint(scene.path, nullptr, x, dice.between(4, 28));
    scene.pen = randomPen(dice, 0.4, 3);
    return scene;
}

Scene capsThatTouch(Dice& dice) {
    Scene scene{Owned<CGMutablePathRef>(CGPathCreateMutable()), CGAffineTransformIdentity, true};
    CGPathMoveToPoint(scene.path, nullptr, 4, 16);
    const double down = dice.between(0, 16), up = dice.between(0, 16);
    CGPathAddCurveToPoint(scene.path, nullptr, 12, 16 - up, 20, 16 + down, 28, 16);
    scene.pen = {.width = dice.between(2, 5),
                 .cap = dice.oneOf(2) ? kCGLineCapRound : kCGLineCapSquare,
                 .join = kCGLineJoinRound};
    scene.pen.dashes = {dice.between(0, 5), scene.pen.width * dice.between(0.6, 1)};
    return scene;
}

std::vector<double> exactly(const Scene& scene) {
    ExactCoverage exact(kSize);
    if (scene.strokes)
        exact.addStroke(scene.path, scene.pen, scene.matrix);
    else
        exact.addFill(scene.path, scene.matrix);
    return exact.pixels(scene.evenOdd, scene.strokes ? 32 : 128); // A stroke has many more pieces.
}

void draw(const Canvas& canvas, const Scene& scene) {
    CGContextConcatCTM(canvas, scene.matrix);
    CGContextAddPath(canvas, scene.path);
    CGContextSetLineWidth(canvas, scene.pen.width);
    CGContextSetLineCap(canvas, scene.pen.cap);
    CGContextSetLineJoin(canvas, scene.pen.join);
    CGContextSetMiterLimit(canvas, scene.pen.miterLimit);
    CGContextSetLineDash(canvas, scene.pen.phase, scene.pen.dashes.data(), scene.pen.dashes.size());
    CGContextDrawPath(canvas, scene.strokes ? kCGPathStroke : scene.evenOdd ? kCGPathEOFill : kCGPathFill);
}

/// A class of scenes and its bounds, in 255ths: the mean error of the pixels that are partly covered, the
/// largest of all, and how many pixels in 10,000 partly covered ones may err by more than 16.
struct SceneClass {
    const char* name;
    Scene (*make)(Dice&);
    double mean, largest, coarse;
};

// Rounding to a byte alone makes a mean of 0.25.
const SceneClass kClasses[] = {
    {"triangles", triangle, 0.3, 1.5, 0},
    {"arches", arch, 0.8, 13, 0},
    {"lines filled", linesFilled, 0.35, 60, 10},
    {"curves filled", curvesFilled, 0.55, 80, 10},
    {"lines stroked", linesStroked, 0.4, 30, 5},
    {"curves stroked", curvesStroked, 0.45, 80, 10},
    {"rounded corners", roundedCorners, 0.7, 20, 0},
    {"dashes", dashes, 0.7, 120, 30},
    {"thin zigzag", thinZigzag, 0.4, 16, 0},
    {"caps that touch", capsThatTouch, 0.7, 40, 10},
};

// In a row of this scene, the sum of a pixel is a whole number by chance, though edges cross the pixel.
TEST(Fidelity, WholeSumsMayBeWrong) {
    Dice dice(503);
    const Scene scene = curvesStroked(dice);
    const Canvas canvas(kSize, kSize);
    draw(canvas, scene);
    const std::vector<double> exact = exactly(scene);
    for (size_t x = 15; x < 25; ++x) EXPECT_NEAR(canvas.at(x, 10).a, 255 * exact[10 * kSize + x], 10) << x;
}

TEST(Fidelity, PixelsHaveTheCoverageOfTheirShapes) {
    for (const SceneClass& c : kClasses) {
        double sum = 0, largest = 0;
        int partly = 0, coarse = 0;
        uint32_t worst = 0;
        for (uint32_t seed = 1; seed <= 60; ++seed) {
            Dice dice(seed);
            const Scene scene = c.make(dice);
            const Canvas canvas(kSize, kSize);
            draw(canvas, scene);
            const std::vector<double> exact = exactly(scene);
            for (size_t i = 0; i < exact.size(); ++i) {
                const double error = std::abs(canvas.at(i % kSize, i / kSize).a - 255 * exact[i]);
                if (error == 0) continue; // wholly inside or outside
                ++partly;
                sum += error;
                coarse += error > 16;
                if (error > largest) worst = seed;
                largest = std::max(largest, error);
            }
        }
        EXPECT_LE(sum / partly, c.mean) << c.name;
        EXPECT_LE(largest, c.largest) << c.name << ", seed " << worst;
        EXPECT_LE(coarse * 1e4 / partly, c.coarse) << c.name;
    }
}

/// A picture in double precision, composited from exact coverage; premultiplied components 0...1.
class ExactPicture {
public:
    void paint(const std::vector<double>& coverage, const Color& color) {
        for (size_t i = 0; i < coverage.size(); ++i) {
            const double alpha = color[3] * coverage[i];
            for (size_t k = 0; k < 4; ++k)
                m_pixels[i][k] = (k < 3 ? color[k] : 1) * alpha + m_pixels[i][k] * (1 - alpha);
        }
    }
    /// The largest difference of the components of a pixel, in 255ths.
    double error(const Canvas& canvas, size_t i) const {
        const Rgba8 p = canvas.at(i % kSize, i / kSize);
        const int drawn[] = {p.r, p.g, p.b, p.a};
        double most = 0;
        for (size_t k = 0; k < 4; ++k) most = std::max(most, std::abs(drawn[k] - 255 * m_pixels[i][k]));
        return most;
    }

private:
    std::array<std::array<double, 4>, kSize * kSize> m_pixels{};
};

struct Overlap {
    const char* name;
    const char* path;
    bool evenOdd;
    size_t x, y;
    int alpha;
};

Scene translucent(Dice& dice) {
    Scene scene = dice.oneOf(2) ? curvesFilled(dice) : curvesStroked(dice);
    scene.pen.join = kCGLineJoinRound;
    return scene;
}

// Up to three clips, and a fill in them all. What clips and fills cover is multiplied.
void drawClipped(Dice& dice, const Canvas& canvas, ExactPicture& exact, const Color& color) {
    std::vector<double> coverage(kSize * kSize, 1);
    CGContextSaveGState(canvas);
    for (int i = dice.oneOf(3) + 1; i >= 0; --i) {
        Scene scene = curvesFilled(dice);
        scene.matrix = CGAffineTransformIdentity;
        const std::vector<double> covered = exactly(scene);
        for (size_t k = 0; k < coverage.size(); ++k) coverage[k] *= covered[k];
        if (i == 0) {
            draw(canvas, scene);
        } else {
            CGContextAddPath(canvas, scene.path);
            scene.evenOdd ? CGContextEOClip(canvas) : CGContextClip(canvas);
        }
    }
    CGContextRestoreGState(canvas);
    exact.paint(coverage, color);
}

TEST(Fidelity, LayersAreCompositedAsIfExactly) {
    for (const bool clips : {false, true}) {
        double sum = 0, largest = 0;
        int painted = 0;
        for (uint32_t seed = 1; seed <= 20; ++seed) {
            Dice dice(seed);
            const Canvas canvas(kSize, kSize);
            ExactPicture exact;
            for (int layer = 0; layer < 5; ++layer) {
                const Color color = {dice.between(0, 1), dice.between(0, 1), dice.between(0, 1),
                                     dice.between(0.1, 1)};
                CGContextSetRGBFillColor(canvas, color[0], color[1], color[2], color[3]);
                CGContextSetRGBStrokeColor(canvas, color[0], color[1], color[2], color[3]);
                if (clips) {
                    drawClipped(dice, canvas, exact, color);
                    continue;
                }
                const Scene scene = translucent(dice);
                CGContextSaveGState(canvas);
                draw(canvas, scene);
                CGContextRestoreGState(canvas);
                exact.paint(exactly(scene), color);
            }
            for (size_t i = 0; i < kSize * kSize; ++i) {
                const double error = exact.error(canvas, i);
                painted += error > 0;
                sum += error;
                largest = std::max(largest, error);
            }
        }
        EXPECT_LE(sum / painted, 0.7) << clips;
        EXPECT_LE(largest, 80) << clips;
    }
}

// Pixels in which windings of different effect meet.
TEST(Fidelity, WindingsAreCountedInsidePixels) {
    const Overlap cases[] = {
        {"equal rectangles, even-odd",
         "M 4.5 4.5 L 20.5 4.5 L 20.5 20.5 L 4.5 20.5 Z M 4.5 4.5 L 20.5 4.5 L 20.5 20.5 L 4.5 20.5 Z", true,
         4, 10, 0},
        {"equal rectangles, nonzero",
         "M 4.5 4.5 L 20.5 4.5 L 20.5 20.5 L 4.5 20.5 Z M 4.5 4.5 L 20.5 4.5 L 20.5 20.5 L 4.5 20.5 Z", false,
         4, 10, 128},
        {"opposite strips, abutting", "M 4 4 L 4.5 4 L 4.5 20 L 4 20 Z M 4.5 4 L 4.5 20 L 5 20 L 5 4 Z",
         false, 4, 10, 255},
        {"opposite bars, abutting", "M 4 4 L 8.5 4 L 8.5 20 L 4 20 Z M 8.5 4 L 8.5 20 L 13 20 L 13 4 Z",
         false, 8, 10, 255},
        {"opposite bars, one above the other",
         "M 4 4 L 20 4 L 20 8.5 L 4 8.5 Z M 4 8.5 L 4 13 L 20 13 L 20 8.5 Z", false, 10, 8, 255},
        {"equal rectangles beside a bar that begins above them",
         "M 4 10.5 L 20 10.5 L 20 20 L 4 20 Z M 4 10.5 L 20 10.5 L 20 20 L 4 20 Z M 24 4 L 25 4 L 25 20 L 24 "
         "20 Z",
         false, 10, 10, 128},
        {"crossing bars", "M 4 10.5 L 20 10.5 L 20 14 L 4 14 Z M 10.5 4 L 14 4 L 14 20 L 10.5 20 Z", false,
         10, 10, 191},
        {"crossing bars, even-odd", "M 4 10.5 L 20 10.5 L 20 14 L 4 14 Z M 10.5 4 L 14 4 L 14 20 L 10.5 20 Z",
         true, 10, 10, 128},
        {"bow tie", "M 4 4 L 21 21 L 21 4 L 4 21 Z", false, 12, 12, 128},
    };
    for (const Overlap& c : cases) {
        const Canvas canvas;
        CGContextAddPath(canvas, pathFromText(c.path));
        CGContextDrawPath(canvas, c.evenOdd ? kCGPathEOFill : kCGPathFill);
        EXPECT_NEAR(canvas.at(c.x, c.y).a, c.alpha, 1) << c.name;
    }
}

TEST(Fidelity, StackedContoursKeepTheirEdges) {
    const Canvas nonZero, evenOdd, ellipses(64, 64);
    for (int i = 0; i < 302; ++i) {
        for (const Canvas* canvas : {&nonZero, &evenOdd})
            CGContextAddRect(*canvas, CGRectMake(4.5, 4.5, 20, 20));
    }
    CGContextFillPath(nonZero);
    CGContextEOFillPath(evenOdd);
    for (const size_t x : {4u, 24u}) {
        EXPECT_NEAR(nonZero.at(x, 12).a, 128, 1) << x;
        EXPECT_EQ(evenOdd.at(x, 12).a, 0) << x;
    }
    // Rounding errors of so many edges would show as streaks to the right.
    for (int i = 0; i < 10'000; ++i) CGContextAddEllipseInRect(ellipses, CGRectMake(4.3, 4.3, 31.7, 31.7));
    CGContextFillPath(ellipses);
    for (size_t y = 0; y < 64; ++y) EXPECT_EQ(ellipses.at(50, y).a, 0) << y;
    EXPECT_EQ(ellipses.at(20, 20).a, 255);
}

// An open circle whose ends meet on one edge: their caps cover the same half disc.
TEST(Fidelity, ThinLinesThatTurnBackAreDrawnOnce) {
    for (const char* path : {"M 4 10.5 L 24 10.5 L 6 10.5", "M 4 10.5 L 24 10.5 Z"}) {
        const Canvas canvas;
        CGContextSetLineWidth(canvas, 0.4);
        CGContextAddPath(canvas, pathFromText(path));
        CGContextStrokePath(canvas);
        for (const size_t x : {8u, 12u, 18u}) EXPECT_NEAR(canvas.at(x, 10).a, 102, 1) << path << ' ' << x;
    }
}

TEST(Fidelity, CapsOnOneEdgeAreUnited) {
    const Canvas canvas;
    CGContextAddArc(canvas, 16.3, 16.4, 9, 0, 6.28318, 0);
    CGContextSetLineWidth(canvas, 3);
    CGContextSetLineCap(canvas, kCGLineCapRound);
    CGContextStrokePath(canvas);
    EXPECT_NEAR(canvas.area(), 2 * 3.14159265 * 9 * 3, 0.15);
}

TEST(Fidelity, WithoutAntialiasingPixelsAreInOrOut) {
    struct Case {
        CGRect rect;
        size_t pixels;
    };
    const Case cases[] = {{{{10.5, 10.5}, {10, 10}}, 100},
                          {{{10.4, 10.6}, {10, 10}}, 100},
                          {{{4, 4}, {0.4, 9}}, 0},
                          {{{4.3, 4}, {0.4, 9}}, 9},
                          {{{-5, -5}, {10, 10}}, 25}};
    for (const Case& c : cases) {
        const Canvas canvas;
        CGContextSetShouldAntialias(canvas, false);
        CGContextFillRect(canvas, c.rect);
        EXPECT_EQ(canvas.area(), c.pixels) << c.rect;
    }
    const Canvas line;
    CGContextSetShouldAntialias(line, false);
    CGContextMoveToPoint(line, 4, 16);
    CGContextAddLineToPoint(line, 20, 16);
    CGContextStrokePath(line);
    EXPECT_EQ(line.area(), 16);
}

} // namespace
