// What an outline exactly covers, computed slowly and in another way than by the library.
#pragma once

#include "owned.h"

#include <cstddef>
#include <vector>

/// A stroke's pen, in the path's space.
struct ExactPen {
    double width = 1;
    CGLineCap cap = kCGLineCapButt;
    CGLineJoin join = kCGLineJoinMiter;
    double miterLimit = 10;
    std::vector<CGFloat> dashes{}; ///< Alternating lengths of dash and gap, an even number of them; or none.
    double phase = 0;              ///< Not negative.
};

/// Collects closed contours and computes the coverage of square pictures' pixels.
class ExactCoverage {
public:
    explicit ExactCoverage(size_t size) : m_size(size) {}

    /// Adds a path to be filled; `m` takes it to pixels.
    void addFill(CGPathRef path, const CGAffineTransform& m);
    /// Adds a stroke as positively wound pieces: a rectangle for each of very many segments, and their joins
    /// and caps.
    void addStroke(CGPathRef path, const ExactPen& pen, const CGAffineTransform& m);

    /// The coverage of each pixel, 0...1, row by row. Pixels are cut into `lines` lines each, along which the
    /// length inside is exact.
    std::vector<double> pixels(bool evenOdd, size_t lines) const;

private:
    friend class PieceStroker;

    struct Edge {
        CGPoint from, to;
    };
    void addContour(const std::vector<CGPoint>& points);

    size_t m_size;
    std::vector<Edge> m_edges;
};
