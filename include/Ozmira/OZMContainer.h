// A folder of SVG files.
#pragma once

#include <dispatch/dispatch.h>
#import <Foundation/Foundation.h>
#import <Ozmira/OZMDocument.h>
#import <Ozmira/OzmiraExport.h>

NS_ASSUME_NONNULL_BEGIN

/// When a container purges its documents automatically.
typedef NS_OPTIONS(NSUInteger, OZMDocumentCacheAutoPurgeOptions) {
    /// When the application receives a memory warning.
    OZMDocumentCacheAutoPurgeOnMemoryWarning = 1 << 0,
};

/// Loads the documents of a folder by name and caches them. Every method may be called on any thread.
OZM_EXPORT NS_SWIFT_SENDABLE @interface OZMContainer : NSObject {
@private
    NSURL* _url;
    NSMutableDictionary<NSString*, id>* _documentCache;
    dispatch_queue_t _queue;
    OZMDocumentCacheAutoPurgeOptions _documentCacheAutoPurgeOptions;
}

/// The container of a folder: the same object for equal URLs until `purgeContainerCache`. Nil for nil. The
/// folder is not accessed. `error` is never written.
+ (nullable instancetype)containerWithURL:(NSURL*)url
                                    error:(NSError* _Nullable* _Nullable)error NS_SWIFT_NAME(shared(for:));
/// Number of cached containers.
@property (class, nonatomic, readonly) NSUInteger containerCacheCount;
/// Empties the cache of containers, asynchronously. Containers that callers hold stay usable.
+ (void)purgeContainerCache;

/// A new container, which is not cached. `error` is never written.
- (nullable instancetype)initWithURL:(NSURL*)url
                               error:(NSError* _Nullable* _Nullable)error NS_DESIGNATED_INITIALIZER
    NS_SWIFT_NAME(init(url:));
- (instancetype)init NS_UNAVAILABLE;

/// The folder.
@property (nonatomic, copy, readonly) NSURL* url;
/// On a memory warning by default. Supports key-value observing.
@property (nonatomic) OZMDocumentCacheAutoPurgeOptions documentCacheAutoPurgeOptions;

/// The document of a file in the folder; ".svg" is appended to a name without extension. Returns the same
/// object for the same name until `purgeDocumentCache`. Nil if the file can't be opened, which is also
/// remembered until then.
- (nullable OZMDocument*)documentNamed:(NSString*)name NS_SWIFT_NAME(document(named:));
/// The names, without extension, of everything in the folder that is not hidden, including folders and other
/// files. Empty if the folder can't be read.
@property (nonatomic, readonly) NSArray<NSString*>* documentNames;
/// Number of cached names, including those whose file could not be opened.
@property (nonatomic, readonly) NSUInteger documentCacheCount;
/// Purges every cached document and empties the cache, asynchronously. Documents that callers hold stay
/// usable.
- (void)purgeDocumentCache;

@end

NS_ASSUME_NONNULL_END
