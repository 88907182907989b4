#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <TargetConditionals.h>

#ifdef __cplusplus
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#define CF_EXPORT extern "C"
#else
#define CF_EXTERN_C_BEGIN
#define CF_EXTERN_C_END
#define CF_EXPORT extern
#endif
#define CF_ENUM(type, name)                                                                                  \
    enum __attribute__((enum_extensibility(open))) name : type name;                                         \
    enum name : type
#ifdef __cplusplus
#define CF_OPTIONS(type, name)                                                                               \
    type name;                                                                                               \
    enum __attribute__((flag_enum, enum_extensibility(open))) : type
#else
#define CF_OPTIONS(type, name)                                                                               \
    enum __attribute__((flag_enum, enum_extensibility(open))) name : type name;                              \
    enum name : type
#endif
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#define CF_BRIDGED_TYPE(type) __attribute__((objc_bridge(type)))

typedef unsigned char Boolean;
typedef uint8_t UInt8;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef const void* CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED_TYPE(NSData) __CFData* CFDataRef;

CF_EXTERN_C_BEGIN
CFTypeRef _Null_unspecified CFRetain(CFTypeRef _Null_unspecified cf);
void CFRelease(CFTypeRef _Null_unspecified cf);
CFIndex CFDataGetLength(CFDataRef _Null_unspecified data);
const UInt8* _Null_unspecified CFDataGetBytePtr(CFDataRef _Null_unspecified data);
CF_EXTERN_C_END
