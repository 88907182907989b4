#pragma once

#include "paint/gradient.h"
#include "paint/paint_source.h"

#include <CoreGraphics/CGAffineTransform.h>

#include <optional>

namespace ozcg {

/// The colours of a linear gradient.
class LinearGradientSource final : public PaintSource {
public:
    /// `toPixel` takes the points to pixels. Empty if the points coincide, the matrix is singular, or a
    /// number is not finite.
    static std::optional<LinearGradientSource> make(const CGGradient& gradient, CGPoint start, CGPoint end,
                                                    CGGradientDrawingOptions options,
                                                    const CGAffineTransform& toPixel);
    void fetch(int x, int y, size_t n, uint32_t* rgba) override;

private:
    LinearGradientSource(const CGGradient& gradient, CGGradientDrawingOptions options)
        : m_gradient(gradient), m_options(options) {}

    const CGGradient& m_gradient;
    CGGradientDrawingOptions m_options;
    // The position along the gradient (0...1): at the origin, and its change per pixel.
    double m_positionAtOrigin = 0, m_positionPerX = 0, m_positionPerY = 0;
};

/// The colours of a gradient between two circles. Of the circles through a pixel whose radius is not
/// negative, the one with the greatest position gives the colour.
class RadialGradientSource final : public PaintSource {
public:
    struct Circle {
        CGPoint center;
        double radius;
    };

    /// As for the linear gradient. Empty if the circles coincide, both radii are 0, or one is negative.
    static std::optional<RadialGradientSource> make(const CGGradient& gradient, const Circle& start,
                                                    const Circle& end, CGGradientDrawingOptions options,
                                                    const CGAffineTransform& toPixel);
    void fetch(int x, int y, size_t n, uint32_t* rgba) override;

private:
    RadialGradientSource(const CGGradient& gradient, CGGradientDrawingOptions options)
        : m_gradient(gradient), m_options(options) {}
    double positionAt(CGPoint fromStart) const;
    bool draws(double position) const;

    const CGGradient& m_gradient;
    CGGradientDrawingOptions m_options;
    CGAffineTransform m_toStart{}; // from pixels to gradient space, the start circle's centre at the origin
    CGPoint m_axis{};              // from centre to centre
    double m_startRadius = 0, m_growth = 0; // the radius at a position is m_startRadius + position * m_growth
    double m_a = 0;                         // of the quadratic equation for the position
    double m_inverseA = 0;                  // 0: the equation is linear
    double m_least = 0, m_greatest = 1;     // of the positions that are drawn
};

} // namespace ozcg
