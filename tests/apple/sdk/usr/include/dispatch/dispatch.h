#pragma once
#include <stddef.h>
#include <stdint.h>
#include <sys/cdefs.h>

#ifdef __OBJC__
// Queues are Objective-C objects, which automatic reference counting manages.
@protocol OS_dispatch_object
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
#if __has_feature(objc_arc)
#define OS_RELEASE_BY_ARC __attribute__((unavailable("automatic reference counting releases queues")))
#else
#define OS_RELEASE_BY_ARC
#endif
@class NSObject;
typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_object>* dispatch_queue_attr_t;
#else
#define OS_RELEASE_BY_ARC
typedef struct dispatch_object_s* dispatch_object_t;
typedef struct dispatch_queue_s* dispatch_queue_t;
typedef struct dispatch_queue_attr_s* dispatch_queue_attr_t;
#endif
typedef void (*dispatch_function_t)(void*);
typedef intptr_t dispatch_once_t;

#pragma clang assume_nonnull begin
__BEGIN_DECLS
void dispatch_async_f(dispatch_queue_t queue, void* _Nullable context, dispatch_function_t work);
void dispatch_once_f(dispatch_once_t* predicate, void* _Nullable context, dispatch_function_t work);
dispatch_queue_t dispatch_queue_create(const char* _Nullable label, dispatch_queue_attr_t _Nullable attr);
void dispatch_release(dispatch_object_t object) OS_RELEASE_BY_ARC;
void dispatch_sync_f(dispatch_queue_t queue, void* _Nullable context, dispatch_function_t work);
__END_DECLS
#pragma clang assume_nonnull end
