// GNUstep's headers include this one wherever blocks are enabled, but GCC's Objective-C runtime does not
// provide it.
#pragma once

#include <Block.h>
