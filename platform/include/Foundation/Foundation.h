// GNUstep's Foundation, with what it lacks or breaks for code written for Apple's.
#pragma once
#pragma GCC system_header

#include_next <Foundation/Foundation.h>

// GNUstep defines it as nothing.
#undef NS_UNAVAILABLE
#define NS_UNAVAILABLE __attribute__((unavailable))

// What GNUstep lacks.
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_SWIFT_NAME(name) __attribute__((swift_name(#name)))
#define NS_SWIFT_SENDABLE __attribute__((swift_attr("@Sendable")))
#define NS_SWIFT_UNAVAILABLE(reason) __attribute__((availability(swift, unavailable, message = reason)))

#import <Foundation/OZMCache.h>
