// Gradients against their formulas, computed in long double at the centre of every pixel.
#include "canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <random>

namespace {

using Real = long double;

struct Stop {
    double location;
    double r, g, b, a;
};

struct Circle {
    CGPoint center;
    double radius;
};

Owned<CGGradientRef> gradientOf(const std::vector<Stop>& stops) {
    std::vector<CGFloat> colors, locations;
    for (const Stop& stop : stops) {
        colors.insert(colors.end(), {stop.r, stop.g, stop.b, stop.a});
        locations.push_back(stop.location);
    }
    const Owned<CGColorSpaceRef> space(CGColorSpaceCreateDeviceRGB());
    return Owned<CGGradientRef>(
        CGGradientCreateWithColorComponents(space, colors.data(), locations.data(), stops.size()));
}

/// The colour at a position, of stops in order; the last of several stops at a location counts.
Rgba8 colorAt(const std::vector<Stop>& stops, Real position) {
    Stop color = stops.front();
    for (size_t i = 0; i < stops.size() && position >= 0 && stops[i].location <= position; ++i) {
        color = stops[i];
        if (i + 1 == stops.size() || stops[i + 1].location <= position) continue;
        const Stop& next = stops[i + 1];
        const Real t = (position - color.location) / (next.location - color.location);
        const auto mix = [t](double from, double to) {
            return std::clamp(static_cast<double>(from + (to - from) * t), 0.0, 1.0);
        };
        color = {0, mix(color.r, next.r), mix(color.g, next.g), mix(color.b, next.b), mix(color.a, next.a)};
        break;
    }
    const auto unit = [](double value) { return std::clamp(value, 0.0, 1.0); };
    const double alpha = 255 * unit(color.a);
    const auto component = [&](double value) { return static_cast<int>(unit(value) * alpha + 0.5); };
    return {component(color.r), component(color.g), component(color.b), static_cast<int>(alpha + 0.5)};
}

bool isDrawn(Real position, CGGradientDrawingOptions options) {
    return (position >= 0 || (options & kCGGradientDrawsBeforeStartLocation)) &&
           (position <= 1 || (options & kCGGradientDrawsAfterEndLocation));
}

std::optional<Real> linearPosition(CGPoint start, CGPoint end, CGPoint p, CGGradientDrawingOptions options) {
    const Real dx = Real(end.x) - start.x, dy = Real(end.y) - start.y;
    const Real position = ((p.x - Real(start.x)) * dx + (p.y - Real(start.y)) * dy) / (dx * dx + dy * dy);
    return isDrawn(position, options) ? std::optional(position) : std::nullopt;
}

/// The greatest position that is drawn and whose circle passes through a point.
std::optional<Real> radialPosition(const Circle& start, const Circle& end, CGPoint p,
                                   CGGradientDrawingOptions options) {
    const Real ax = Real(end.center.x) - start.center.x, ay = Real(end.center.y) - start.center.y;
    const Real growth = Real(end.radius) - start.radius, px = Real(p.x) - start.center.x;
    const Real py = Real(p.y) - start.center.y;
    const Real a = ax * ax + ay * ay - growth * growth, b = px * ax + py * ay + start.radius * growth;
    const Real c = px * px + py * py - Real(start.radius) * start.radius, discriminant = b * b - a * c;
    if (discriminant < 0) return {};
    const Real q = b + std::copysign(std::sqrt(discriminant), b);
    std::optional<Real> greatest;
    for (const Real position : {q / a, c / q})
        if (std::isfinite(position) && start.radius + position * growth >= 0 && isDrawn(position, options))
            greatest = std::max(greatest.value_or(position), position);
    return greatest;
}

/// Random gradients, each under a random matrix. A quarter of the colours lies beyond 0...1.
class RandomGradients {
public:
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    CGPoint point() { return {between(0, 64), between(0, 64)}; }

