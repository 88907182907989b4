// Settings of the sanitizers for every program that links GNUstep, whose libraries are not instrumented.
#import <Foundation/Foundation.h>

#include <objc/message.h>
#include <objc/runtime.h>

#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>

// GNUstep is compiled without frame pointers, so only the slow unwinder finds the callers of an allocation.
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
// The runtime never frees its class and selector tables, nor Foundation the method lists that it copies.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:objc_malloc\n"
           "leak:class_copyMethodList\n";
}

namespace {

id send(id receiver, const char* name) {
    const SEL selector = sel_registerName(name);
    return objc_msg_lookup(receiver, selector)(receiver, selector);
}

// Foundation never frees what its classes allocate on first use. This function runs before any `+load`, when
// this file's own message expressions do not work yet, so it calls the runtime directly.
__attribute__((constructor(101))) void allocateFoundationSingletons() {
    const __lsan::ScopedDisabler disabler;
    id const pool = send(objc_getClass("NSAutoreleasePool"), "new");
    send(objc_getClass("NSMutableDictionary"), "dictionary");
    send(objc_getClass("NSUserDefaults"), "standardUserDefaults");
    send(pool, "drain");
}

} // namespace
#endif

#if __has_feature(thread_sanitizer)
#include <sanitizer/tsan_interface.h>

// The runtime sends `+initialize` while it holds its lock; Foundation sends messages, which take that lock,
// while it holds its own. Its bundles take two of their locks in either order. The suppression names the
// whole library, because Objective-C methods in it have no symbols.
extern "C" const char* __tsan_default_suppressions() { return "deadlock:libgnustep-base.so\n"; }

// Replaces NSObject's method, whose atomic reference count the sanitizer does not see. It declares that
// whatever a thread did with an object before releasing it happens before the object's dealloc, and nothing
// more. A category also reaches classes that were used before this file is loaded; exchanging the method's
// implementation would not.
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
@implementation NSObject (OZMSanitizerSupport)
- (oneway void)release {
    __tsan_release(self);
    if (!NSDecrementExtraRefCountWasZero(self)) return;
    __tsan_acquire(self);
    [self dealloc];
}
@end
#endif
