// Serial queues with the interface of libdispatch. Usable from C, C++ and Objective-C.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef struct dispatch_queue_attr_s* dispatch_queue_attr_t;
typedef void (*dispatch_function_t)(void* context);
/// Must have static storage duration and be 0 before its first use.
typedef intptr_t dispatch_once_t;

#define DISPATCH_QUEUE_SERIAL ((dispatch_queue_attr_t)0)

/// Creates a queue that runs one work item at a time, in the order in which they were added, each in its own
/// autorelease pool. What one item writes is visible to the next. `label` is copied and may be NULL. The
/// caller owns a reference.
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attr);
/// The queue's label, valid as long as the queue lives; "" if it was created without one.
const char* dispatch_queue_get_label(dispatch_queue_t queue);
/// Adds a reference.
void dispatch_retain(dispatch_queue_t queue);
/// Releases a reference. Work that was already added is still run.
void dispatch_release(dispatch_queue_t queue);

/// Adds work and returns without waiting; a thread of the queue's own runs it. Aborts the program with a
/// message if no thread can be started.
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
/// Runs work on the calling thread when its turn comes, and returns when it is done. A call from work of the
/// same queue would deadlock, so it aborts the program with a message.
void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
/// Runs work once in the life of the process. All other calls return once it is done.
void dispatch_once_f(dispatch_once_t* predicate, void* context, dispatch_function_t work);

#ifdef __BLOCKS__
typedef void (^dispatch_block_t)(void);
/// Like dispatch_async_f; the block is copied.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
/// Like dispatch_sync_f.
void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block);
/// Like dispatch_once_f.
void dispatch_once(dispatch_once_t* predicate, dispatch_block_t block);
#endif

#ifdef __cplusplus
}
#endif
