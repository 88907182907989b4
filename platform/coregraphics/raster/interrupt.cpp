#include "raster/interrupt.h"

#include "raster/raster_buffers.h"
#include "support/thread_owned.h"

#include <CoreGraphics/OZMInterrupt.h>

using namespace ozcg;

void OZMSetDrawingInterrupt(bool (*isDue)(void* info), void* info) {
    // Without memory for its buffers the thread cannot draw, so there is nothing to interrupt.
    if (RasterBuffers* const buffers = ozm::support::ThreadOwned<RasterBuffers>::get())
        buffers->coverage.setInterrupt(InterruptPoll(isDue, info));
}
