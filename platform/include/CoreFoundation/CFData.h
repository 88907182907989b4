// Immutable blocks of bytes.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CFData* CFDataRef;

CF_EXTERN_C_BEGIN

/// Type id of data objects.
CFTypeID CFDataGetTypeID(void);
/// A copy of `length` bytes. NULL when `length` is negative, when `bytes` is NULL and `length` is not 0, and
/// when memory is short. The caller owns the result.
CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length);
/// Number of bytes; 0 for NULL.
CFIndex CFDataGetLength(CFDataRef data);
/// The bytes, valid as long as the object lives; NULL for NULL.
const UInt8* CFDataGetBytePtr(CFDataRef data);

CF_EXTERN_C_END
