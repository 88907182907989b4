#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// The red, green, blue and alpha of a colour of any space, as fractions of 1 that are neither clamped nor
/// multiplied by alpha. Those of an RGB colour are the numbers it was made with; a gray has three equal ones.
@interface CIColor : NSObject {
@private
    CGFloat _red;
    CGFloat _green;
    CGFloat _blue;
    CGFloat _alpha;
}
/// Nil for NULL.
+ (nullable instancetype)colorWithCGColor:(CGColorRef)color;
/// Nil for NULL.
- (nullable instancetype)initWithCGColor:(CGColorRef)color NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

@property (nonatomic, readonly) CGFloat red;
@property (nonatomic, readonly) CGFloat green;
@property (nonatomic, readonly) CGFloat blue;
@property (nonatomic, readonly) CGFloat alpha;
@end

NS_ASSUME_NONNULL_END
