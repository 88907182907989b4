// The part of Core Image that reads colours.
#pragma once

#import <CoreImage/CIColor.h>
