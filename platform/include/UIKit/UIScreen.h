#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

/// A display.
@interface UIScreen : NSObject {
@private
    CGFloat _scale;
}
/// The only screen there is.
@property (class, nonatomic, readonly) UIScreen* mainScreen;
/// Pixels per point, 2 by default. Unlike in UIKit, a program may set it to match the display that it draws
/// for.
@property (atomic) CGFloat scale;
- (instancetype)init NS_UNAVAILABLE;
@end

NS_ASSUME_NONNULL_END
