// Immutable strings of UTF-8 text: what the names of colour spaces need.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CFString* CFStringRef;
typedef uint32_t CFStringEncoding;

enum { kCFStringEncodingUTF8 = 0x08000100, kCFStringEncodingASCII = 0x0600 };

CF_EXTERN_C_BEGIN

/// Type id of strings.
CFTypeID CFStringGetTypeID(void);
/// A copy of NUL-terminated text. NULL for NULL text, for an encoding other than UTF-8 and ASCII, and when
/// memory is short. The caller owns the result.
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text, CFStringEncoding encoding);
/// Number of UTF-16 units of the text; 0 for NULL.
CFIndex CFStringGetLength(CFStringRef string);
/// The text, valid as long as the object lives; NULL for NULL and for an encoding other than UTF-8 and ASCII.
const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding);

CF_EXTERN_C_END
