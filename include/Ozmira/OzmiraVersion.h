#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// Project version as a number: major.minor.
extern const double OzmiraVersionNumber;

/// Version text in the form that the `what` utility finds in a binary; NUL-terminated.
extern const unsigned char OzmiraVersionString[];

#ifdef __cplusplus
}
#endif
