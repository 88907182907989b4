// Containers as an application uses them.
#include "api_test_support.h"

#import <Ozmira/Ozmira.h>

#include <array>

/// Records the changes of a container's options.
@interface OptionsObserver : NSObject {
@public
    NSMutableArray* changes;      // old and new value of each notification
    NSUInteger valueWhenNotified; // read from the container during the last notification
}
@end
@implementation OptionsObserver
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
    (void)keyPath, (void)context;
    [changes addObject:[change objectForKey:NSKeyValueChangeOldKey]];
    [changes addObject:[change objectForKey:NSKeyValueChangeNewKey]];
    valueWhenNotified = [(OZMContainer*)object documentCacheAutoPurgeOptions];
}
@end

/// Counts its live instances (through `Counted`) and its purges.
@interface CountedContainer : OZMContainer {
    Counted* _counted;
@public
    std::atomic<int> purges;
}
@end
@implementation CountedContainer
- (instancetype)initWithURL:(NSURL*)url error:(NSError**)error {
    _counted = [[Counted alloc] init];
    return [super initWithURL:url error:error];
}
- (void)dealloc {
    [_counted release];
    [super dealloc];
}
- (void)purgeDocumentCache {
    ++purges;
    [super purgeDocumentCache];
}
@end

namespace {

class ContainerTest : public ApiTest {
public:
    ~ContainerTest() override { purgeContainers(); }

