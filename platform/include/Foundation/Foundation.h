// GNUstep's Foundation, completed where it lacks or breaks something that code written for Apple's expects.
#pragma once
#pragma GCC system_header

#include_next <Foundation/Foundation.h>

// GNUstep's says nothing.
#undef NS_UNAVAILABLE
#define NS_UNAVAILABLE __attribute__((unavailable))

#import <Foundation/OZMCache.h>
