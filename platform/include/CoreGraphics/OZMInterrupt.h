// Beyond Apple's interface: a way out of a path that takes too long to draw.
#pragma once

#include <CoreGraphics/CGBase.h>

CF_EXTERN_C_BEGIN

/// Gives a function that is asked now and then, every few tenths of a second at least, while the calling
/// thread fills or strokes a path or clips with one. Once it answers true, the rest of that path is left out,
/// a clip then lets nothing through, and the context makes no image any more. It must not throw and not draw.
/// `info` is passed to it. NULL, as at first: draw all.
void OZMSetDrawingInterrupt(bool (*isDue)(void* info), void* info);

CF_EXTERN_C_END
