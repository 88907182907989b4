// A serial queue has at most one owner: a thread inside dispatch_sync_f, or a thread of the queue's own,
// which ends when the next item is not asynchronous work. The owner hands the queue over to the first item
// that waits.
#include <dispatch/dispatch.h>

#include <Block.h>
#import <Foundation/Foundation.h>

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <pthread.h>
#include <string>
#include <utility>

namespace {

/// A thread in dispatch_sync_f that waits to become the owner.
struct Waiter {
    std::condition_variable changed;
    bool isOwner = false; // guarded by the queue's mutex
};

/// Asynchronous work, or a waiting thread.
struct Item {
    dispatch_function_t work;
    void* context;
    Waiter* waiter;
};

} // namespace

struct dispatch_queue_s {
    explicit dispatch_queue_s(const char* name) : label(name ? name : "") {}

    const std::string label;
    std::atomic<size_t> references{1};
    std::mutex mutex;
    bool hasOwner = false;    // guarded by mutex
    std::deque<Item> waiting; // guarded by mutex
};

namespace {

/// Marks a queue as owned by this thread while it runs the queue's work.
class Ownership {
public:
    explicit Ownership(dispatch_queue_t queue) : m_queue(queue), m_outer(innermost) { innermost = this; }
    ~Ownership() { innermost = m_outer; }
    Ownership(const Ownership&) = delete;
    Ownership& operator=(const Ownership&) = delete;

    static bool isHeld(dispatch_queue_t queue) {
        for (const Ownership* held = innermost; held; held = held->m_outer)
            if (held->m_queue == queue) return true;
        return false;
    }

private:
    static thread_local const Ownership* innermost;

    dispatch_queue_t m_queue;
    const Ownership* m_outer;
};
thread_local const Ownership* Ownership::innermost = nullptr;

void run(dispatch_queue_t queue, dispatch_function_t work, void* context) {
    const Ownership ownership(queue);
    @autoreleasepool {
        work(context);
    }
}

void handOver(dispatch_queue_t queue, std::unique_lock<std::mutex> lock);

void runAsynchronousWork(dispatch_queue_t queue) {
    std::unique_lock lock(queue->mutex);
    while (!queue->waiting.empty() && !queue->waiting.front().waiter) {
        const Item item = queue->waiting.front();
        queue->waiting.pop_front();
        lock.unlock();
        run(queue, item.work, item.context);
        lock.lock();
    }
    handOver(queue, std::move(lock));
}

void* runThread(void* context) {
    const auto queue = static_cast<dispatch_queue_t>(context);
    GSRegisterCurrentThread();
    runAsynchronousWork(queue);
    dispatch_release(queue);
    GSUnregisterCurrentThread();
    return nullptr;
}

/// Makes a new thread the owner. Aborts if none can be started: the caller can't run the work itself, because
/// it may hold locks that the work needs, and perhaps no other thread ever uses the queue. Call without the
/// queue's lock.
void startThread(dispatch_queue_t queue) {
    dispatch_retain(queue);
    pthread_t thread;
    if (const int error = pthread_create(&thread, nullptr, runThread, queue)) {
        std::fprintf(stderr,
                     "dispatch_async: no thread can be started for queue \"%s\": %s; "
                     "allow more memory or threads (ulimit -v, -u)\n",
                     queue->label.c_str(), std::strerror(error));
        std::abort();
    }
    pthread_detach(thread);
}

/// Called by the owner, which thereby gives up ownership.
void handOver(dispatch_queue_t queue, std::unique_lock<std::mutex> lock) {
    if (queue->waiting.empty()) {
        queue->hasOwner = false;
        return;
    }
    Waiter* const waiter = queue->waiting.front().waiter;
    if (!waiter) {
        lock.unlock();
        startThread(queue);
        return;
    }
    queue->waiting.pop_front();
    waiter->isOwner = true;
    waiter->changed.notify_one(); // under the lock, because the waiter lives on the stack of its thread
}

struct HandOverAtScopeExit {
    dispatch_queue_t queue;
    ~HandOverAtScopeExit() { handOver(queue, std::unique_lock(queue->mutex)); }
};

void invokeBlock(void* block) { reinterpret_cast<dispatch_block_t>(block)(); }

void invokeAndReleaseBlock(void* block) {
    invokeBlock(block);
    _Block_release(block);
}

} // namespace

dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t) {
    return new dispatch_queue_s(label);
}

const char* dispatch_queue_get_label(dispatch_queue_t queue) { return queue->label.c_str(); }

void dispatch_retain(dispatch_queue_t queue) { queue->references.fetch_add(1, std::memory_order_relaxed); }

void dispatch_release(dispatch_queue_t queue) {
    if (queue->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete queue;
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    {
        const std::lock_guard lock(queue->mutex);
        queue->waiting.push_back({work, context, nullptr});
        if (std::exchange(queue->hasOwner, true)) return;
    }
    startThread(queue);
}

void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    if (Ownership::isHeld(queue)) {
        std::fprintf(
            stderr,
            "BUG IN CLIENT OF LIBDISPATCH: dispatch_sync called on queue already owned by current thread: "
            "\"%s\"\n",
            queue->label.c_str());
        std::abort();
    }
    {
        std::unique_lock lock(queue->mutex);
        if (std::exchange(queue->hasOwner, true)) {
            Waiter waiter;
            queue->waiting.push_back({nullptr, nullptr, &waiter});
            waiter.changed.wait(lock, [&] { return waiter.isOwner; });
        }
    }
    const HandOverAtScopeExit handOverAtScopeExit{queue};
    run(queue, work, context);
}

void dispatch_once_f(dispatch_once_t* predicate, void* context, dispatch_function_t work) {
    enum : dispatch_once_t { kNew = 0, kRunning = 1, kDone = ~dispatch_once_t{0} };
    const std::atomic_ref state(*predicate);
    dispatch_once_t seen = state.load(std::memory_order_acquire);
    if (seen == kDone) return;
    if (seen == kNew && state.compare_exchange_strong(seen, kRunning, std::memory_order_acquire)) {
        @autoreleasepool {
            work(context);
        }
        state.store(kDone, std::memory_order_release);
        state.notify_all();
        return;
    }
    while (seen == kRunning) {
        state.wait(kRunning, std::memory_order_acquire);
        seen = state.load(std::memory_order_acquire);
    }
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    dispatch_async_f(queue, _Block_copy(block), invokeAndReleaseBlock);
}

void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block) {
    dispatch_sync_f(queue, block, invokeBlock);
}

void dispatch_once(dispatch_once_t* predicate, dispatch_block_t block) {
    dispatch_once_f(predicate, block, invokeBlock);
}
