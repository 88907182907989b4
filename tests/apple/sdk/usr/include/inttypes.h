#pragma once
#include <stdint.h>
#define PRId64 "lld"
#define PRIu64 "llu"
#define PRIx64 "llx"
#define PRIu32 "u"
__BEGIN_DECLS
typedef struct {
    intmax_t quot, rem;
} imaxdiv_t;
intmax_t imaxabs(intmax_t);
imaxdiv_t imaxdiv(intmax_t, intmax_t);
intmax_t strtoimax(const char*, char**, int);
uintmax_t strtoumax(const char*, char**, int);
intmax_t wcstoimax(const __WCHAR_TYPE__*, __WCHAR_TYPE__**, int);
uintmax_t wcstoumax(const __WCHAR_TYPE__*, __WCHAR_TYPE__**, int);
__END_DECLS
