#include <sys/cdefs.h>
__BEGIN_DECLS
void __assert_rtn(const char*, const char*, int, const char*) __attribute__((noreturn));
__END_DECLS
#undef assert
#ifdef NDEBUG
#define assert(e) ((void)0)
#else
#define assert(e) ((e) ? (void)0 : __assert_rtn(__func__, __FILE__, __LINE__, #e))
#endif
#if !defined(__cplusplus) && !defined(static_assert)
#define static_assert _Static_assert
#endif
