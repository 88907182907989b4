// A folder of SVG files.
#pragma once

#include <dispatch/dispatch.h>
#import <Foundation/Foundation.h>
#import <Ozmira/OZMDocument.h>

NS_ASSUME_NONNULL_BEGIN

/// When a container purges its documents by itself.
typedef NS_OPTIONS(NSUInteger, OZMDocumentCacheAutoPurgeOptions) {
    /// When the application receives a memory warning.
    OZMDocumentCacheAutoPurgeOnMemoryWarning = 1 << 0,
};

/// Hands out the documents of a folder by name and keeps them. Every method may be called on any thread.
@interface OZMContainer : NSObject {
@private
    NSURL* _url;
    NSMutableDictionary<NSString*, id>* _documentCache;
    dispatch_queue_t _queue;
    OZMDocumentCacheAutoPurgeOptions _documentCacheAutoPurgeOptions;
}

/// The container of a folder: the same object for equal URLs until `purgeContainerCache`. Nil for nil; the
/// folder is not looked at. `error` is never written.
+ (nullable instancetype)containerWithURL:(NSURL*)url error:(NSError* _Nullable* _Nullable)error;
/// Number of containers kept.
+ (NSUInteger)containerCacheCount;
/// Forgets all containers, some time after it returns. Containers that callers hold stay usable.
+ (void)purgeContainerCache;

/// A container of its own, not kept. `error` is never written.
- (nullable instancetype)initWithURL:(NSURL*)url
                               error:(NSError* _Nullable* _Nullable)error NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;

/// The folder.
@property (nonatomic, copy, readonly) NSURL* url;
/// On a memory warning by default. Observable by key.
@property (nonatomic) OZMDocumentCacheAutoPurgeOptions documentCacheAutoPurgeOptions;

/// The document of a file; ".svg" is appended to a name without extension. The same object for the same name
/// until `purgeDocumentCache`; nil when the file can't be opened, and then, without another look at the file,
/// until `purgeDocumentCache`.
- (nullable OZMDocument*)documentNamed:(NSString*)name;
/// Names, without extension, of everything in the folder that is not hidden, folders and other files
/// included. Empty when the folder can't be read.
- (NSArray<NSString*>*)documentNames;
/// Number of names kept, those that failed included.
- (NSUInteger)documentCacheCount;
/// Purges every document kept and forgets all names, some time after it returns. Documents that callers hold
/// stay usable.
- (void)purgeDocumentCache;

@end

NS_ASSUME_NONNULL_END
