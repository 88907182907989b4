// Where an image's bytes come from: memory held by the caller, or a data object.
#pragma once

#include <CoreFoundation/CFData.h>
#include <CoreGraphics/CGBase.h>

typedef struct CGDataProvider* CGDataProviderRef;

/// Called once when the bytes are no longer needed.
typedef void (*CGDataProviderReleaseDataCallback)(void* info, const void* data, size_t size);

CF_EXTERN_C_BEGIN

/// Type id of data providers.
CFTypeID CGDataProviderGetTypeID(void);
/// A provider of `size` bytes that the caller keeps unchanged until `releaseData` (may be NULL) is called.
/// NULL when `data` is NULL and `size` is not 0, and when memory is short; `releaseData` is then not called.
/// The caller owns the result.
CGDataProviderRef CGDataProviderCreateWithData(void* info, const void* data, size_t size,
                                               CGDataProviderReleaseDataCallback releaseData);
/// A provider of a data object's bytes; NULL for NULL. The caller owns the result.
CGDataProviderRef CGDataProviderCreateWithCFData(CFDataRef data);
/// Adds a reference and returns the argument, which may be NULL.
CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider);
/// Releases a reference. NULL is ignored.
void CGDataProviderRelease(CGDataProviderRef provider);
/// A copy of the bytes; NULL for NULL. The caller owns the result.
CFDataRef CGDataProviderCopyData(CGDataProviderRef provider);

CF_EXTERN_C_END
