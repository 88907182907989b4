// What takes the place of GNUstep's NSCache.
#include "ApiTestSupport.h"

#import <Ozmira/Ozmira.h>

namespace {

class CacheTest : public ApiTest {
public:
    ~CacheTest() override { [cache release]; }

    /// The keys among "a" ... "f" that have an object.
    std::string keys() const {
        std::string found;
        for (NSString* key in @[ @"a", @"b", @"c", @"d", @"e", @"f" ])
            if ([cache objectForKey:key]) found += key.UTF8String;
        return found;
    }

    NSCache<NSString*, id>* const cache = [[NSCache alloc] init];
};

TEST_F(CacheTest, FindsByEqualKeysAndReplaces) {
    [cache setObject:@1 forKey:@"a"];
    [cache setObject:@2 forKey:[NSMutableString stringWithString:@"a"]];
    EXPECT_EQ([[cache objectForKey:@"a"] intValue], 2);
    EXPECT_EQ([cache objectForKey:@"b"], nil);
    [cache removeObjectForKey:@"a"];
    EXPECT_EQ(keys(), "");
}

TEST_F(CacheTest, DropsTheLeastRecentlyUsedFirst) {
    cache.countLimit = 3;
    for (NSString* key in @[ @"a", @"b", @"c" ]) [cache setObject:key forKey:key];
    [cache objectForKey:@"a"];
    [cache setObject:@"d" forKey:@"d"];
    EXPECT_EQ(keys(), "acd");
    [cache objectForKey:@"c"];
    cache.countLimit = 1;
    EXPECT_EQ(keys(), "c");
}

TEST_F(CacheTest, HoldsNoMoreThanItsCostLimit) {
    cache.totalCostLimit = 10;
    [cache setObject:@1 forKey:@"a" cost:6];
    [cache setObject:@1 forKey:@"b" cost:4];
    EXPECT_EQ(keys(), "ab");
    [cache setObject:@1 forKey:@"a" cost:3]; // 7 in all
    [cache setObject:@1 forKey:@"c" cost:3];
    EXPECT_EQ(keys(), "abc");
    [cache setObject:@1 forKey:@"d" cost:1];
    EXPECT_EQ(keys(), "bcd"); // "a" was asked for before "b"
    [cache setObject:@1 forKey:@"e" cost:11];
    EXPECT_EQ(keys(), "");
}

TEST_F(CacheTest, ReleasesWhatItDrops) {
    @autoreleasepool {
        for (NSString* key in @[ @"a", @"b", @"c" ])
            [cache setObject:[[[Counted alloc] init] autorelease] forKey:key];
        cache.countLimit = 2;
    }
    EXPECT_EQ([Counted alive], 2);
    [cache removeAllObjects];
    EXPECT_EQ([Counted alive], 0);
    EXPECT_EQ(keys(), "");
}

TEST_F(CacheTest, DropsKeysThatDoNotEqualThemselves) {
    cache.countLimit = 1;
    for (int i = 0; i < 3; ++i) {
        id const key = [[[OZMImageCacheKey alloc] initWithURL:nil imageSize:CGSizeZero scale:1
                                                    fillColor:nil] autorelease];
        [cache setObject:@1 forKey:key];
    }
    [cache setObject:@2 forKey:@"a"];
    EXPECT_EQ(keys(), "a");
}

TEST_F(CacheTest, RefusesNil) {
    int raised = 0;
    for (const auto& [object, key] : {std::pair<id, id>{nil, @"a"}, {@"a", nil}}) {
        @try {
            [cache setObject:object forKey:key];
        } @catch (NSException* exception) {
            EXPECT_TRUE([exception.name isEqualToString:NSInvalidArgumentException]);
            ++raised;
        }
    }
    EXPECT_EQ(raised, 2);
    EXPECT_EQ([cache objectForKey:nil], nil);
}

TEST_F(CacheTest, ServesThreads) {
    cache.countLimit = 8;
    onThreads(4, [this] {
        for (int i = 0; i < 1000; ++i) {
            NSString* const key = [NSString stringWithFormat:@"%d", i % 16];
            [cache setObject:[[[Counted alloc] init] autorelease] forKey:key];
            [[cache objectForKey:key] description];
            if (i % 100 == 0) [cache removeAllObjects];
        }
    });
    EXPECT_LE([Counted alive], 8);
}

} // namespace
