#pragma once

#include "path/path_data.h"
#include "raster/coverage.h"
#include "stroke/stroke_space.h"

namespace ozcg {

/// Buffers that a thread keeps, so that after its first drawings none is allocated again.
struct EdgeBuffers {
    StrokeBuffers<float> near;
    StrokeBuffers<double> far;
};

/// Adds the edges of a filled path, subpaths closed. `toPixel` only moves and mirrors: it takes path space to
/// pixels relative to the accumulator's box. `bounds` holds all points of the path, in pixels relative to the
/// box.
void addFillEdges(CoverageAccumulator& coverage, const PathData& path, const CGAffineTransform& toPixel,
                  const Bounds& bounds);

/// Adds the edges of a stroke's outline, to be filled with the non-zero rule. `space` was made with a
/// `toPixel` that ends in pixels relative to the accumulator's box; `bounds` holds all points of the path
/// there.
void addStrokeEdges(CoverageAccumulator& coverage, const PathData& path, const StrokeSpace& space,
                    const LineStyle& style, const Bounds& bounds, EdgeBuffers& buffers);

} // namespace ozcg
