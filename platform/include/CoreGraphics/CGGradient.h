// Immutable gradients: colours at locations 0...1.
#pragma once

#include <CoreFoundation/CFArray.h>
#include <CoreGraphics/CGColorSpace.h>

typedef struct CGGradient* CGGradientRef;

/// Whether the end colours go on beyond the ends.
CF_OPTIONS(uint32_t, CGGradientDrawingOptions){kCGGradientDrawsBeforeStartLocation = (1 << 0),
                                               kCGGradientDrawsAfterEndLocation = (1 << 1)};

CF_EXTERN_C_BEGIN

/// Type id of gradients.
CFTypeID CGGradientGetTypeID(void);
/// A gradient of `count` colours; each has the components of `space` and alpha, kept as given and clamped
/// when painting. Locations are clamped into 0...1 (NaN: 0) and sorted, keeping the order of equal ones; NULL
/// spreads the colours evenly. Colours blend without premultiplication. NULL without space, components or
/// colours, and when memory is short. The caller owns the result.
CGGradientRef CGGradientCreateWithColorComponents(CGColorSpaceRef space, const CGFloat* components,
                                                  const CGFloat* locations, size_t count);
/// A gradient of an array of CGColorRef; `space` may be NULL. Otherwise as above.
CGGradientRef CGGradientCreateWithColors(CGColorSpaceRef space, CFArrayRef colors, const CGFloat* locations);
/// Adds a reference. NULL is passed through.
CGGradientRef CGGradientRetain(CGGradientRef gradient);
/// Drops a reference. NULL does nothing.
void CGGradientRelease(CGGradientRef gradient);

CF_EXTERN_C_END
