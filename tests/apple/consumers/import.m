#import <Ozmira/Ozmira.h>

#include "uses.inc"
