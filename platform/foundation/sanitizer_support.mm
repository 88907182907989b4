// What the sanitizers must be told in every program that links GNUstep, whose libraries are not instrumented.
#import <Foundation/Foundation.h>

#include <objc/message.h>
#include <objc/runtime.h>

#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>

// GNUstep keeps no frame pointers: only the slow unwinder sees who allocated.
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
// The runtime's class and selector tables, and method lists that Foundation asked for, are never freed.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:objc_malloc\n"
           "leak:class_copyMethodList\n";
}

namespace {

id send(id receiver, const char* name) {
    const SEL selector = sel_registerName(name);
    return objc_msg_lookup(receiver, selector)(receiver, selector);
}

// Foundation keeps what its classes allocate when they are first used. This runs before any `+load`, and so
// before the messages of this file itself can be sent: hence the bare runtime.
__attribute__((constructor(101))) void useFoundationOnce() {
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

// The runtime sends `+initialize` under its lock, and Foundation sends messages, which take that lock, under
// its own; its bundles take two of theirs in either order. No smaller name would do: its methods have no
// symbols.
extern "C" const char* __tsan_default_suppressions() { return "deadlock:libgnustep-base.so\n"; }

// In place of NSObject's method, whose reference count is atomic unseen: what a thread did with an object
// before it released it comes before the object's dealloc, and before nothing else. A category reaches the
// classes used before this file is loaded; changing the method's implementation would not.
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
