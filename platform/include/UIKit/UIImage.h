#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

NS_ASSUME_NONNULL_BEGIN

/// How the pixels must be turned to stand upright.
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

/// An immutable image: pixels, how many of them make a point, and which way up they are.
@interface UIImage : NSObject {
@private
    CGImageRef _CGImage;
    CGFloat _scale;
    UIImageOrientation _imageOrientation;
}
/// An upright image at scale 1; nil for NULL.
+ (nullable UIImage*)imageWithCGImage:(CGImageRef)cgImage;
/// Nil for NULL.
+ (nullable UIImage*)imageWithCGImage:(CGImageRef)cgImage
                                scale:(CGFloat)scale
                          orientation:(UIImageOrientation)orientation;
- (nullable instancetype)initWithCGImage:(CGImageRef)cgImage;
/// Nil for NULL. A scale that is not positive counts as 1.
- (nullable instancetype)initWithCGImage:(CGImageRef)cgImage
                                   scale:(CGFloat)scale
                             orientation:(UIImageOrientation)orientation NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// Width and height of the upright image in points.
@property (nonatomic, readonly) CGSize size;
/// Pixels per point.
@property (nonatomic, readonly) CGFloat scale;
@property (nonatomic, readonly) UIImageOrientation imageOrientation;
/// The pixels, borrowed: valid as long as the receiver lives.
@property (nonatomic, readonly, nullable) CGImageRef CGImage;
@end

/// The image's pixels, not turned upright, as a PNG file whose resolution is 72 dpi times the image's scale.
/// Nil for nil, for an image too large and when memory is short.
UIKIT_EXTERN NSData* _Nullable UIImagePNGRepresentation(UIImage* image);

NS_ASSUME_NONNULL_END
