// Platform colours as the core's.
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

@interface UIColor (OZMColor)
/// The receiver's red, green, blue and alpha.
- (OZMColor)ozm_color;
@end

#ifdef __cplusplus
/// Components of a colour of any space but patterns; all zero for NULL. Those of device RGB are taken as they
/// are, those of other spaces as Core Image reads them.
OZMColor OZMColorFromCGColor(CGColorRef _Nullable color);
#endif

NS_ASSUME_NONNULL_END
