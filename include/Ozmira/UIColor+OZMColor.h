// Converts colours of UIKit and CoreGraphics to red, green, blue and alpha.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#import <Ozmira/OzmiraColor.h>
#import <Ozmira/OzmiraExport.h>
#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

/// Conversion to Ozmira's colour.
@interface UIColor (OZMColor)
/// The receiver's red, green, blue and alpha.
- (OZMColor)ozm_color;
@end

#ifdef __cplusplus
extern "C" {
#endif

/// Components of a colour in any space except patterns; all zero for NULL. Device RGB components are returned
/// unchanged; colours in other spaces are converted by Core Image.
OZM_EXPORT OZMColor OZMColorFromCGColor(CGColorRef _Nullable color);

#ifdef __cplusplus
}
#endif

NS_ASSUME_NONNULL_END
