#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// Red, green, blue and alpha of a colour in any space, as fractions of 1, neither clamped nor premultiplied.
/// An RGB colour keeps the components it was created with; a gray has three equal components.
@interface CIColor : NSObject {
@private
    CGFloat _red;
    CGFloat _green;
    CGFloat _blue;
    CGFloat _alpha;
}
/// The components of a colour; nil for NULL.
+ (nullable instancetype)colorWithCGColor:(CGColorRef)color;
/// The components of a colour; nil for NULL.
- (nullable instancetype)initWithCGColor:(CGColorRef)color NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

@property (nonatomic, readonly) CGFloat red;
@property (nonatomic, readonly) CGFloat green;
@property (nonatomic, readonly) CGFloat blue;
@property (nonatomic, readonly) CGFloat alpha;
@end

NS_ASSUME_NONNULL_END