    std::vector<Stop> stops() {
        const double reach = below(4) ? 0 : 1;
        std::vector<Stop> stops(static_cast<size_t>(1 + below(6)));
        for (Stop& stop : stops) {
            const auto component = [&] { return between(-reach, 1 + reach); };
            stop = {below(6) ? between(0, 1) : below(2), component(), component(), component(), component()};
        }
        if (stops.size() > 2 && below(3) == 0) stops[1].location = stops[2].location;
        std::ranges::stable_sort(stops, {}, &Stop::location);
        return stops;
    }
    CGAffineTransform matrix() {
        CGAffineTransform m = CGAffineTransformMakeTranslation(32, 32);
        m = CGAffineTransformRotate(m, between(-3, 3));
        m = CGAffineTransformScale(m, between(0.4, 2), between(-2, -0.4));
        m = CGAffineTransformConcat({1, between(-0.8, 0.8), between(-0.8, 0.8), 1, 0, 0}, m);
        return CGAffineTransformTranslate(m, -32, -32);
    }

private:
    std::mt19937 m_random{11};
};

/// Expects each pixel to be within 1 of the colour at its centre, or, right at a jump, of those beside it.
void expectColors(const Canvas& canvas, const std::vector<Stop>& stops, const CGAffineTransform& matrix,
                  const std::function<std::optional<Real>(CGPoint)>& positionAt, const std::string& name) {
    const CGAffineTransform toUser = CGAffineTransformInvert(matrix);
    int worst = 0;
    for (size_t y = 0; y < canvas.height(); ++y)
        for (size_t x = 0; x < canvas.width(); ++x) {
            const CGPoint center = {static_cast<double>(x) + 0.5, static_cast<double>(y) + 0.5};
            const std::optional<Real> position = positionAt(CGPointApplyAffineTransform(center, toUser));
            const Rgba8 is = canvas.at(x, y);
            int least = 255;
            for (const Real slack : {0.0L, -1e-10L, 1e-10L}) {
                const Rgba8 wanted = position ? colorAt(stops, *position + slack) : Rgba8();
                least = std::min(least, std::max({std::abs(is.r - wanted.r), std::abs(is.g - wanted.g),
                                                  std::abs(is.b - wanted.b), std::abs(is.a - wanted.a)}));
            }
            worst = std::max(worst, least);
        }
    EXPECT_LE(worst, 1) << name;
}

TEST(Gradient, IsExactUnderEveryMatrix) {
    RandomGradients random;
    for (int i = 0; i < 150; ++i) {
        const std::vector<Stop> stops = random.stops();
        const auto gradient = gradientOf(stops);
        const CGAffineTransform matrix = random.matrix();
        const auto options = static_cast<CGGradientDrawingOptions>(random.below(4));
        const CGPoint start = random.point(), end = random.point();
        const Canvas linear(64, 64), radial(64, 64);
        CGContextConcatCTM(linear, matrix);
        CGContextDrawLinearGradient(linear, gradient, start, end, options);
        expectColors(
            linear, stops, matrix, [&](CGPoint p) { return linearPosition(start, end, p, options); },
            "linear " + std::to_string(i));

        const Circle from = {start, random.below(2) ? 0 : random.between(0, 20)};
        const Circle to = {random.below(3) ? end : start, random.between(0, 40)};
        CGContextConcatCTM(radial, matrix);
        CGContextDrawRadialGradient(radial, gradient, from.center, from.radius, to.center, to.radius,
                                    options);
        expectColors(
            radial, stops, matrix, [&](CGPoint p) { return radialPosition(from, to, p, options); },
            "radial " + std::to_string(i));
    }
}

// However long the gradient is, its jumps come at the pixel where they belong, and a short part is no
// coarser.
TEST(Gradient, IsExactHoweverLong) {
    constexpr double kLength = 20'000, kRampStart = 9'000, kRampEnd = 9'040, kJump = 14'567;
    const std::vector<Stop> stops = {{kRampStart / kLength, 0, 0, 0, 1},
                                     {kRampEnd / kLength, 1, 1, 1, 1},
                                     {kJump / kLength, 1, 1, 1, 1},
                                     {kJump / kLength, 1, 0, 0, 1}};
    const Canvas forth(20'000, 1), back(20'000, 1), around(15'000, 1);
    CGContextDrawLinearGradient(forth, gradientOf(stops), {0, 0}, {kLength, 0}, 0);
    CGContextDrawLinearGradient(back, gradientOf(stops), {kLength, 0}, {0, 0}, 0);
    CGContextDrawRadialGradient(around, gradientOf(stops), {0, 0.5}, 0, {0, 0.5}, kLength, 0);
    for (size_t x = 0; x < 20'000; ++x) {
        const double center = static_cast<double>(x) + 0.5;
        const double gray = std::clamp((center - kRampStart) / (kRampEnd - kRampStart), 0.0, 1.0);
        const int level = static_cast<int>(255 * gray + 0.5), other = center < kJump ? level : 0;
        for (const Rgba8& is :
             {forth.at(x, 0), back.at(19'999 - x, 0), around.at(std::min<size_t>(x, 14'999), 0)}) {
            if (x >= 15'000) continue;
            ASSERT_NEAR(is.r, level, 1) << x;
            ASSERT_NEAR(is.g, other, 1) << x;
        }
    }
}

// Ends that lie far outside, or stops that lie closer together than numbers can tell, leave colours in order.
TEST(Gradient, HasTheColoursOfItsStopsWhateverTheNumbers) {
    constexpr double kTiny = 5e-324;
    const Rgba8 red = {255, 0, 0, 255}, blue = {0, 0, 255, 255};
    const struct {
        const char* name;
        std::vector<Stop> stops;
        double start, end;
        Rgba8 left, right; // of the pixels 0 and 31
    } cases[] = {
        {"denormal distance", {{0, 1, 0, 0, 1}, {kTiny, 0, 0, 1, 1}}, 16, 32, red, blue},
        {"denormal distance at the start", {{0, 1, 0, 0, 1}, {kTiny, 0, 0, 1, 1}}, 0.5, 32, red, blue},
        {"huge components",
         {{0, 1e308, -1e308, 0, 1}, {1, -1e308, 0, 1e308, 1e300}},
         0,
         32,
         {255, 0, 255, 255},
         blue},
        {"huge length", {{0.5, 1, 0, 0, 1}, {0.5, 0, 0, 1, 1}}, -1e150 + 16, 1e150 + 16, blue, blue},
        {"tiny length", {{0.5, 1, 0, 0, 1}, {0.5, 0, 0, 1, 1}}, 16, 16 + 1e-13, red, blue},
    };
    for (const auto& c : cases) {
        const Canvas canvas(32, 1);
        CGContextDrawLinearGradient(canvas, gradientOf(c.stops), {c.start, 0}, {c.end, 0}, 3);
        EXPECT_EQ(canvas.at(0, 0), c.left) << c.name;
        EXPECT_EQ(canvas.at(31, 0), c.right) << c.name;
    }
}

} // namespace
