#pragma once
#include <stddef.h>
#include <sys/types.h>
#define EXIT_SUCCESS 0
#define EXIT_FAILURE 1
#define RAND_MAX 0x7fffffff
#define MB_CUR_MAX 4
typedef struct {
    int quot, rem;
} div_t;
typedef struct {
    long quot, rem;
} ldiv_t;
typedef struct {
    long long quot, rem;
} lldiv_t;
__BEGIN_DECLS
void _Exit(int) __attribute__((noreturn));
void abort(void) __attribute__((noreturn));
int abs(int);
void* aligned_alloc(size_t, size_t);
int atexit(void (*)(void));
double atof(const char*);
int atoi(const char*);
long atol(const char*);
long long atoll(const char*);
void* bsearch(const void*, const void*, size_t, size_t, int (*)(const void*, const void*));
void* calloc(size_t, size_t);
div_t div(int, int);
void exit(int) __attribute__((noreturn));
void free(void*);
char* getenv(const char*);
long labs(long);
ldiv_t ldiv(long, long);
long long llabs(long long);
lldiv_t lldiv(long long, long long);
void* malloc(size_t);
int mblen(const char*, size_t);
size_t mbstowcs(__WCHAR_TYPE__*, const char*, size_t);
int mbtowc(__WCHAR_TYPE__*, const char*, size_t);
int posix_memalign(void**, size_t, size_t);
void qsort(void*, size_t, size_t, int (*)(const void*, const void*));
int rand(void);
void* realloc(void*, size_t);
void srand(unsigned);
double strtod(const char*, char**);
float strtof(const char*, char**);
long strtol(const char*, char**, int);
long double strtold(const char*, char**);
long long strtoll(const char*, char**, int);
unsigned long strtoul(const char*, char**, int);
unsigned long long strtoull(const char*, char**, int);
int system(const char*);
size_t wcstombs(char*, const __WCHAR_TYPE__*, size_t);
int wctomb(char*, __WCHAR_TYPE__);
__END_DECLS
