// The replacements for GNUstep's NSCache and its default notification center.
#include "api_test_support.h"

#import <Ozmira/Ozmira.h>

#include <thread>

/// Passes each notification to a function, and stops observing when it is deallocated.
@interface Listener : NSObject {
@public
    std::function<void(NSNotification*)> heard;
}
@end
@implementation Listener
- (void)hear:(NSNotification*)notification {
    heard(notification);
}
- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}
@end

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

TEST_F(CacheTest, ComparesKeysByEqualityAndReplacesValues) {
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

TEST_F(CacheTest, StaysWithinItsCostLimit) {
    cache.totalCostLimit = 10;
    [cache setObject:@1 forKey:@"a" cost:6];
    [cache setObject:@1 forKey:@"b" cost:4];
    EXPECT_EQ(keys(), "ab");
    [cache setObject:@1 forKey:@"a" cost:3]; // a total of 7
    [cache setObject:@1 forKey:@"c" cost:3];
    EXPECT_EQ(keys(), "abc");
    [cache setObject:@1 forKey:@"d" cost:1];
    EXPECT_EQ(keys(), "bcd"); // "a" was used least recently
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

TEST_F(CacheTest, ServesSeveralThreads) {
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

class NotificationTest : public ApiTest {
public:
    void observe(Listener* listener, NSString* name, id object = nil) const {
        [center addObserver:listener selector:@selector(hear:) name:name object:object];
    }
    Listener* listen(NSString* name, const std::function<void(NSNotification*)>& heard) const {
        Listener* const made = [[[Listener alloc] init] autorelease];
        made->heard = heard;
        observe(made, name);
        return made;
    }

    NSNotificationCenter* const center = [NSNotificationCenter defaultCenter];
};

TEST_F(NotificationTest, ReachObserversOfNameAndSenderUntilRemoved) {
    const id a = @"a", b = @"b";
    struct {
        NSString* name;
        id object;
        std::string heard; // after removing the observer by this name and object
    } const cases[] = {{nil, nil, ""},
                       {@"n", nil, "na ma ma nb n- m- "},
                       {nil, a, "na na ma nb nb n- n- m- "},
                       {@"n", a, "na na ma ma nb nb n- n- m- "},
                       {@"m", b, "na na na ma ma nb nb n- n- m- "}};
    for (const auto& test : cases) {
        std::string heard;
        Listener* const listener = listen(nil, [&heard](NSNotification* notification) {
            const id sender = notification.object ? notification.object : @"-";
            heard += [[NSString stringWithFormat:@"%@%@%@", notification.name, sender,
                                                 [notification.userInfo objectForKey:@"end"]] UTF8String];
        });
        for (const auto& [name, object] : {std::pair{@"n", a}, {@"n", id(nil)}, {@"m", a}})
            observe(listener, [NSMutableString stringWithString:name], object);
        [center removeObserver:listener name:test.name object:test.object];
        for (const auto& [name, object] :
             {std::pair{@"n", a}, {@"m", a}, {@"n", b}, {@"n", id(nil)}, {@"m", id(nil)}})
            [center postNotificationName:name object:object userInfo:@{@"end" : @" "}];
        EXPECT_EQ(heard, test.heard);
        [center removeObserver:listener];
    }
}

TEST_F(NotificationTest, HandlersMayAddAndRemoveObservers) {
    std::string heard;
    Listener* late = nil;
    Listener* removed = nil;
    Listener* first = listen(@"n", [&](NSNotification*) {
        heard += "first ";
        for (Listener* each : {first, removed}) [center removeObserver:each];
        late = listen(@"n", [&](NSNotification*) { heard += "late "; });
    });
    removed = listen(@"n", [&](NSNotification*) { heard += "removed "; });
    for (int i = 0; i < 2; ++i) [center postNotificationName:@"n" object:nil];
    EXPECT_EQ(heard, "first late ");
    [center removeObserver:late];
}

TEST_F(NotificationTest, RemovalWaitsForTheRemovedObserversHandlerOnly) {
    std::atomic<int> step = 0;
    Listener* const idle = listen(@"m", {});
    Listener* const busy = listen(@"n", [&](NSNotification*) {
        step = 1;
        step.notify_one();
        step.wait(1);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        step = 3;
    });
    std::thread remover([&] {
        step.wait(0);
        [center removeObserver:idle];
        EXPECT_EQ(step.exchange(2), 1);
        step.notify_one();
        [center removeObserver:busy];
        EXPECT_EQ(step, 3);
    });
    [center postNotificationName:@"n" object:nil];
    remover.join();
}

} // namespace
