// The part of Core Foundation that all objects of the drawing library share: reference counting, type ids,
// equality. Usable from C, C++ and Objective-C.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

// The drawing library exports what stands between CF_EXTERN_C_BEGIN and CF_EXTERN_C_END, if it is a shared
// one.
#ifdef OZMIRA_SHARED
#define OZMIRA_VISIBLE_BEGIN _Pragma("GCC visibility push(default)")
#define OZMIRA_VISIBLE_END _Pragma("GCC visibility pop")
#else
#define OZMIRA_VISIBLE_BEGIN
#define OZMIRA_VISIBLE_END
#endif
#ifdef __cplusplus
#define CF_EXTERN_C_BEGIN OZMIRA_VISIBLE_BEGIN extern "C" {
#define CF_EXTERN_C_END                                                                                      \
    }                                                                                                        \
    OZMIRA_VISIBLE_END
#define CF_EXPORT extern "C"
#else
#define CF_EXTERN_C_BEGIN OZMIRA_VISIBLE_BEGIN
#define CF_EXTERN_C_END OZMIRA_VISIBLE_END
#define CF_EXPORT extern
#endif
#define CF_INLINE static inline

// Annotations that callers may use; they expand to nothing.
#ifndef CF_ASSUME_NONNULL_BEGIN
#define CF_ASSUME_NONNULL_BEGIN
#define CF_ASSUME_NONNULL_END
#endif
#ifndef CF_IMPLICIT_BRIDGING_ENABLED
#define CF_IMPLICIT_BRIDGING_ENABLED
#define CF_IMPLICIT_BRIDGING_DISABLED
#endif
#if !defined(CF_RETURNS_RETAINED) && defined(__clang__) // for clang's static analyzer
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#elif !defined(CF_RETURNS_RETAINED)
#define CF_RETURNS_RETAINED
#define CF_RETURNS_NOT_RETAINED
#endif

// CF_ENUM and CF_OPTIONS declare a type: `CF_ENUM(int32_t, Name) { ... };`. An options type stays an integer
// in C++, so that `a | b` needs no cast.
#ifdef __cplusplus
#define CF_ENUM(type, name) enum name : type
#else
#define CF_ENUM(type, name)                                                                                  \
    typedef type name;                                                                                       \
    enum
#endif
#ifdef __cplusplus
#define CF_OPTIONS(type, name)                                                                               \
    using name = type;                                                                                       \
    enum : type
#else
#define CF_OPTIONS(type, name)                                                                               \
    typedef type name;                                                                                       \
    enum
#endif

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;

/// Any reference-counted object of this library.
typedef const void* CFTypeRef;
/// Accepted but ignored: every object is allocated on the C++ heap. Pass NULL or `kCFAllocatorDefault`.
typedef const struct CFAllocator* CFAllocatorRef;

#define kCFAllocatorDefault ((CFAllocatorRef)NULL)

CF_EXTERN_C_BEGIN

/// Adds a reference and returns `cf`, which may be NULL.
CFTypeRef CFRetain(CFTypeRef cf);
/// Releases a reference; releasing the last one destroys the object. NULL is ignored.
void CFRelease(CFTypeRef cf);
/// Number of references held at this moment; 0 for NULL. For tests and debugging only.
CFIndex CFGetRetainCount(CFTypeRef cf);
/// Type id of an object, to compare with the `...GetTypeID` functions; 0 for NULL.
CFTypeID CFGetTypeID(CFTypeRef cf);
/// True if both are the same object, or strings, data, colours, colour spaces or paths of equal content.
Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2);

CF_EXTERN_C_END
