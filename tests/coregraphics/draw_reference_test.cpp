// Compares drawings with references: slow and simple implementations, or the same shape drawn by other calls.
#include "canvas.h"
#include "raster/vector_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

namespace {

constexpr double kSide = 32; // of a canvas, in pixels
using Points = std::vector<CGPoint>;

CGPoint onCubic(const CGPoint* p, double t) {
    const double u = 1 - t, k[] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
    return {k[0] * p[0].x + k[1] * p[1].x + k[2] * p[2].x + k[3] * p[3].x,
            k[0] * p[0].y + k[1] * p[1].y + k[2] * p[2].y + k[3] * p[3].y};
}

Points sampled(const CGPoint* cubic, int count) {
    Points points;
    for (int i = 0; i <= count; ++i) points.push_back(onCubic(cubic, double(i) / count));
    return points;
}

// A round pen covers every point within half its width of the path.
TEST(Reference, RoundStrokesCoverAllNearbyPoints) {
    const struct {
        const char* name;
        bool isCurve;
        Points p;
    } paths[] = {
        {"arch", true, {{6, 24}, {6, 4}, {26, 4}, {26, 24}}},
        {"cusp", true, {{6, 26}, {26, 6}, {6, 6}, {26, 26}}},
        {"loop", true, {{8, 26}, {38, 0}, {-6, 0}, {24, 26}}},
        {"nearly a cusp", true, {{6, 26}, {26.01, 6}, {6, 6}, {26, 26}}},
        {"back and forth on a line", true, {{8, 16}, {40, 16}, {-8, 16}, {24, 16}}},
        {"there and back", true, {{8, 16}, {32, 16}, {32, 16}, {8, 16}}},
        {"controls on the ends", true, {{8, 8}, {8, 8}, {24, 24}, {24, 24}}},
        {"point", true, {{16, 16}, {16, 16}, {16, 16}, {16, 16}}},
        {"corner", false, {{6, 6}, {24, 8}, {9, 24}}},
        {"short side first", false, {{6, 16}, {7, 16}, {7, 27}, {24, 27}}},
        {"short side between", false, {{6, 6}, {20, 6}, {20.3, 6.3}, {20.3, 26}}},
        {"short sides that turn back", false, {{6, 12}, {20, 12}, {21, 13}, {20, 14}, {6, 14}}},
        {"step", false, {{6, 16}, {16, 16}, {16, 17}, {26, 17}}},
        {"spiral", false, {{6, 6}, {26, 6}, {26, 26}, {10, 26}, {10, 12}, {12, 12}, {12, 13}}},
    };
    for (const auto& path : paths) {
        Points spine;
        for (size_t i = 1; i < path.p.size(); ++i) {
            const CGPoint a = path.p[i - 1], b = path.p[i];
            const CGPoint line[] = {a, a, b, b};
            const Points side = path.isCurve ? sampled(path.p.data(), 400) : sampled(line, 200);
            spine.insert(spine.end(), side.begin(), side.end());
            if (path.isCurve) break;
        }
        double area = 0;
        // Side of the sampling cells, whose coverage follows from the distance of their centre to the edge.
        constexpr double kCell = 0.5;
        for (double y = kCell / 2; y < kSide; y += kCell)
            for (double x = kCell / 2; x < kSide; x += kCell) {
                double nearest = kSide;
                for (const CGPoint p : spine) nearest = std::min(nearest, std::hypot(p.x - x, p.y - y));
                area += std::clamp(0.5 + (2 - nearest) / kCell, 0.0, 1.0) * kCell * kCell;
            }
        const Canvas canvas;
        CGContextSetLineWidth(canvas, 4);
        CGContextSetLineCap(canvas, kCGLineCapRound);
        CGContextSetLineJoin(canvas, kCGLineJoinRound);
        const Points& p = path.p;
        if (path.isCurve) {
            CGContextMoveToPoint(canvas, p[0].x, p[0].y);
            CGContextAddCurveToPoint(canvas, p[1].x, p[1].y, p[2].x, p[2].y, p[3].x, p[3].y);
        } else {
            CGContextAddLines(canvas, p.data(), p.size());
        }
        CGContextStrokePath(canvas);
        EXPECT_NEAR(canvas.area(), area, (path.isCurve ? 0.02 : 0.004) * area + 0.35) << path.name;
    }
}

TEST(Reference, PenIsACircleInUserSpace) {
    const CGAffineTransform matrices[] = {{1, 0, 1.5, 1, 16, 16},
                                          {1.2, 0.9, 0.9, 1.2, 16, 16},
                                          {3, 0, 0, 0.5, 16, 16},
                                          {0, 2, -1, 0, 16, 16},
                                          {-1, 0.5, 0.5, 2, 16, 16}};
    for (const CGAffineTransform& matrix : matrices) {
        Canvas stroked, filled;
        CGContextConcatCTM(stroked, matrix);
        CGContextSetLineCap(stroked, kCGLineCapRound);
        CGContextSetLineJoin(stroked, kCGLineJoinRound); // miters reach farther than the pen
        CGContextSetLineWidth(stroked, 8);
        CGContextMoveToPoint(stroked, 0, 0);
        CGContextAddLineToPoint(stroked, 0, 0);
        CGContextStrokePath(stroked);
        CGContextConcatCTM(filled, matrix);
        CGContextFillEllipseInRect(filled, CGRectMake(-4, -4, 8, 8));
        int worst = 0;
        for (size_t i = 0; i < 32 * 32; ++i)
            worst = std::max(worst, std::abs(filled.at(i % 32, i / 32).a - stroked.at(i % 32, i / 32).a));
        EXPECT_LE(worst, 20) << matrix;
        EXPECT_NEAR(stroked.area(), filled.area(), 0.02 * filled.area()) << matrix;
    }
}

/// Draws with every kind of paint and through every compositing path. Expects the initial state.
void drawEverything(CGContextRef c, double width, double height) {
    const CGRect all = CGRectMake(0, 0, width, height);
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    const CGFloat colors[] = {0.9, 0.1, 0.3, 1, 0, 0.6, 1, 0.2};
    const Owned<CGGradientRef> gradient(CGGradientCreateWithColorComponents(space, colors, nullptr, 2));
    CGContextStrokeEllipseInRect(c, CGRectInset(all, 2.3, 1.6));
    CGContextSaveGState(c);
    for (const double alpha : {1.0, 0.6}) {
        CGContextSetRGBFillColor(c, 0.9, 0.4, 0.1, alpha);
        CGContextSetRGBStrokeColor(c, 0.1, 0.8, 0.3, alpha);
        for (int i = 0; i < 7; ++i) {
            const double angle = 18.85 * i / 7;
            const CGPoint p = {width * (0.5 + 0.49 * std::cos(angle)),
                               height * (0.5 + 0.47 * std::sin(angle))};
            i == 0 ? CGContextMoveToPoint(c, p.x, p.y) : CGContextAddLineToPoint(c, p.x, p.y);
        }
        CGContextDrawPath(c, alpha < 1 ? kCGPathFillStroke : kCGPathEOFillStroke);
    }
    CGContextAddEllipseInRect(c, CGRectInset(all, 1.25, height / 4));
    CGContextClip(c);
    CGContextSetAlpha(c, 0.7);
    CGContextDrawRadialGradient(c, gradient, {width / 3, height / 2}, 1, {width / 2, height / 2}, height / 2,
                                3);
    CGContextRestoreGState(c);
    CGContextClipToRect(c, CGRectMake(0, height / 3 + 0.4, width, height));
    CGContextDrawLinearGradient(c, gradient, {width / 4, 0}, {width / 2, height}, 2);
    const Owned<CGImageRef> image(CGBitmapContextCreateImage(c));
    CGContextDrawImage(c, CGRectMake(width / 2, 1, width / 3, height / 2), image);
}

int greatestDifference(const Canvas& a, const Canvas& b) {
    int greatest = 0;
    for (size_t y = 0; y < a.height(); ++y)
        for (size_t x = 0; x < a.width(); ++x) {
            const Rgba8 p = a.at(x, y), q = b.at(x, y);
            greatest = std::max({greatest, std::abs(p.r - q.r), std::abs(p.g - q.g), std::abs(p.b - q.b),
                                 std::abs(p.a - q.a)});
        }
    return greatest;
}

TEST(Reference, EveryInstructionSetAndByteOrderDrawsTheSame) {
    constexpr CGBitmapInfo first{kCGImageAlphaPremultipliedFirst}, last{kCGImageAlphaPremultipliedLast};
    for (const size_t width : {1u, 3u, 16u, 61u, 130u}) {
        const Canvas best(width, 47);
        drawEverything(best, static_cast<double>(width), 47);
        EXPECT_GT(best.area(), static_cast<double>(width) * 10);
        EXPECT_TRUE(best.isPremultiplied());
        for (const ozcg::VectorCode* const code : ozcg::vectorCodes()) {
            ozcg::chooseVectorCode(code);
            for (const CGBitmapInfo info : {last, first, first | CGBitmapInfo{kCGBitmapByteOrder32Little}}) {
                const Canvas canvas(width, 47, info);
                drawEverything(canvas, static_cast<double>(width), 47);
                EXPECT_EQ(greatestDifference(canvas, best), 0)
                    << code->instructionSet << ' ' << width << ' ' << info;
            }
            ozcg::chooseVectorCode(nullptr);
        }
    }
}

TEST(Reference, RestoresTheWholeState) {
    const Canvas plain, restored;
    drawEverything(plain, kSide, kSide);
    CGContextRef c = restored;
    const CGFloat dashes[] = {1, 2};
    CGContextSaveGState(c);
    CGContextRotateCTM(c, 1);
    CGContextClip(c); // The path is empty, so nothing can be drawn.
    CGContextSetLineWidth(c, 9);
    CGContextSetLineCap(c, kCGLineCapRound);
    CGContextSetLineJoin(c, kCGLineJoinBevel);
    CGContextSetMiterLimit(c, 1);
    CGContextSetLineDash(c, 1, dashes, 2);
    CGContextSetAlpha(c, 0.1);
    CGContextSetBlendMode(c, kCGBlendModeXOR);
    CGContextSetShouldAntialias(c, false);
    CGContextSetInterpolationQuality(c, kCGInterpolationNone);
    CGContextSetGrayFillColor(c, 1, 0);
    CGContextSetGrayStrokeColor(c, 1, 0);
    CGContextRestoreGState(c);
    drawEverything(c, kSide, kSide);
    EXPECT_EQ(greatestDifference(plain, restored), 0);
}

TEST(Reference, FillStrokeStrokesOverTheFill) {
    for (const CGPathDrawingMode mode : {kCGPathFillStroke, kCGPathEOFillStroke}) {
        const Canvas canvas;
        CGContextSetRGBFillColor(canvas, 1, 0, 0, 1);
        CGContextSetRGBStrokeColor(canvas, 0, 0, 1, 0.6);
        CGContextSetLineWidth(canvas, 4);
        CGContextAddRect(canvas, CGRectMake(8, 8, 16, 16));
        CGContextDrawPath(canvas, mode);
        EXPECT_EQ(canvas.at(7, 16), (Rgba8{0, 0, 153, 153}));
        EXPECT_EQ(canvas.at(8, 16), (Rgba8{102, 0, 153, 255}));
        EXPECT_EQ(canvas.at(16, 16), (Rgba8{255, 0, 0, 255}));
    }
}

/// Blends one component of backdrop and source, not premultiplied.
using Blend = double (*)(double b, double s);

double hardLight(double b, double s) { return s <= 0.5 ? 2 * b * s : 1 - 2 * (1 - b) * (1 - s); }

double softLight(double b, double s) {
    const double d = b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
    return s <= 0.5 ? b - (1 - 2 * s) * b * (1 - b) : b + (2 * s - 1) * (d - b);
}

const std::map<CGBlendMode, Blend> kBlends = {
    {kCGBlendModeNormal, [](double, double s) { return s; }},
    {kCGBlendModeMultiply, [](double b, double s) { return b * s; }},
    {kCGBlendModeScreen, [](double b, double s) { return 1 - (1 - b) * (1 - s); }},
    {kCGBlendModeOverlay, [](double b, double s) { return hardLight(s, b); }},
    {kCGBlendModeDarken, [](double b, double s) { return std::min(b, s); }},
    {kCGBlendModeLighten, [](double b, double s) { return std::max(b, s); }},
    {kCGBlendModeColorDodge,
     [](double b, double s) { return b == 0   ? 0
                                     : s == 1 ? 1
                                              : std::min(1.0, b / (1 - s)); }},
    {kCGBlendModeColorBurn,
     [](double b, double s) { return b == 1   ? 1
                                     : s == 0 ? 0
                                              : 1 - std::min(1.0, (1 - b) / s); }},
    {kCGBlendModeSoftLight, softLight},
    {kCGBlendModeHardLight, hardLight},
    {kCGBlendModeDifference, [](double b, double s) { return std::abs(b - s); }},
    {kCGBlendModeExclusion, [](double b, double s) { return b + s - 2 * b * s; }},
};

/// A Porter-Duff operator: the fractions of source and backdrop that remain, as functions of their alphas.
struct Operator {
    CGBlendMode mode;
    double (*source)(double sa, double ba);
    double (*backdrop)(double sa, double ba);
};

double none(double, double) { return 0; }
double all(double, double) { return 1; }
double inSource(double sa, double) { return sa; }
double outOfSource(double sa, double) { return 1 - sa; }
double inBackdrop(double, double ba) { return ba; }
double outOfBackdrop(double, double ba) { return 1 - ba; }

const Operator kOperators[] = {
    {kCGBlendModeClear, none, none},
    {kCGBlendModeCopy, all, none},
    {kCGBlendModeSourceIn, inBackdrop, none},
    {kCGBlendModeSourceOut, outOfBackdrop, none},
    {kCGBlendModeSourceAtop, inBackdrop, outOfSource},
    {kCGBlendModeDestinationOver, outOfBackdrop, all},
    {kCGBlendModeDestinationIn, none, inSource},
    {kCGBlendModeDestinationOut, none, outOfSource},
    {kCGBlendModeDestinationAtop, outOfBackdrop, inSource},
    {kCGBlendModeXOR, outOfBackdrop, outOfSource},
    {kCGBlendModePlusLighter, all, all},
};

struct Gray {
    double level, alpha;
};

/// Fills a pixel with `backdrop`, then the fraction `height` of it with `source` in the given mode.
Rgba8 drawn(Gray backdrop, Gray source, CGBlendMode mode, double height = 1) {
    const Canvas canvas(1, 1);
    CGContextSetGrayFillColor(canvas, backdrop.level, backdrop.alpha);
    CGContextFillRect(canvas, CGRectMake(0, 0, 1, 1));
    CGContextSetBlendMode(canvas, mode);
    CGContextSetGrayFillColor(canvas, source.level, source.alpha);
    CGContextFillRect(canvas, CGRectMake(0, 0, 1, height));
    return canvas.at(0, 0);
}

TEST(Reference, BlendModesFollowTheirFormulas) {
    std::vector<Gray> colors;
    for (const double level : {0.0, 0.2, 0.5, 0.8, 1.0})
        for (const double alpha : {0.0, 0.3, 0.7, 1.0}) colors.push_back({level, alpha});
    for (const Gray backdrop : colors)
        for (const Gray source : colors) {
            // The formulas start from what the pixels hold, which is rounded and premultiplied.
            const Rgba8 under = drawn(backdrop, {}, kCGBlendModeNormal),
                        over = drawn(source, {}, kCGBlendModeNormal);
            const double ba = under.a / 255.0, sa = over.a / 255.0, bc = under.r / 255.0, sc = over.r / 255.0;
            const auto check = [&](CGBlendMode mode, double alpha, double level) {
                for (const double height : {1.0, 0.4}) { // full and partial coverage
                    const Rgba8 is = drawn(backdrop, source, mode, height);
                    const double a = 255 * (std::min(1.0, alpha) * height + ba * (1 - height));
                    const double c = 255 * (std::min(1.0, level) * height + bc * (1 - height));
                    EXPECT_NEAR(is.a, a, 1.25)
                        << mode << ": " << under << " and " << over << " at " << height;
                    EXPECT_NEAR(is.r, c, 1.25)
                        << mode << ": " << under << " and " << over << " at " << height;
                }
            };
            for (const auto& [mode, blend] : kBlends) {
                const double mixed = ba > 0 && sa > 0 ? blend(bc / ba, sc / sa) : 0;
                check(mode, sa + ba - sa * ba, sc * (1 - ba) + bc * (1 - sa) + sa * ba * mixed);
            }
            for (const Operator& o : kOperators) {
                const double s = o.source(sa, ba), b = o.backdrop(sa, ba);
                check(o.mode, sa * s + ba * b, sc * s + bc * b);
            }
            const double a = std::min(1.0, sa + ba);
            check(kCGBlendModePlusDarker, a, std::max(0.0, a - ((ba - bc) + (sa - sc))));
        }
}

// The modes hue, saturation and colour keep the backdrop's luminosity. The mode luminosity takes the
// source's.
TEST(Reference, BlendModesOfColourKeepLuminosity) {
    const auto luminosity = [](const Rgba8& p) { return 0.3 * p.r + 0.59 * p.g + 0.11 * p.b; };
    const Rgba8 colors[] = {
        {255, 0, 0, 255}, {20, 200, 90, 255}, {240, 250, 10, 255}, {100, 100, 100, 255}, {5, 0, 60, 255}};
    for (const Rgba8& under : colors)
        for (const Rgba8& over : colors)
            for (const CGBlendMode mode :
                 {kCGBlendModeHue, kCGBlendModeSaturation, kCGBlendModeColor, kCGBlendModeLuminosity}) {
                const Canvas canvas(1, 1);
                CGContextSetRGBFillColor(canvas, under.r / 255.0, under.g / 255.0, under.b / 255.0, 1);
                CGContextFillRect(canvas, CGRectMake(0, 0, 1, 1));
                CGContextSetBlendMode(canvas, mode);
                CGContextSetRGBFillColor(canvas, over.r / 255.0, over.g / 255.0, over.b / 255.0, 1);
                CGContextFillRect(canvas, CGRectMake(0, 0, 1, 1));
                const Rgba8 is = canvas.at(0, 0);
                const double wanted = luminosity(mode == kCGBlendModeLuminosity ? over : under);
                EXPECT_NEAR(luminosity(is), wanted, 1) << mode << ": " << under << " and " << over;
                // A gray source makes the result gray, except in the mode luminosity.
                const bool isGray = is.r == is.g && is.g == is.b,
                           wasGray = over.r == over.g && over.g == over.b;
                EXPECT_TRUE(isGray || !wasGray || mode == kCGBlendModeLuminosity) << mode << ": " << is;
            }
}

// Rounding takes the luminosity of translucent grays slightly below black or above white; the result must be
// clamped.
TEST(Reference, BlendModeColourKeepsBlackAndWhite) {
    for (const double under : {0.0, 1.0})
        for (int alpha = 1; alpha < 255; ++alpha) {
            const Canvas canvas(1, 1);
            CGContextSetGrayFillColor(canvas, under, 1);
            CGContextFillRect(canvas, CGRectMake(0, 0, 1, 1));
            CGContextSetBlendMode(canvas, kCGBlendModeColor);
            CGContextSetGrayFillColor(canvas, 0.12, alpha / 255.0);
            CGContextFillRect(canvas, CGRectMake(0, 0, 1, 1));
            const auto wanted = static_cast<uint8_t>(255 * under);
            ASSERT_EQ(canvas.at(0, 0), (Rgba8{wanted, wanted, wanted, 255})) << alpha;
        }
}

} // namespace
