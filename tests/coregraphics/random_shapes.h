// Random shapes, the same on every machine.
#pragma once

#include "owned.h"

#include <cstdint>
#include <random>

/// A source of random numbers.
class Dice {
public:
    explicit Dice(uint32_t seed) : m_engine(seed) {}
    /// A number between two.
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(m_engine()) / 4294967296.0);
    }
    /// One of 0, 1 ... n - 1.
    int oneOf(int n) { return static_cast<int>(m_engine() % static_cast<uint32_t>(n)); }
    CGPoint point(double low, double high) {
        const double x = between(low, high);
        return {x, between(low, high)};
    }

private:
    std::mt19937 m_engine;
};

/// How the random subpaths of a shape look.
struct ShapeKind {
    int subpaths; ///< At most.
    bool curves;
    bool closed; ///< All of them; else some are.
};

/// A path of random lines and curves between 3 and size - 3; controls lie up to 6 further out.
inline Owned<CGMutablePathRef> randomPath(Dice& dice, const ShapeKind& kind, double size) {
    Owned<CGMutablePathRef> path(CGPathCreateMutable());
    for (int i = 1 + dice.oneOf(kind.subpaths); i > 0; --i) {
        const CGPoint start = dice.point(3, size - 3);
        CGPathMoveToPoint(path, nullptr, start.x, start.y);
        for (int n = 2 + dice.oneOf(4); n > 0; --n) {
            const CGPoint a = dice.point(-3, size + 3), b = dice.point(-3, size + 3),
                          to = dice.point(3, size - 3);
            if (kind.curves && dice.oneOf(3) > 0)
                CGPathAddCurveToPoint(path, nullptr, a.x, a.y, b.x, b.y, to.x, to.y);
            else
                CGPathAddLineToPoint(path, nullptr, to.x, to.y);
        }
        if (kind.closed || dice.oneOf(2)) CGPathCloseSubpath(path);
    }
    return path;
}
