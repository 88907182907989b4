// The basic types of Darwin on 64-bit processors.
#pragma once
#include <stddef.h>
#include <sys/cdefs.h>
typedef signed char __int8_t;
typedef unsigned char __uint8_t;
typedef short __int16_t;
typedef unsigned short __uint16_t;
typedef int __int32_t;
typedef unsigned int __uint32_t;
typedef long long __int64_t;
typedef unsigned long long __uint64_t;
typedef struct {
    char bytes[128];
    long long alignment;
} __mbstate_t;
typedef __mbstate_t __darwin_mbstate_t;
typedef __builtin_va_list __darwin_va_list;
