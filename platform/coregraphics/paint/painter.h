// Painting: from outlines by way of coverage, clip, colour and blending to pixels.
#pragma once

#include "image/pixel_order.h"
#include "paint/clip.h"
#include "paint/paint_source.h"
#include "path/path_data.h"
#include "stroke/stroke_space.h"
#include "values/color.h"

#include <CoreGraphics/CGContext.h>

namespace ozcg {

/// 8-bit premultiplied pixels to draw on; row 0 is the top.
struct Surface {
    uint8_t* bytes = nullptr;
    size_t bytesPerRow = 0;
    int width = 0;
    int height = 0;
    PixelOrder order = PixelOrder::argb;
    bool isOpaque = false; // the byte for alpha is not used

    uint8_t* pixel(int x, int y) const {
        return bytes + static_cast<size_t>(y) * bytesPerRow + 4 * static_cast<size_t>(x);
    }
};

/// How colours are combined with the surface.
struct Compositing {
    const Clip& clip;
    double alpha = 1; // 0...1
    CGBlendMode mode = kCGBlendModeNormal;
    bool antialias = true;
};

/// The pixels of the clip's box that filling a path, which is in pixels, may touch.
IntRect pixelsInside(const Clip& clip, const PathData& path);

// Paths are in pixels. All of these throw std::bad_alloc and then leave the surface partly painted.

void fillPath(const Surface& surface, const Compositing& compositing, const PathData& path, FillRule rule,
              const Rgba& color);
void fillPath(const Surface& surface, const Compositing& compositing, const PathData& path, FillRule rule,
              PaintSource& source);
/// `ctm` has taken the path from user space, where the pen is round, to pixels.
void strokePath(const Surface& surface, const Compositing& compositing, const PathData& path,
                const LineStyle& style, const CGAffineTransform& ctm, const Rgba& color);
/// Paints everything inside the clip.
void paintClip(const Surface& surface, const Compositing& compositing, PaintSource& source);
/// Intersects a clip with a filled path.
void clipToPath(Clip& clip, const PathData& path, FillRule rule, bool antialias);

/// Frees the memory that the calling thread keeps for painting, and for masks of clips.
void trimPaintMemory() noexcept;

} // namespace ozcg
