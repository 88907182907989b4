// Immutable colours: components in a colour space, followed by alpha.
#pragma once

#include <CoreGraphics/CGColorSpace.h>

typedef struct CGColor* CGColorRef;

CF_EXTERN_C_BEGIN

/// Type id of colours.
CFTypeID CGColorGetTypeID(void);
/// A colour in a space, given by its components followed by alpha. Values are kept as given; painting clamps
/// them to 0...1. NULL when an argument is NULL and when memory is short. The caller owns the result.
CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
/// A colour in the generic gray space.
CGColorRef CGColorCreateGenericGray(CGFloat gray, CGFloat alpha);
/// A colour in the generic RGB space.
CGColorRef CGColorCreateGenericRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// A colour in the sRGB space.
CGColorRef CGColorCreateSRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// A colour equal to `color`; NULL for NULL. The caller owns the result.
CGColorRef CGColorCreateCopy(CGColorRef color);
/// The same colour with another alpha; NULL for NULL. The caller owns the result.
CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha);
/// Adds a reference and returns the argument, which may be NULL.
CGColorRef CGColorRetain(CGColorRef color);
/// Releases a reference. NULL is ignored.
void CGColorRelease(CGColorRef color);
/// True if both have the same space and exactly equal components.
bool CGColorEqualToColor(CGColorRef color1, CGColorRef color2);
/// Number of components, alpha included; 0 for NULL.
size_t CGColorGetNumberOfComponents(CGColorRef color);
/// The components, alpha last, valid as long as the colour lives; NULL for NULL.
const CGFloat* CGColorGetComponents(CGColorRef color);
/// The last component; 0 for NULL.
CGFloat CGColorGetAlpha(CGColorRef color);
/// The colour's space, borrowed; NULL for NULL.
CGColorSpaceRef CGColorGetColorSpace(CGColorRef color);

CF_EXTERN_C_END
