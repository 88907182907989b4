// An addition to Apple's interface: abandons paths that take too long to draw.
#pragma once

#include <CoreGraphics/CGBase.h>

CF_EXTERN_C_BEGIN

/// Sets a function that is called regularly, at least every few tenths of a second, while the calling thread
/// fills or strokes a path or clips to one. Once it returns true, the rest of that path is left out, a clip
/// lets nothing through, and the context creates no more images. The function must neither throw nor draw.
/// `info` is passed to it. NULL, the initial setting, never interrupts drawing.
void OZMSetDrawingInterrupt(bool (*isDue)(void* info), void* info);

CF_EXTERN_C_END
