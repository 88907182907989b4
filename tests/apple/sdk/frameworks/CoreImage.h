#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface CIColor : NSObject
@property (readonly) CGFloat red;
@property (readonly) CGFloat green;
@property (readonly) CGFloat blue;
@property (readonly) CGFloat alpha;
+ (instancetype)colorWithCGColor:(CGColorRef)color;
@end

NS_ASSUME_NONNULL_END
