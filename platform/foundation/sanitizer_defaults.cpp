// What the sanitizers are told in every program that links GNUstep, whose libraries are not instrumented.

#if __has_feature(address_sanitizer)
// GNUstep keeps no frame pointers: only the slow unwinder sees who allocated.
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
// The runtime's class and selector tables, and method lists that Foundation asked for, are never freed.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:objc_malloc\n"
           "leak:class_copyMethodList\n";
}
#endif

#if __has_feature(thread_sanitizer)
// Class initialisation takes the runtime's lock and Foundation's in either order, guarded by a third.
extern "C" const char* __tsan_default_suppressions() {
    return "deadlock:libobjc.so.4\n"
           "deadlock:libgnustep-base.so\n";
}
#endif
