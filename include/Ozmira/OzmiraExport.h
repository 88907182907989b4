// Which symbols a library of Ozmira exports. Everything else is hidden.
#pragma once

/// Marks what applications use: the Objective-C classes and C functions.
#define OZM_EXPORT __attribute__((visibility("default")))

/// Marks the C++ interface, which only the shared libraries of Linux export. Programs and plug-ins that
/// contain a static library don't, and neither does the framework for iOS.
#ifdef OZMIRA_SHARED
#define OZM_CXX_EXPORT OZM_EXPORT
#else
#define OZM_CXX_EXPORT
#endif
