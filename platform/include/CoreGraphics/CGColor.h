// Immutable colours: the components of a colour space, and alpha last.
#pragma once

#include <CoreGraphics/CGColorSpace.h>

typedef struct CGColor* CGColorRef;

CF_EXTERN_C_BEGIN

/// Type id of colours.
CFTypeID CGColorGetTypeID(void);
/// A colour of a space: its components, then alpha. Values are kept as given; painting clamps them into
/// 0...1. NULL when an argument is NULL and when memory is short. The caller owns the result.
CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat* components);
/// A gray of the generic gray space.
CGColorRef CGColorCreateGenericGray(CGFloat gray, CGFloat alpha);
/// A colour of the generic RGB space.
CGColorRef CGColorCreateGenericRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// A colour of the sRGB space.
CGColorRef CGColorCreateSRGB(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
/// A colour equal to `color`; NULL for NULL. The caller owns the result.
CGColorRef CGColorCreateCopy(CGColorRef color);
/// The same colour with another alpha; NULL for NULL. The caller owns the result.
CGColorRef CGColorCreateCopyWithAlpha(CGColorRef color, CGFloat alpha);
/// Adds a reference. NULL is passed through.
CGColorRef CGColorRetain(CGColorRef color);
/// Drops a reference. NULL does nothing.
void CGColorRelease(CGColorRef color);
/// Same space and exactly equal components.
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
