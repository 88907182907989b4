// GNUstep's Foundation, with what it lacks or breaks for code written for Apple's.
#pragma once
#pragma GCC system_header

#include_next <Foundation/Foundation.h>

// GNUstep defines it as nothing.
#undef NS_UNAVAILABLE
#define NS_UNAVAILABLE __attribute__((unavailable))

#import <Foundation/OZMCache.h>
