#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#define UIKIT_EXTERN CF_EXPORT

NS_ASSUME_NONNULL_BEGIN

UIKIT_EXTERN NSNotificationName const UIApplicationDidReceiveMemoryWarningNotification;
UIKIT_EXTERN NSAttributedStringKey const NSForegroundColorAttributeName;
UIKIT_EXTERN CGContextRef _Nullable UIGraphicsGetCurrentContext(void) CF_RETURNS_NOT_RETAINED;

@interface UIColor : NSObject <NSCopying>
@property (class, nonatomic, readonly) UIColor* blackColor;
@property (class, nonatomic, readonly) UIColor* grayColor;
@property (class, nonatomic, readonly) UIColor* redColor;
@property (class, nonatomic, readonly) UIColor* orangeColor;
@property (nonatomic, readonly) CGColorRef CGColor CF_RETURNS_NOT_RETAINED NS_RETURNS_INNER_POINTER;
@end

typedef NS_ENUM(NSInteger, UIImageOrientation) { UIImageOrientationUp };
@interface UIImage : NSObject
@property (nonatomic, readonly) CGSize size;
+ (UIImage*)imageWithCGImage:(CGImageRef)image
                       scale:(CGFloat)scale
                 orientation:(UIImageOrientation)orientation;
@end

__attribute__((availability(visionos, unavailable)))
@interface UIScreen : NSObject
@property (class, nonatomic, readonly) UIScreen* mainScreen;
@property (nonatomic, readonly) CGFloat scale;
@end

@interface UITraitCollection : NSObject
@property (class, nonatomic, strong) UITraitCollection* currentTraitCollection;
@property (nonatomic, readonly) CGFloat displayScale;
@end

@interface UIView : NSObject
@property (nonatomic) CGRect bounds;
@property (nonatomic, null_resettable, strong) UIColor* tintColor;
- (void)drawRect:(CGRect)rect;
- (void)setNeedsDisplay;
@end
@interface UIImageView : UIView
@property (nullable, nonatomic, strong) UIImage* image;
@end

NS_ASSUME_NONNULL_END
