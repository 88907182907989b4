// Immutable gradients: colours at locations 0...1.
#pragma once

#include <CoreFoundation/CFArray.h>
#include <CoreGraphics/CGColorSpace.h>

typedef struct CGGradient* CGGradientRef;

/// Whether the first and last colours extend beyond the ends of the gradient.
CF_OPTIONS(uint32_t, CGGradientDrawingOptions){kCGGradientDrawsBeforeStartLocation = (1 << 0),
                                               kCGGradientDrawsAfterEndLocation = (1 << 1)};

CF_EXTERN_C_BEGIN

/// Type id of gradients.
CFTypeID CGGradientGetTypeID(void);
/// A gradient of `count` colours, each given by its components in `space` followed by alpha; values are kept
/// as given and clamped when painting. Locations are clamped to 0...1 (NaN to 0) and sorted stably; if they
/// are NULL, the colours are spaced evenly. Colours are interpolated without premultiplication. Returns NULL
/// if `space` or `components` is NULL or `count` is 0, and when memory is short. The caller owns the result.
CGGradientRef CGGradientCreateWithColorComponents(CGColorSpaceRef space, const CGFloat* components,
                                                  const CGFloat* locations, size_t count);
/// A gradient of an array of CGColorRef; `space` may be NULL. Otherwise like the function above.
CGGradientRef CGGradientCreateWithColors(CGColorSpaceRef space, CFArrayRef colors, const CGFloat* locations);
/// Adds a reference and returns the argument, which may be NULL.
CGGradientRef CGGradientRetain(CGGradientRef gradient);
/// Releases a reference. NULL is ignored.
void CGGradientRelease(CGGradientRef gradient);

CF_EXTERN_C_END
