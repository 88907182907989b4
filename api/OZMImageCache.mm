#import <Ozmira/OZMImageCache.h>

#include "dispatch_helpers.h"
#include "manual_retain_release.h"
#include "thread_memory.h"

#import <Ozmira/UIColor+OZMColor.h>

#include <Ozmira/ozmStyle.h>

@implementation OZMImageCacheKey

@synthesize url = _url;

- (instancetype)initWithURL:(NSURL*)url
                  imageSize:(CGSize)size
                      scale:(CGFloat)scale
                  fillColor:(UIColor*)color {
    if (!(self = [super init])) return nil;
    _url = [url retain];
    _impl = {url.hash, size, scale, color ? [color ozm_color] : OZMColor{}};
    return self;
}

- (void)dealloc {
    [_url release];
    [super dealloc];
}

- (NSUInteger)hash {
    return _url.hash;
}

- (BOOL)isEqual:(id)other {
    if ([other class] != [self class]) return NO;
    OZMImageCacheKey* const key = other;
    return _impl.imageSize.width == key->_impl.imageSize.width &&
           _impl.imageSize.height == key->_impl.imageSize.height && _impl.scale == key->_impl.scale &&
           ozm::Color(_impl.fillColor) == ozm::Color(key->_impl.fillColor) && [_url isEqual:key->_url];
}

@end

@implementation OZMImageCache

+ (OZMImageCache*)sharedImageCache {
    static dispatch_once_t once;
    static OZMImageCache* shared;
    ozm::dispatchOnce(once, [&] { shared = [[self alloc] init]; });
    return shared;
}

- (instancetype)init {
    if (!(self = [super init])) return nil;
    _cache = [[NSCache alloc] init];
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(applicationDidReceiveMemoryWarning:)
                                                 name:UIApplicationDidReceiveMemoryWarningNotification
                                               object:nil];
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [_cache release];
    [super dealloc];
}

- (UIImage*)imageForKey:(OZMImageCacheKey*)key {
    return [_cache objectForKey:key];
}

- (void)setImage:(UIImage*)image forKey:(OZMImageCacheKey*)key {
    if (image && key) [_cache setObject:image forKey:key];
}

- (void)purgeCache {
    [_cache removeAllObjects];
}

- (void)applicationDidReceiveMemoryWarning:(NSNotification*)note {
    (void)note;
    [self purgeCache];
    ozm::freeKeptMemory();
}

@end
