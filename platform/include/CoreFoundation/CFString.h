// Immutable strings: the names of colour spaces.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef const struct CFString* CFStringRef;
typedef uint32_t CFStringEncoding;

enum { kCFStringEncodingUTF8 = 0x08000100, kCFStringEncodingASCII = 0x0600 };

CF_EXTERN_C_BEGIN

/// Type id of strings.
CFTypeID CFStringGetTypeID(void);
/// The text, valid as long as the object lives; NULL for NULL and for an encoding other than UTF-8 and ASCII.
const char* CFStringGetCStringPtr(CFStringRef string, CFStringEncoding encoding);

CF_EXTERN_C_END
