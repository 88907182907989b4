// The process-wide cache of rendered images.
#pragma once

#import <Foundation/Foundation.h>
#import <Ozmira/OzmiraColor.h>
#import <Ozmira/OzmiraExport.h>
#import <UIKit/UIKit.h>

#include <stdint.h>

NS_ASSUME_NONNULL_BEGIN

/// What an image was rendered from.
typedef struct OZMImageCacheKeyImpl {
    uint64_t urlHash;
    CGSize imageSize;
    double scale;
    OZMColor fillColor;
} OZMImageCacheKeyImpl;

/// Identifies a rendered image: the file, the requested size, the scale and the default fill colour.
/// Immutable.
OZM_EXPORT NS_SWIFT_SENDABLE @interface OZMImageCacheKey : NSObject {
@private
    NSURL* _url;
    OZMImageCacheKeyImpl _impl;
}
/// `size` is the requested size in points, before it is fitted; `scale` is in pixels per point. A nil colour
/// is taken as transparent black.
- (instancetype)initWithURL:(NSURL*)url
                  imageSize:(CGSize)size
                      scale:(CGFloat)scale
                  fillColor:(nullable UIColor*)color NS_DESIGNATED_INITIALIZER
    NS_SWIFT_NAME(init(url:imageSize:scale:fillColor:));
- (instancetype)init NS_UNAVAILABLE;

/// The file that the image was rendered from.
@property (nonatomic, readonly) NSURL* url;
@end

/// Keeps rendered images until memory runs short. Every method may be called on any thread.
OZM_EXPORT NS_SWIFT_SENDABLE @interface OZMImageCache : NSObject {
@private
    NSCache<OZMImageCacheKey*, UIImage*>* _cache;
}
/// The cache that documents use, created on first use and kept for the life of the process.
@property (class, nonatomic, readonly) OZMImageCache* sharedImageCache NS_SWIFT_NAME(shared);

/// The image stored under an equal key; nil if there is none.
- (nullable UIImage*)imageForKey:(OZMImageCacheKey*)key NS_SWIFT_NAME(image(for:));
/// Stores an image, replacing an earlier one under an equal key. Does nothing if the image or the key is nil.
- (void)setImage:(UIImage*)image forKey:(OZMImageCacheKey*)key NS_SWIFT_NAME(setImage(_:for:));
/// Drops all images. Images that callers hold stay valid.
- (void)purgeCache;
/// Purges the cache; called for `UIApplicationDidReceiveMemoryWarningNotification`.
- (void)applicationDidReceiveMemoryWarning:(nullable NSNotification*)note
    NS_SWIFT_NAME(applicationDidReceiveMemoryWarning(_:));
@end

NS_ASSUME_NONNULL_END
