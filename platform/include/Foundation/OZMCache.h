// GNUstep's NSCache never evicts, ignores its limits and breaks when two threads use it. This class replaces
// it under the same name.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

struct OZMCacheStorage;

/// Holds objects by key. When a limit is exceeded, the least recently used objects are dropped first. Keys
/// are retained, not copied, and compared with `isEqual:`. May be used by several threads at once.
@interface OZMCache<KeyType, ObjectType> : NSObject {
@private
    struct OZMCacheStorage* _storage;
}
/// Maximum number of objects; 0, the default, means no limit. Lowering it evicts at once.
@property (nonatomic) NSUInteger countLimit;
/// Maximum total cost of all objects; 0, the default, means no limit. Lowering it evicts at once.
@property (nonatomic) NSUInteger totalCostLimit;
/// The object stored under a key, which becomes the most recently used; nil if there is none.
- (nullable ObjectType)objectForKey:(KeyType)key;
/// Like the method below, with cost 0.
- (void)setObject:(ObjectType)object forKey:(KeyType)key;
/// Adds or replaces an object. An object whose cost alone exceeds the limit is not kept. Raises
/// `NSInvalidArgumentException` if the object or the key is nil.
- (void)setObject:(ObjectType)object forKey:(KeyType)key cost:(NSUInteger)cost;
/// Removes the object stored under a key, if there is one.
- (void)removeObjectForKey:(KeyType)key;
/// Removes all objects.
- (void)removeAllObjects;
@end

NS_ASSUME_NONNULL_END

#define NSCache OZMCache
