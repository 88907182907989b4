#include "interrupt.h"

#include "scratch.h"
#include "thread_owned.h"

#include <CoreGraphics/OZInterrupt.h>

using namespace ozcg;

void OZSetDrawingInterrupt(bool (*isDue)(void* info), void* info) {
    // A thread that has no memory for buffers doesn't draw either.
    if (Scratch* const scratch = ThreadOwned<Scratch>::get())
        scratch->coverage.setPatience(Patience(isDue, info));
}
