// GNUstep's headers ask for this one wherever blocks are enabled; GCC's Objective-C runtime has none.
#pragma once

#include <Block.h>
