// An addition to Apple's interface: frees what a thread keeps for drawing.
#pragma once

#include <CoreGraphics/CGBase.h>

CF_EXTERN_C_BEGIN

/// Frees the memory that the calling thread keeps to draw again: up to some 60 MB after a large drawing, and
/// clip masks. The thread can continue to draw, and keeps memory again. Contexts and images are not affected.
/// Not to be called by the function that OZMSetDrawingInterrupt sets.
void OZMTrimDrawingMemory(void);

CF_EXTERN_C_END
