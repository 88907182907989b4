#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// An immutable colour. Components are fractions of 1; values outside 0...1 are kept. Colours are equal if
/// their CGColors are: same colour space, same components.
@interface UIColor : NSObject <NSCopying> {
@private
    CGColorRef _CGColor;
}
@property (class, nonatomic, readonly) UIColor* blackColor;  // gray space, 0
@property (class, nonatomic, readonly) UIColor* grayColor;   // gray space, 0.5
@property (class, nonatomic, readonly) UIColor* whiteColor;  // gray space, 1
@property (class, nonatomic, readonly) UIColor* clearColor;  // gray space, 0 with alpha 0
@property (class, nonatomic, readonly) UIColor* redColor;    // 1, 0, 0
@property (class, nonatomic, readonly) UIColor* orangeColor; // 1, 0.5, 0

/// A colour in the device gray space.
+ (UIColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha;
/// A colour in the device RGB space.
+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
/// A colour in any space; nil for NULL.
+ (UIColor*)colorWithCGColor:(CGColorRef)color;

/// Like `colorWithWhite:alpha:`.
- (UIColor*)initWithWhite:(CGFloat)white alpha:(CGFloat)alpha;
/// Like `colorWithRed:green:blue:alpha:`.
- (UIColor*)initWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
/// Like `colorWithCGColor:`.
- (UIColor*)initWithCGColor:(CGColorRef)color;
- (instancetype)init NS_UNAVAILABLE;

/// Borrowed: valid as long as the receiver lives.
@property (nonatomic, readonly) CGColorRef CGColor;
@end

NS_ASSUME_NONNULL_END
