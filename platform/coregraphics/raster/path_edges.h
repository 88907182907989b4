#pragma once

#include "path/path_data.h"
#include "raster/coverage.h"
#include "stroke/stroke_space.h"

namespace ozcg {

/// Buffers for outlines, kept by a thread for its next strokes.
struct EdgeBuffers {
    StrokeBuffers<float> near;
    StrokeBuffers<double> far;
};

/// Adds the edges of a filled path; open subpaths are closed. `toPixel`, which only scales and moves, takes
/// path space to pixels relative to the accumulator's box. `bounds` holds all points of the path, in such
/// pixels.
void addFillEdges(CoverageAccumulator& coverage, const PathData& path, const CGAffineTransform& toPixel,
                  const Bounds& bounds);

/// Adds the edges of a stroke's outline, to be filled with the nonzero rule. The pixels of `space` are
/// relative to the accumulator's box; `bounds` holds all points of the path, in such pixels.
void addStrokeEdges(CoverageAccumulator& coverage, const PathData& path, const StrokeSpace& space,
                    const LineStyle& style, const Bounds& bounds, EdgeBuffers& buffers);

} // namespace ozcg
