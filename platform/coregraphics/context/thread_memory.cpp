#include "context/context_buffers.h"
#include "paint/painter.h"
#include "path/path.h"

#include <CoreGraphics/OZMThreadMemory.h>

void OZMTrimDrawingMemory(void) {
    ozcg::trimPaintMemory();
    ozcg::ContextBuffers::releaseKept();
    CGPath::releaseKept();
}
