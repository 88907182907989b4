#import <Ozmira/OZMContainer.h>

#include "dispatch_helpers.h"
#include "manual_retain_release.h"

#import <UIKit/UIKit.h>

namespace {

NSString* const kOptionsKey = @"documentCacheAutoPurgeOptions";

NSMutableDictionary<NSURL*, OZMContainer*>* containerCache; // only used on its queue
dispatch_queue_t containerCacheQueue;

} // namespace

@interface OZMContainer ()
- (void)_updateNotificationObserversWithCurrentAutoPurgeOptions:(OZMDocumentCacheAutoPurgeOptions)current
                                            oldAutoPurgeOptions:(OZMDocumentCacheAutoPurgeOptions)old;
@end

@implementation OZMContainer

@synthesize url = _url;

+ (void)load {
    @autoreleasepool {
        containerCache = [[NSMutableDictionary dictionary] retain];
    }
    containerCacheQueue = dispatch_queue_create("OZMContainerCacheQueue", nullptr);
}

+ (instancetype)containerWithURL:(NSURL*)url error:(NSError**)error {
    if (!url) return nil;
    OZMContainer* container = nil;
    ozm::dispatchSync(containerCacheQueue, [&] {
        container = [[containerCache objectForKey:url] retain];
        if (container) return;
        container = [[self alloc] initWithURL:url error:error];
        if (container) [containerCache setObject:container forKey:url];
    });
    return [container autorelease];
}

+ (NSUInteger)containerCacheCount {
    NSUInteger count = 0;
    ozm::dispatchSync(containerCacheQueue, [&] { count = containerCache.count; });
    return count;
}

+ (void)purgeContainerCache {
    ozm::dispatchAsync(containerCacheQueue, [] { [containerCache removeAllObjects]; });
}

// The setter notifies its observers itself.
+ (BOOL)automaticallyNotifiesObserversForKey:(NSString*)key {
    return ![key isEqualToString:kOptionsKey] && [super automaticallyNotifiesObserversForKey:key];
}

- (instancetype)initWithURL:(NSURL*)url error:(NSError**)error {
    (void)error;
    if (!(self = [super init])) return nil;
    _url = [url copy];
    _documentCache = [[NSMutableDictionary alloc] init];
    _queue = dispatch_queue_create("OZMContainerQueue", nullptr);
    _documentCacheAutoPurgeOptions = OZMDocumentCacheAutoPurgeOnMemoryWarning;
    [self _updateNotificationObserversWithCurrentAutoPurgeOptions:_documentCacheAutoPurgeOptions
                                              oldAutoPurgeOptions:0];
    return self;
}

- (void)dealloc {
    [self _updateNotificationObserversWithCurrentAutoPurgeOptions:0
                                              oldAutoPurgeOptions:_documentCacheAutoPurgeOptions];
    dispatch_release(_queue);
    [_documentCache release];
    [_url release];
    [super dealloc];
}

- (OZMDocumentCacheAutoPurgeOptions)documentCacheAutoPurgeOptions {
    OZMDocumentCacheAutoPurgeOptions options = 0;
    ozm::dispatchSync(_queue, [&] { options = _documentCacheAutoPurgeOptions; });
    return options;
}

- (void)setDocumentCacheAutoPurgeOptions:(OZMDocumentCacheAutoPurgeOptions)options {
    [self willChangeValueForKey:kOptionsKey]; // outside the queue, because observers may read the value
    ozm::dispatchSync(_queue, [&] {
        const OZMDocumentCacheAutoPurgeOptions old = _documentCacheAutoPurgeOptions;
        _documentCacheAutoPurgeOptions = options;
        [self _updateNotificationObserversWithCurrentAutoPurgeOptions:options oldAutoPurgeOptions:old];
    });
    [self didChangeValueForKey:kOptionsKey];
}

- (void)_updateNotificationObserversWithCurrentAutoPurgeOptions:(OZMDocumentCacheAutoPurgeOptions)current
                                            oldAutoPurgeOptions:(OZMDocumentCacheAutoPurgeOptions)old {
    const bool observes = (current & OZMDocumentCacheAutoPurgeOnMemoryWarning) != 0;
    const bool observed = (old & OZMDocumentCacheAutoPurgeOnMemoryWarning) != 0;
    NSNotificationCenter* const center = [NSNotificationCenter defaultCenter];
    if (observed && !observes)
        [center removeObserver:self name:UIApplicationDidReceiveMemoryWarningNotification object:nil];
    if (observes && !observed)
        [center addObserver:self
                   selector:@selector(purgeDocumentCache)
                       name:UIApplicationDidReceiveMemoryWarningNotification
                     object:nil];
}

- (OZMDocument*)documentNamed:(NSString*)name {
    if (!name) return nil;
    OZMDocument* document = nil;
    ozm::dispatchSync(_queue, [&] {
        id entry = [_documentCache objectForKey:name];
        if (!entry) {
            NSString* const fileName =
                name.pathExtension.length == 0 ? [name stringByAppendingString:@".svg"] : name;
            NSURL* const file = [_url URLByAppendingPathComponent:fileName isDirectory:NO];
            if (file) entry = [OZMDocument documentWithURL:file];
            if (!entry) entry = [NSNull null];
            [_documentCache setObject:entry forKey:name];
        }
        if (entry != [NSNull null]) document = [entry retain];
    });
    return [document autorelease];
}

- (NSArray<NSString*>*)documentNames {
    NSArray<NSString*>* names = nil;
    ozm::dispatchSync(_queue, [&] {
        const NSDirectoryEnumerationOptions options = NSDirectoryEnumerationSkipsSubdirectoryDescendants |
                                                      NSDirectoryEnumerationSkipsPackageDescendants |
                                                      NSDirectoryEnumerationSkipsHiddenFiles;
        NSArray<NSURL*>* const entries =
            _url ? [[NSFileManager defaultManager] contentsOfDirectoryAtURL:_url
                                                 includingPropertiesForKeys:nil
                                                                    options:options
                                                                      error:nullptr]
                 : nil;
        NSMutableArray<NSString*>* const found = [NSMutableArray arrayWithCapacity:entries.count];
        for (NSURL* entry in entries)
            [found addObject:entry.path.lastPathComponent.stringByDeletingPathExtension];
        names = [found copy];
    });
    return [names autorelease];
}

- (NSUInteger)documentCacheCount {
    NSUInteger count = 0;
    ozm::dispatchSync(_queue, [&] { count = _documentCache.count; });
    return count;
}

// A memory warning may call this on one thread while another thread, which is deallocating the container,
// waits to remove it as an observer. Hence nothing here retains the container.
- (void)purgeDocumentCache {
    NSMutableDictionary<NSString*, id>* const cache = [_documentCache retain];
    ozm::dispatchAsync(_queue, [cache] {
        for (id entry in cache.allValues)
            if (entry != [NSNull null]) [entry purgeDocument];
        [cache removeAllObjects];
        [cache release];
    });
}

@end
