#include "raster/interrupt.h"

#include "raster/raster_buffers.h"
#include "support/thread_owned.h"

#include <CoreGraphics/OZMInterrupt.h>

using namespace ozcg;

void OZMSetDrawingInterrupt(bool (*isDue)(void* info), void* info) {
    // A thread that has no memory for buffers doesn't draw either.
    if (RasterBuffers* const buffers = ozm::support::ThreadOwned<RasterBuffers>::get())
        buffers->coverage.setPatience(Patience(isDue, info));
}
