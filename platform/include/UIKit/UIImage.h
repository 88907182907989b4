#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// How the pixels must be rotated or mirrored to be upright.
typedef NS_ENUM(NSInteger, UIImageOrientation) {
    UIImageOrientationUp,
    UIImageOrientationDown,
    UIImageOrientationLeft,
    UIImageOrientationRight,
    UIImageOrientationUpMirrored,
    UIImageOrientationDownMirrored,
    UIImageOrientationLeftMirrored,
    UIImageOrientationRightMirrored,
};

/// An immutable image: pixels, their number per point, and their orientation.
@interface UIImage : NSObject {
@private
    CGImageRef _CGImage;
    CGFloat _scale;
    UIImageOrientation _imageOrientation;
}
/// An upright image at scale 1; nil for NULL.
+ (nullable UIImage*)imageWithCGImage:(CGImageRef)cgImage;
/// An image with a scale and an orientation; like `initWithCGImage:scale:orientation:`.
+ (nullable UIImage*)imageWithCGImage:(CGImageRef)cgImage
                                scale:(CGFloat)scale
                          orientation:(UIImageOrientation)orientation;
/// An upright image at scale 1; nil for NULL.
- (nullable instancetype)initWithCGImage:(CGImageRef)cgImage;
/// Nil for NULL. A scale that is not positive is taken as 1.
- (nullable instancetype)initWithCGImage:(CGImageRef)cgImage
                                   scale:(CGFloat)scale
                             orientation:(UIImageOrientation)orientation NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Width and height of the upright image in points.
@property (nonatomic, readonly) CGSize size;
/// Pixels per point.
@property (nonatomic, readonly) CGFloat scale;
/// Orientation of the pixels.
@property (nonatomic, readonly) UIImageOrientation imageOrientation;
/// The pixels, borrowed: valid as long as the receiver lives.
@property (nonatomic, readonly, nullable) CGImageRef CGImage;
@end

/// The image's pixels, without regard to orientation, as a PNG file whose resolution is 72 dpi times the
/// image's scale. Nil for nil, if the image is too large, and when memory is short.
UIKIT_EXTERN NSData* _Nullable UIImagePNGRepresentation(UIImage* image);

NS_ASSUME_NONNULL_END
