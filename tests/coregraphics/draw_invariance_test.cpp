// Drawings that have to look the same, or moved or mirrored, however they are said.
#include "canvas.h"
#include "random_shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

constexpr size_t kSize = 48;
constexpr uint32_t kScenes = 40;

/// The alphas of a picture, row by row.
using Picture = std::vector<int>;

Picture drawn(const std::function<void(CGContextRef)>& draw) {
    const Canvas canvas(kSize, kSize);
    draw(canvas);
    Picture picture;
    for (size_t i = 0; i < kSize * kSize; ++i) picture.push_back(canvas.at(i % kSize, i / kSize).a);
    return picture;
}

Picture filled(CGPathRef path, bool evenOdd = false) {
    return drawn([&](CGContextRef c) {
        CGContextAddPath(c, path);
        CGContextDrawPath(c, evenOdd ? kCGPathEOFill : kCGPathFill);
    });
}

// The picture whose pixel (x, y) is that of `picture` at from(x, y).
template <class From>
Picture rearranged(const Picture& picture, From from) {
    Picture result;
    for (size_t i = 0; i < picture.size(); ++i) {
        const auto [x, y] = from(i % kSize, i / kSize);
        result.push_back(picture[y * kSize + x]);
    }
    return result;
}

// `outliers`: how many pixels may differ by more than the tolerance, because the sums in one picture, but not
// in the other, show that windings meet there.
void expectSame(const Picture& found, const Picture& expected, int tolerance, uint32_t seed,
                int outliers = 0) {
    int count = 0;
    size_t at = 0;
    for (size_t i = 0; i < found.size(); ++i) {
        if (std::abs(found[i] - expected[i]) <= tolerance) continue;
        ++count;
        at = i;
    }
    EXPECT_LE(count, outliers) << "seed " << seed << ", pixel " << at % kSize << ' ' << at / kSize << ": "
                               << found[at] << " instead of " << expected[at];
}

Owned<CGMutablePathRef> shape(uint32_t seed) {
    Dice dice(seed);
    return randomPath(dice, {3, true, true}, 32);
}

Owned<CGPathRef> transformed(CGPathRef path, const CGAffineTransform& m) {
    return Owned<CGPathRef>(CGPathCreateCopyByTransformingPath(path, &m));
}

TEST(Invariance, ByWholePixels) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto path = shape(seed);
        const CGAffineTransform move = CGAffineTransformMakeTranslation(9, 5);
        const Picture expected = rearranged(filled(path), [](size_t x, size_t y) {
            return std::pair((x + kSize - 9) % kSize, (y + kSize - 5) % kSize);
        });
        expectSame(filled(transformed(path, move)), expected, 1, seed);
    }
}

TEST(Invariance, InAMirror) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto path = shape(seed);
        const CGAffineTransform sideways = {-1, 0, 0, 1, kSize, 0}, upright = {1, 0, 0, -1, 0, kSize},
                                across = {0, 1, 1, 0, 0, 0};
        const Picture picture = filled(path, seed % 2);
        expectSame(filled(transformed(path, sideways), seed % 2),
                   rearranged(picture, [](size_t x, size_t y) { return std::pair(kSize - 1 - x, y); }), 2,
                   seed);
        expectSame(filled(transformed(path, upright), seed % 2),
                   rearranged(picture, [](size_t x, size_t y) { return std::pair(x, kSize - 1 - y); }), 2,
                   seed);
        const auto swapped = [](size_t x, size_t y) { return std::pair(y, x); };
        expectSame(filled(transformed(path, across), seed % 2), rearranged(picture, swapped), 2, seed, 3);
    }
}

CGPoint between(CGPoint a, CGPoint b, double t) { return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t}; }

// Copies a path with each line and curve cut in two.
Owned<CGMutablePathRef> split(CGPathRef path, double t) {
    struct Info {
        CGMutablePathRef path;
        double t;
    };
    Owned<CGMutablePathRef> result(CGPathCreateMutable());
    Info info = {result, t};
    CGPathApply(path, &info, [](void* to, const CGPathElement* e) {
        const auto& [out, at] = *static_cast<Info*>(to);
        const CGPoint* const p = e->points;
        if (e->type == kCGPathElementMoveToPoint) CGPathMoveToPoint(out, nullptr, p[0].x, p[0].y);
        if (e->type == kCGPathElementCloseSubpath) CGPathCloseSubpath(out);
        const CGPoint start = CGPathGetCurrentPoint(out);
        if (e->type == kCGPathElementAddLineToPoint) {
            const CGPoint middle = between(start, p[0], at);
            CGPathAddLineToPoint(out, nullptr, middle.x, middle.y);
            CGPathAddLineToPoint(out, nullptr, p[0].x, p[0].y);
        }
        if (e->type == kCGPathElementAddCurveToPoint) {
            const CGPoint a = between(start, p[0], at), b = between(p[0], p[1], at),
                          c = between(p[1], p[2], at);
            const CGPoint ab = between(a, b, at), bc = between(b, c, at), m = between(ab, bc, at);
            CGPathAddCurveToPoint(out, nullptr, a.x, a.y, ab.x, ab.y, m.x, m.y);
            CGPathAddCurveToPoint(out, nullptr, bc.x, bc.y, c.x, c.y, p[2].x, p[2].y);
        }
    });
    return result;
}