    OZMContainer* container() const { return [OZMContainer containerWithURL:folder() error:nullptr]; }
    static void purgeContainers() {
        [OZMContainer purgeContainerCache];
        [OZMContainer containerCacheCount]; // waits until the purge is done
    }
    static void purge(OZMContainer* container) {
        [container purgeDocumentCache];
        [container documentCacheCount]; // waits until the purge is done
    }
};

TEST_F(ContainerTest, OneContainerPerFolderUntilPurged) {
    EXPECT_EQ([OZMContainer containerWithURL:nil error:nullptr], nil);
    EXPECT_EQ([OZMContainer containerCacheCount], 0u);
    NSError* error = nil;
    OZMContainer* const first = [OZMContainer containerWithURL:folder() error:&error];
    EXPECT_TRUE([first.url isEqual:folder()]);
    EXPECT_EQ(container(), first);
    OZMContainer* const missing = [OZMContainer containerWithURL:url("missing") error:&error];
    EXPECT_NE(missing, nil);
    EXPECT_NE(missing, first);
    EXPECT_EQ(error, nil);
    EXPECT_EQ([OZMContainer containerCacheCount], 2u);
    purgeContainers();
    EXPECT_EQ([OZMContainer containerCacheCount], 0u);
    EXPECT_NE(container(), first);
}

TEST_F(ContainerTest, ServesDocumentsByName) {
    for (const char* name : {"icons/logo.svg", "icons/sub/inner.svg", "icons/c:d\\e%20.svg", "icons/a.b",
                             "icons/dots.in.svg", "outer.svg"})
        write(name, kUnfilled);
    OZMContainer* const container = [OZMContainer containerWithURL:url("icons") error:nullptr];
    OZMDocument* const logo = [container documentNamed:@"logo"];
    EXPECT_TRUE([logo.url isEqual:url("icons/logo.svg")]);
    EXPECT_EQ([container documentNamed:[NSMutableString stringWithString:@"logo"]], logo);
    EXPECT_EQ([container documentCacheCount], 1u);
    OZMDocument* const withExtension = [container documentNamed:@"logo.svg"];
    EXPECT_NE(withExtension, nil);
    EXPECT_NE(withExtension, logo);
    for (NSString* name in @[ @"sub/inner", @"/sub/inner", @"../outer", @"c:d\\e%20", @"a.b" ])
        EXPECT_NE([container documentNamed:name], nil) << name.UTF8String;
    for (NSString* name in @[ @"", @"..", @"/", @"logo.txt", @"/logo/x", @"a\nb", @"dots.in" ])
        EXPECT_EQ([container documentNamed:name], nil) << name.UTF8String;
    EXPECT_EQ([container documentCacheCount], 14u);
    EXPECT_EQ([container documentNamed:nil], nil);
    EXPECT_EQ([container documentCacheCount], 14u);
    NSString* const elsewhere = [@"http://localhost" stringByAppendingString:url("icons").path];
    OZMContainer* const remote = [OZMContainer containerWithURL:[NSURL URLWithString:elsewhere]
                                                          error:nullptr];
    EXPECT_FALSE([remote documentNamed:@"logo"].url.isFileURL); // the path alone counts
}

TEST_F(ContainerTest, FailedNameFailsUntilPurged) {
    OZMContainer* const container = this->container();
    EXPECT_EQ([container documentNamed:@"late"], nil);
    write("late.svg", kUnfilled);
    EXPECT_EQ([container documentNamed:@"late"], nil);
    EXPECT_EQ([container documentCacheCount], 1u);
    purge(container);
    EXPECT_EQ([container documentCacheCount], 0u);
    OZMDocument* const document = [container documentNamed:@"late"];
    EXPECT_NE(document, nil);
    std::filesystem::remove(path("late.svg"));
    purge(container);
    EXPECT_EQ([document concreteDocument], nil); // purged with the cache, and the file is gone
}

TEST_F(ContainerTest, ListsEverythingButHiddenFiles) {
    for (const char* name : {"b.svg", "a.svg", "note.txt", "plain", "two.dots.svg", "c:d\\e.svg",
                             ".hidden.svg", "sub/inner.svg"})
        write(name, "");
    NSArray* const names = [[container() documentNames] sortedArrayUsingSelector:@selector(compare:)];
    EXPECT_TRUE([names isEqual:(@[ @"a", @"b", @"c:d\\e", @"note", @"plain", @"sub", @"two.dots" ])])
        << names.description.UTF8String;
    std::filesystem::create_directory(path("empty"));
    for (NSURL* nothing in
         @[ url("empty"), url("missing"), url("a.svg"), [NSURL URLWithString:@"http://localhost/"] ])
        EXPECT_TRUE([[[OZMContainer containerWithURL:nothing error:nullptr] documentNames] isEqual:@[]])
            << nothing.description.UTF8String;
    OZMContainer* const nowhere = [[[OZMContainer alloc] initWithURL:nil error:nullptr] autorelease];
    EXPECT_TRUE([[nowhere documentNames] isEqual:@[]]);
    EXPECT_EQ([nowhere documentNamed:@"a"], nil);
}

TEST_F(ContainerTest, MemoryWarningPurgesIfBitZeroIsSet) {
    write("a.svg", kUnfilled);
    CountedContainer* const container = [CountedContainer containerWithURL:folder() error:nullptr];
    EXPECT_EQ(container.documentCacheAutoPurgeOptions, 1u);
    for (const auto& [options, purges] :
         {std::pair{1u, true}, {0u, false}, {0u, false}, {2u, false}, {3u, true}, {3u, true}, {1u, true}}) {
        container.documentCacheAutoPurgeOptions = options;
        EXPECT_EQ(container.documentCacheAutoPurgeOptions, options);
        [container documentNamed:@"a"];
        container->purges = 0;
        postMemoryWarning();
        EXPECT_EQ([container documentCacheCount], purges ? 0u : 1u) << options;
        EXPECT_EQ(container->purges, purges ? 1 : 0) << options;
    }
}

TEST_F(ContainerTest, NotifiesObserversOnceOfEachChange) {
    OZMContainer* const container = this->container();
    OptionsObserver* const observer = [[[OptionsObserver alloc] init] autorelease];
    observer->changes = [NSMutableArray array];
    [container addObserver:observer
                forKeyPath:@"documentCacheAutoPurgeOptions"
                   options:NSKeyValueObservingOptionOld | NSKeyValueObservingOptionNew
                   context:nullptr];
    EXPECT_FALSE([OZMContainer automaticallyNotifiesObserversForKey:@"documentCacheAutoPurgeOptions"]);
    container.documentCacheAutoPurgeOptions = 0;
    EXPECT_EQ(observer->valueWhenNotified, 0u);
    container.documentCacheAutoPurgeOptions = 1;
    [container removeObserver:observer forKeyPath:@"documentCacheAutoPurgeOptions"];
    EXPECT_TRUE([observer->changes isEqual:(@[ @1, @0, @0, @1 ])])
        << observer->changes.description.UTF8String;
}

TEST_F(ContainerTest, IsDestroyedWhenReleasedAndStopsObserving) {
    write("a.svg", kUnfilled);
    for (const unsigned options : {1u, 0u}) {
        @autoreleasepool {
            OZMContainer* const container = [CountedContainer containerWithURL:folder() error:nullptr];
            [container documentNamed:@"a"];
            container.documentCacheAutoPurgeOptions = options;
            [container purgeDocumentCache]; // still under way when the container is released
        }
        purgeContainers();
        for (int i = 0; i < 1000 && [Counted alive] != 0; ++i) [NSThread sleepForTimeInterval:0.001];
        EXPECT_EQ([Counted alive], 0);
        postMemoryWarning();
    }
}

TEST_F(ContainerTest, ServesSeveralThreadsWhilePurging) {
    write("a.svg", redOverBlue(4, 2));
    write("b.svg", redOverBlue(4, 2));
    NSURL* const folder = this->folder();
    onThreads(2, [folder] {
        for (int i = 0; i < 1000; ++i) {
            @autoreleasepool {
                OZMContainer* const container = [OZMContainer containerWithURL:folder error:nullptr];
                OZMDocument* const document = [container documentNamed:i % 2 ? @"a" : @"b"];
                EXPECT_EQ(document.viewPortSize.width, 4);
                EXPECT_EQ([container documentNamed:@"missing"], nil);
                if (i % 7 == 0) [container purgeDocumentCache];
                if (i % 50 == 0) container.documentCacheAutoPurgeOptions = i % 100 ? 1 : 0;
                if (i % 100 == 0) [OZMContainer purgeContainerCache];
                if (i % 200 == 0) EXPECT_EQ([container documentNames].count, 2u);
            }
        }
    });
}

TEST_F(ContainerTest, ThreadsGetTheSameObjects) {
    write("a.svg", kUnfilled);
    NSString* const folder = this->folder().absoluteString;
    std::array<std::atomic<void*>, 200> containers{}, documents{};
    const auto isFirstOrSame = [](std::atomic<void*>& slot, void* object) {
        void* first = nullptr;
        return slot.compare_exchange_strong(first, object) || first == object;
    };
    onThreads(2, [&] {
        for (size_t i = 0; i < containers.size(); ++i) {
            NSURL* const url = [NSURL URLWithString:[folder stringByAppendingFormat:@"?%zu", i]];
            OZMContainer* const container = [OZMContainer containerWithURL:url error:nullptr];
            EXPECT_TRUE(isFirstOrSame(containers[i], container));
            EXPECT_TRUE(isFirstOrSame(documents[i], [container documentNamed:@"a"]));
        }
    });
    EXPECT_NE(documents.back(), nullptr);
    EXPECT_EQ([OZMContainer containerCacheCount], containers.size());
}

TEST_F(ContainerTest, MayBeDestroyedDuringMemoryWarnings) {
    write("a.svg", kUnfilled);
    NSURL* const folder = this->folder();
    std::atomic<int> started = 0;
    onThreads(4, [&] {
        const bool posts = started++ % 2;
        for (int i = 0; i < 500; ++i) {
            @autoreleasepool {
                if (posts) {
                    postMemoryWarning();
                    continue;
                }
                OZMContainer* const container = [[[OZMContainer alloc] initWithURL:folder
                                                                             error:nullptr] autorelease];
                EXPECT_NE([container documentNamed:@"a"], nil);
                if (i % 2) container.documentCacheAutoPurgeOptions = 0;
            }
        }
    });
}

} // namespace
