// GNUstep's NSCache never evicts, ignores its limits and breaks when two threads use it. The class here takes
// its place under its name.
#pragma once

#import <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

struct OZMCacheStorage;

/// Holds objects by key; may drop any of them when a limit is exceeded, the least recently used ones first.
/// Keys are retained, not copied, and compared with `isEqual:`. Safe to use from several threads at once.
@interface OZMCache<KeyType, ObjectType> : NSObject {
@private
    struct OZMCacheStorage* _storage;
}
/// Most objects kept; 0, the default: no limit. Lowering it evicts at once.
@property (nonatomic) NSUInteger countLimit;
/// Most cost kept, summed over all objects; 0, the default: no limit. Lowering it evicts at once.
@property (nonatomic) NSUInteger totalCostLimit;
/// The object of a key, now the most recently used; nil for nil and for a key without one.
- (nullable ObjectType)objectForKey:(KeyType)key;
/// As below with cost 0.
- (void)setObject:(ObjectType)object forKey:(KeyType)key;
/// Adds or replaces an object. One that alone exceeds the cost limit is not kept. Raises
/// `NSInvalidArgumentException` for nil.
- (void)setObject:(ObjectType)object forKey:(KeyType)key cost:(NSUInteger)cost;
- (void)removeObjectForKey:(KeyType)key;
- (void)removeAllObjects;
@end

NS_ASSUME_NONNULL_END

#define NSCache OZMCache
