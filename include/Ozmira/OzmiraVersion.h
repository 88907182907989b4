#pragma once

#include <Ozmira/OzmiraExport.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Project version as a number: major.minor.
OZM_EXPORT extern const double OzmiraVersionNumber;

/// Version text in the form that the `what` utility finds in a binary; NUL-terminated.
OZM_EXPORT extern const unsigned char OzmiraVersionString[];

#ifdef __cplusplus
}
#endif
