#include "api_test_support.h"

#import <Ozmira/Ozmira.h>

@interface DerivedKey : OZMImageCacheKey
@end
@implementation DerivedKey
@end

namespace {

class ImageCacheTest : public ApiTest {
public:
    ImageCacheTest() { [OZMImageCache.sharedImageCache purgeCache]; }

    static OZMImageCacheKey* key(NSURL* url, CGSize size, CGFloat scale, UIColor* color) {
        return [[[OZMImageCacheKey alloc] initWithURL:url imageSize:size scale:scale
                                            fillColor:color] autorelease];
    }
    static UIImage* image() {
        const Canvas canvas(1, 1);
        CGImageRef pixels = CGBitmapContextCreateImage(canvas.context());
        UIImage* const image = [UIImage imageWithCGImage:pixels];
        CGImageRelease(pixels);
        return image;
    }
};

TEST_F(ImageCacheTest, KeysAreEqualIfAllTheirPartsAre) {
    NSURL* const file = url("a.svg");
    OZMImageCacheKey* const base = key(file, {10, 20}, 2, nil);
    for (OZMImageCacheKey* same in @[
             base, key(url("a.svg"), {10, 20}, 2, nil), key(file, {10, 20}, 2, UIColor.clearColor),
             key(file, {10, 20}, 2, [UIColor colorWithRed:-0.0 green:0 blue:0 alpha:0])
         ]) {
        EXPECT_TRUE([base isEqual:same]);
        EXPECT_EQ(base.hash, same.hash);
    }
    NSArray* const others = @[
        key(url("b.svg"), {10, 20}, 2, nil), key(file, {10.5, 20}, 2, nil), key(file, {10, 21}, 2, nil),
        key(file, {10, 20}, 3, nil), key(file, {10, 20}, 2, UIColor.blackColor), @"key",
        [[[DerivedKey alloc] initWithURL:file imageSize:{10, 20} scale:2 fillColor:nil] autorelease]
    ];
    for (NSUInteger i = 0; i < others.count; ++i) {
        EXPECT_FALSE([base isEqual:[others objectAtIndex:i]]) << i;
        EXPECT_FALSE([[others objectAtIndex:i] isEqual:base]) << i;
    }
}

TEST_F(ImageCacheTest, ReturnsImagesUntilPurged) {
    OZMImageCache* const cache = OZMImageCache.sharedImageCache;
    EXPECT_EQ(cache, OZMImageCache.sharedImageCache);
    OZMImageCacheKey* const twice = key(url("a.svg"), {}, 2, nil);
    OZMImageCacheKey* const thrice = key(url("a.svg"), {}, 3, nil);
    UIImage* const first = image();
    UIImage* const second = image();
    for (const auto& purge :
         {+[] { [OZMImageCache.sharedImageCache purgeCache]; }, +[] { postMemoryWarning(); }}) {
        [cache setImage:first forKey:twice];
        [cache setImage:second forKey:thrice];
        EXPECT_EQ([cache imageForKey:key(url("a.svg"), {}, 2, nil)], first);
        EXPECT_EQ([cache imageForKey:thrice], second);
        purge();
        EXPECT_EQ([cache imageForKey:twice], nil);
        EXPECT_EQ([cache imageForKey:thrice], nil);
    }
}

TEST_F(ImageCacheTest, IgnoresNil) {
    OZMImageCache* const cache = OZMImageCache.sharedImageCache;
    [cache setImage:nil forKey:key(url("a.svg"), {}, 2, nil)];
    [cache setImage:image() forKey:nil];
    EXPECT_EQ([cache imageForKey:key(url("a.svg"), {}, 2, nil)], nil);
    EXPECT_EQ([cache imageForKey:nil], nil);
    EXPECT_EQ([cache imageForKey:key(nil, {}, 2, nil)], nil);
}

TEST_F(ImageCacheTest, StopsObservingWhenDeallocated) {
    @autoreleasepool {
        OZMImageCache* const cache = [[[OZMImageCache alloc] init] autorelease];
        [cache setImage:image() forKey:key(url("a.svg"), {}, 2, nil)];
    }
    postMemoryWarning();
}

} // namespace
