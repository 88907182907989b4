#include "raster/interrupt.h"

#include "base/thread_owned.h"
#include "raster/scratch.h"

#include <CoreGraphics/OZMInterrupt.h>

using namespace ozcg;

void OZMSetDrawingInterrupt(bool (*isDue)(void* info), void* info) {
    // A thread that has no memory for buffers doesn't draw either.
    if (Scratch* const scratch = ThreadOwned<Scratch>::get())
        scratch->coverage.setPatience(Patience(isDue, info));
}
