#pragma once
#include <sys/types.h>
#define CLOCKS_PER_SEC 1000000
struct timespec {
    time_t tv_sec;
    long tv_nsec;
};
struct tm {
    int tm_sec, tm_min, tm_hour, tm_mday, tm_mon, tm_year, tm_wday, tm_yday, tm_isdst;
    long tm_gmtoff;
    char* tm_zone;
};
typedef enum {
    CLOCK_REALTIME = 0,
    CLOCK_MONOTONIC = 6,
    CLOCK_PROCESS_CPUTIME_ID = 12,
    CLOCK_THREAD_CPUTIME_ID = 16
} clockid_t;
#define CLOCK_REALTIME CLOCK_REALTIME
#define CLOCK_MONOTONIC CLOCK_MONOTONIC
#define TIME_UTC 1
__BEGIN_DECLS
char* asctime(const struct tm*);
clock_t clock(void);
int clock_gettime(clockid_t, struct timespec*);
char* ctime(const time_t*);
double difftime(time_t, time_t);
struct tm* gmtime(const time_t*);
struct tm* localtime(const time_t*);
time_t mktime(struct tm*);
int nanosleep(const struct timespec*, struct timespec*);
size_t strftime(char*, size_t, const char*, const struct tm*);
time_t time(time_t*);
int timespec_get(struct timespec*, int);
__END_DECLS
