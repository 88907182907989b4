#pragma once

#include "base/ref.h"
#include "paint/clip.h"
#include "stroke/stroke_space.h"
#include "values/color.h"

#include <CoreGraphics/CGContext.h>

#include <type_traits>

namespace ozcg {

/// The state that CGContextSaveGState saves.
struct GraphicsState {
    CGAffineTransform ctm; // from user space to pixels, y down
    Clip clip;
    Ref<CGColorSpace> fillSpace = Ref<CGColorSpace>::retaining(deviceRGB());
    Ref<CGColorSpace> strokeSpace = Ref<CGColorSpace>::retaining(deviceRGB());
    Rgba fillColor;
    Rgba strokeColor;
    LineStyle line;
    double alpha = 1;
    CGBlendMode blendMode = kCGBlendModeNormal;
    CGInterpolationQuality interpolation = kCGInterpolationDefault;
    bool antialias = true;
};

// SaveGState relies on this when memory is short.
static_assert(std::is_nothrow_copy_assignable_v<GraphicsState>);

} // namespace ozcg
