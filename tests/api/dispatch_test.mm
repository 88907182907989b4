// Serial queues must behave as libdispatch documents them, in the forms that take functions and blocks.
#include "api_test_support.h"

#include <Block.h>
#include <dispatch/dispatch.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

namespace {

size_t threadCount() {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                                             std::filesystem::directory_iterator()));
}

void increment(void* number) { ++*static_cast<int*>(number); }

class DispatchTest : public ApiTest {
public:
    ~DispatchTest() override {
        dispatch_release(queue);
        dispatch_release(gate);
    }
    /// Returns when all work added to `queue` so far is done.
    void wait() const {
        dispatch_sync(queue, ^{
                      });
    }

    const dispatch_queue_t queue = dispatch_queue_create("queue", DISPATCH_QUEUE_SERIAL);
    const dispatch_queue_t gate = dispatch_queue_create("gate", DISPATCH_QUEUE_SERIAL);
};
using DispatchDeathTest = DispatchTest;

TEST_F(DispatchTest, LabelIsCopied) {
    char text[] = "label";
    dispatch_queue_t labelled = dispatch_queue_create(text, nullptr);
    dispatch_queue_t unlabelled = dispatch_queue_create(nullptr, nullptr);
    text[0] = 'x';
    EXPECT_STREQ(dispatch_queue_get_label(labelled), "label");
    EXPECT_STREQ(dispatch_queue_get_label(unlabelled), "");
    dispatch_release(labelled);
    dispatch_release(unlabelled);
}

TEST_F(DispatchTest, RunsWorkInTheOrderOfAddition) {
    std::vector<int> seen;
    std::vector<int>* const list = &seen;
    for (int i = 0; i < 600; i += 3) {
        dispatch_async(queue, ^{
            list->push_back(i);
        });
        dispatch_async(queue, ^{
            list->push_back(i + 1);
        });
        dispatch_sync(queue, ^{
            list->push_back(i + 2);
        });
    }
    std::vector<int> expected(600);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(seen, expected);
}

TEST_F(DispatchTest, SyncRunsOnTheCallingThread) {
    const size_t before = threadCount();
    __block std::thread::id where;
    dispatch_sync(queue, ^{
        dispatch_sync(gate, ^{
            where = std::this_thread::get_id();
        });
    });
    EXPECT_EQ(where, std::this_thread::get_id());
    EXPECT_LE(threadCount(), before); // threads of other tests may still be ending
}

TEST_F(DispatchTest, AsyncReturnsBeforeItsWorkIsDone) {
    __block std::thread::id where;
    dispatch_sync(gate, ^{
        dispatch_async(queue, ^{
            dispatch_sync(gate, ^{
                where = std::this_thread::get_id();
            });
        });
    });
    wait();
    EXPECT_NE(where, std::thread::id());
    EXPECT_NE(where, std::this_thread::get_id());
}

TEST_F(DispatchTest, RunsOnePieceOfWorkAtATime) {
    int number = 0;
    onThreads(4, [&] {
        for (int i = 0; i < 300; ++i) (i % 3 ? dispatch_sync_f : dispatch_async_f)(queue, &number, increment);
    });
    wait();
    EXPECT_EQ(number, 1200);
}

TEST_F(DispatchTest, RunsEachPieceOfWorkInAnAutoreleasePool) {
    static dispatch_once_t once;
    const dispatch_block_t work = ^{
        [[[Counted alloc] init] autorelease];
    };
    dispatch_sync(queue, work);
    EXPECT_EQ([Counted alive], 0);
    dispatch_once(&once, work);
    EXPECT_EQ([Counted alive], 0);
    dispatch_async(queue, work);
    wait();
    EXPECT_EQ([Counted alive], 0);
}

TEST_F(DispatchTest, BlocksKeepWhatTheyCapture) {
    __block int sum = 1;
    dispatch_sync(gate, ^{
        @autoreleasepool {
            Counted* object = [[[Counted alloc] init] autorelease];
            const auto number = std::make_shared<int>(41);
            const dispatch_block_t inner = ^{
                if ([object isKindOfClass:[Counted class]]) sum += *number;
            };
            dispatch_async(queue, ^{
                dispatch_sync(gate, inner);
            });
        }
        EXPECT_EQ([Counted alive], 1);
    });
    wait();
    EXPECT_EQ(sum, 42);
    EXPECT_EQ([Counted alive], 0);

    Counted* const borrowed = [[Counted alloc] init];
    @autoreleasepool {
        __block Counted* variable = borrowed;
        dispatch_async(queue, ^{
            [variable hash];
        });
        wait();
    }
    EXPECT_EQ(borrowed.retainCount, 1u);
    [borrowed release];
    EXPECT_EQ([Counted alive], 0);
}

TEST_F(DispatchTest, ReleasedQueueFinishesItsWork) {
    std::atomic<int> done = 0;
    std::atomic<int>* const counter = &done;
    dispatch_queue_t shortLived = dispatch_queue_create("short-lived", nullptr);
    dispatch_retain(shortLived);
    dispatch_release(shortLived);
    for (int i = 0; i < 20; ++i)
        dispatch_async(shortLived, ^{
            if (++*counter == 20) counter->notify_all();
        });
    dispatch_release(shortLived);
    for (int seen = done; seen < 20; seen = done) done.wait(seen);
    EXPECT_EQ(done, 20);
}

TEST_F(DispatchTest, OnceRunsOnceAndAllThreadsWaitForIt) {
    static dispatch_once_t once;
    static int number;
    onThreads(4, [] {
        dispatch_once_f(&once, &number, [](void* n) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            increment(n);
        });
        EXPECT_EQ(number, 1);
    });
}

TEST_F(DispatchDeathTest, SyncOnTheCurrentQueueEndsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const char* const message = "dispatch_sync called on queue already owned by current thread: \"queue\"";
    const dispatch_block_t reenter = ^{
        dispatch_sync(gate, ^{
            wait();
        });
    };
    EXPECT_DEATH(dispatch_sync(queue, reenter), message);
    EXPECT_DEATH(
        {
            dispatch_async(queue, reenter);
            wait();
        },
        message);
}

TEST_F(DispatchDeathTest, AsyncEndsTheProgramIfNoThreadCanStart) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            pthread_attr_t hugeStack;
            pthread_attr_init(&hugeStack);
            pthread_attr_setstacksize(&hugeStack, size_t{1} << 47);
            pthread_setattr_default_np(&hugeStack);
            dispatch_async(queue, ^{
                           });
            wait();
        },
        "no thread can be started for queue \"queue\"");
}

} // namespace
