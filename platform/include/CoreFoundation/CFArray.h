// Immutable arrays, as far as lists of colours need them.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CFArray* CFArrayRef;

/// How an array manages its values. Only `kCFTypeArrayCallBacks` (retain and release) and NULL (borrow) are
/// supported.
typedef struct CFArrayCallBacks {
    CFIndex version;
} CFArrayCallBacks;

CF_EXTERN_C_BEGIN

/// The values are objects, retained by the array.
extern const CFArrayCallBacks kCFTypeArrayCallBacks;

/// Type id of arrays.
CFTypeID CFArrayGetTypeID(void);
/// An array of `count` values. NULL when `count` is negative, when `values` is NULL and `count` is not 0, and
/// when memory is short. The caller owns the result.
CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks);
/// Number of values; 0 for NULL.
CFIndex CFArrayGetCount(CFArrayRef array);
/// The value at an index, borrowed; NULL when the index is out of range.
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

CF_EXTERN_C_END
