#import <Foundation/Foundation.h>

#include <iterator>
#include <list>
#include <mutex>
#include <unordered_map>

namespace {

struct Entry {
    Entry(id keyToRetain, id objectToRetain, NSUInteger entryCost)
        : key([keyToRetain retain]), object([objectToRetain retain]), cost(entryCost) {}
    ~Entry() {
        [key release];
        [object release];
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    const id key;
    const id object;
    const NSUInteger cost;
};
using Entries = std::list<Entry>;

struct KeyHash {
    size_t operator()(id key) const { return [key hash]; }
};
struct KeyEqual {
    bool operator()(id a, id b) const { return [a isEqual:b]; }
};

} // namespace

struct OZMCacheStorage {
    std::mutex mutex; // guards all members below
    Entries entries;  // most recently used first
    std::unordered_map<id, Entries::iterator, KeyHash, KeyEqual> entryByKey;
    NSUInteger cost = 0;
    NSUInteger countLimit = 0;
    NSUInteger totalCostLimit = 0;

    void remove(id key, Entries& removed) {
        const auto found = entryByKey.find(key);
        if (found == entryByKey.end()) return;
        const Entries::iterator entry = found->second;
        entryByKey.erase(found);
        cost -= entry->cost;
        removed.splice(removed.end(), entries, entry);
    }

    void enforceLimits(Entries& removed) {
        while ((countLimit != 0 && entries.size() > countLimit) ||
               (totalCostLimit != 0 && cost > totalCostLimit))
            evictLast(removed);
    }

    void evictLast(Entries& removed) {
        const Entries::iterator last = std::prev(entries.end());
        const auto found = entryByKey.find(last->key);
        if (found != entryByKey.end() && found->second == last) {
            entryByKey.erase(found);
        } else { // a key that does not equal itself, or whose hash has changed
            std::erase_if(entryByKey, [&](const auto& other) { return other.second == last; });
        }
        cost -= last->cost;
        removed.splice(removed.end(), entries, last);
    }
};

// Below, objects that leave the cache are released only after it is unlocked, because their dealloc may use
// the cache again.
@implementation OZMCache

- (instancetype)init {
    if (!(self = [super init])) return nil;
    _storage = new OZMCacheStorage;
    return self;
}

- (void)dealloc {
    delete _storage;
    [super dealloc];
}

- (NSUInteger)countLimit {
    const std::lock_guard lock(_storage->mutex);
    return _storage->countLimit;
}

- (void)setCountLimit:(NSUInteger)limit {
    Entries removed;
    const std::lock_guard lock(_storage->mutex);
    _storage->countLimit = limit;
    _storage->enforceLimits(removed);
}

- (NSUInteger)totalCostLimit {
    const std::lock_guard lock(_storage->mutex);
    return _storage->totalCostLimit;
}

- (void)setTotalCostLimit:(NSUInteger)limit {
    Entries removed;
    const std::lock_guard lock(_storage->mutex);
    _storage->totalCostLimit = limit;
    _storage->enforceLimits(removed);
}

- (id)objectForKey:(id)key {
    if (!key) return nil;
    const std::lock_guard lock(_storage->mutex);
    const auto found = _storage->entryByKey.find(key);
    if (found == _storage->entryByKey.end()) return nil;
    _storage->entries.splice(_storage->entries.begin(), _storage->entries, found->second);
    return [[found->second->object retain] autorelease]; // another thread may remove it right away
}

- (void)setObject:(id)object forKey:(id)key {
    [self setObject:object forKey:key cost:0];
}

- (void)setObject:(id)object forKey:(id)key cost:(NSUInteger)cost {
    if (!object || !key)
        [NSException raise:NSInvalidArgumentException
                    format:@"attempt to insert nil %@", key ? @"value" : @"key"];
    Entries removed;
    const std::lock_guard lock(_storage->mutex);
    _storage->remove(key, removed);
    _storage->entries.emplace_front(key, object, cost);
    _storage->entryByKey.emplace(key, _storage->entries.begin());
    _storage->cost += cost;
    _storage->enforceLimits(removed);
}

- (void)removeObjectForKey:(id)key {
    if (!key) return;
    Entries removed;
    const std::lock_guard lock(_storage->mutex);
    _storage->remove(key, removed);
}

- (void)removeAllObjects {
    Entries removed;
    const std::lock_guard lock(_storage->mutex);
    removed.swap(_storage->entries);
    _storage->entryByKey.clear();
    _storage->cost = 0;
}

@end
