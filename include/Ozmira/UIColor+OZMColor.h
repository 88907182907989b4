// Converts colours of UIKit and CoreGraphics to the core's.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <UIKit/UIKit.h>

#ifdef __cplusplus
#include <Ozmira/ozmStyle.h>
/// The core's colour: r, g, b, a as fractions of 1.
using OZMColor = ozm::Color;
#else
/// The core's colour: r, g, b, a as fractions of 1.
typedef struct OZMColor {
    double r, g, b, a;
} OZMColor;
#endif

NS_ASSUME_NONNULL_BEGIN

/// Conversion to the core's colour.
@interface UIColor (OZMColor)
/// The receiver's red, green, blue and alpha.
- (OZMColor)ozm_color;
@end

#ifdef __cplusplus
/// Components of a colour in any space except patterns; all zero for NULL. Device RGB components are returned
/// unchanged; colours in other spaces are converted by Core Image.
OZMColor OZMColorFromCGColor(CGColorRef _Nullable color);
#endif

NS_ASSUME_NONNULL_END
