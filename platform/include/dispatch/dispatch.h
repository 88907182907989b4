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
/// Set it to 0 before its first use; it must have static storage.
typedef intptr_t dispatch_once_t;

#define DISPATCH_QUEUE_SERIAL ((dispatch_queue_attr_t)0)

/// A queue that runs one piece of work at a time, in the order in which it was added, each inside an
/// autorelease pool of its own. What one piece wrote the next one sees. `label` is copied and may be NULL.
/// The caller owns a reference.
dispatch_queue_t dispatch_queue_create(const char* label, dispatch_queue_attr_t attr);
/// The queue's label, valid as long as the queue lives; "" when it was made without one.
const char* dispatch_queue_get_label(dispatch_queue_t queue);
/// Adds a reference.
void dispatch_retain(dispatch_queue_t queue);
/// Drops a reference. Work that was added before is still done.
void dispatch_release(dispatch_queue_t queue);

/// Adds work and returns; a thread started for that purpose runs it. Ends the program with a message when no
/// thread can be started.
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
/// Runs work on the calling thread when its turn comes, and returns when it is done. Called from work of the
/// same queue it could never return: it ends the program with a message.
void dispatch_sync_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
/// Runs work once in the life of the process; other callers return when it is done.
void dispatch_once_f(dispatch_once_t* predicate, void* context, dispatch_function_t work);

#ifdef __BLOCKS__
typedef void (^dispatch_block_t)(void);
/// As dispatch_async_f; the block is copied.
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
/// As dispatch_sync_f.
void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block);
/// As dispatch_once_f.
void dispatch_once(dispatch_once_t* predicate, dispatch_block_t block);
#endif

#ifdef __cplusplus
}
#endif
