#pragma once
#include <stdint.h>
#include <sys/_types.h>
typedef long ssize_t;
typedef int64_t off_t;
typedef uint16_t mode_t;
typedef int32_t dev_t;
typedef uint64_t ino_t;
typedef uint16_t nlink_t;
typedef uint32_t uid_t;
typedef uint32_t gid_t;
typedef int32_t pid_t;
typedef long time_t;
typedef unsigned long clock_t;
typedef int32_t suseconds_t;
typedef int64_t blkcnt_t;
typedef int32_t blksize_t;