TEST(Invariance, WhereSegmentsAreSplit) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto path = shape(seed);
        // Chords may differ by 0.05 pixels.
        expectSame(filled(split(path, 0.3)), filled(path), 13, seed);
    }
}

// Copies a path with all its subpaths, which are closed, run backwards.
Owned<CGMutablePathRef> reversed(CGPathRef path) {
    struct Subpath {
        std::vector<CGPoint> points;
        std::vector<bool> curves;
    };
    std::vector<Subpath> subpaths;
    CGPathApply(path, &subpaths, [](void* info, const CGPathElement* e) {
        auto& all = *static_cast<std::vector<Subpath>*>(info);
        if (e->type == kCGPathElementMoveToPoint) all.push_back({{e->points[0]}, {}});
        if (e->type != kCGPathElementAddLineToPoint && e->type != kCGPathElementAddCurveToPoint) return;
        const bool curve = e->type == kCGPathElementAddCurveToPoint;
        all.back().points.insert(all.back().points.end(), e->points, e->points + (curve ? 3 : 1));
        all.back().curves.push_back(curve);
    });
    Owned<CGMutablePathRef> result(CGPathCreateMutable());
    for (const Subpath& s : subpaths) {
        auto p = s.points.rbegin();
        CGPathMoveToPoint(result, nullptr, p->x, p->y);
        for (auto curve = s.curves.rbegin(); curve != s.curves.rend(); ++curve) {
            if (*curve)
                CGPathAddCurveToPoint(result, nullptr, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
            else
                CGPathAddLineToPoint(result, nullptr, p[1].x, p[1].y);
            p += *curve ? 3 : 1;
        }
        CGPathCloseSubpath(result);
    }
    return result;
}

TEST(Invariance, InEitherDirection) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto path = shape(seed);
        expectSame(filled(reversed(path)), filled(path), 2, seed);
    }
}

TEST(Invariance, AsOnePathOrTwo) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto a = transformed(shape(seed), {0.6, 0, 0, 1, 0, 0});
        const auto b = transformed(shape(seed + kScenes), {0.6, 0, 0, 1, 26, 0}); // does not reach a
        const auto draw = [&](bool together) {
            return drawn([&](CGContextRef c) {
                CGContextAddPath(c, a);
                if (!together) CGContextFillPath(c);
                CGContextAddPath(c, b);
                CGContextFillPath(c);
            });
        };
        expectSame(draw(true), draw(false), 1, seed, 6);
    }
}

TEST(Invariance, AsClipOrFill) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto path = shape(seed);
        const bool evenOdd = seed % 2;
        const Picture clipped = drawn([&](CGContextRef c) {
            CGContextAddPath(c, path);
            if (evenOdd)
                CGContextEOClip(c);
            else
                CGContextClip(c);
            CGContextFillRect(c, CGRectMake(-1, -1, kSize + 2, kSize + 2));
        });
        expectSame(clipped, filled(path, evenOdd), 1, seed);
    }
}

TEST(Invariance, AsStrokeOrItsOutline) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        Dice dice(seed);
        const auto path = randomPath(dice, {2, true, false}, 40);
        const double width = dice.between(0.5, 7), limit = dice.between(1, 10);
        const auto cap = static_cast<CGLineCap>(dice.oneOf(3));
        const auto join = static_cast<CGLineJoin>(dice.oneOf(3));
        const Owned<CGPathRef> outline(
            CGPathCreateCopyByStrokingPath(path, nullptr, width, cap, join, limit));
        const Picture stroked = drawn([&](CGContextRef c) {
            CGContextSetLineWidth(c, width);
            CGContextSetLineCap(c, cap);
            CGContextSetLineJoin(c, join);
            CGContextSetMiterLimit(c, limit);
            CGContextAddPath(c, path);
            CGContextStrokePath(c);
        });
        expectSame(filled(outline), stroked, 16, seed, 3);
    }
}

TEST(Invariance, InAScaledSpace) {
    for (uint32_t seed = 1; seed <= kScenes; ++seed) {
        const auto path = shape(seed);
        const double scale = 0.25 + 0.03 * seed;
        const auto draw = [&](CGContextRef c, CGPathRef shown, double width) {
            CGContextAddPath(c, shown);
            CGContextSetLineWidth(c, width);
            CGContextDrawPath(c, seed % 2 ? kCGPathStroke : kCGPathFill);
        };
        const Picture byMatrix = drawn([&](CGContextRef c) {
            CGContextScaleCTM(c, scale, scale);
            draw(c, path, 2.5);
        });
        const Picture byPoints = drawn([&](CGContextRef c) {
            draw(c, transformed(path, CGAffineTransformMakeScale(scale, scale)), 2.5 * scale);
        });
        expectSame(byMatrix, byPoints, 1, seed);
    }
}

} // namespace
