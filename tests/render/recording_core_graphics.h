#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <string>
#include <vector>

/// A test double of the CoreGraphics functions that the renderer calls. It draws nothing and records every
/// call as one line: the name without "CGContext" or "CG", then the arguments without the context. Objects
/// are numbered in order of creation: "path1", "gradient1", "colorSpace1", "bitmap1", "image1".
namespace recording {

/// What the functions return, and what they have observed. `reset` restores the defaults.
struct State {
    CGRect pathBoundingBox = CGRectMake(10, 20, 40, 80);
    bool createsGradients = true;
    bool createsBitmaps = true;
    uintptr_t lowestStackAddress = UINTPTR_MAX; ///< Observed in CGContextSaveGState.
};
extern State state;

/// Returns the calls since the last `takeCalls`, each with a line feed at its end.
std::string takeCalls();
/// Sorted names of the objects that have not been released.
std::vector<std::string> liveObjects();
/// Destroys all objects and restores the initial state.
void reset();
/// Creates a context, named "context1" after a reset.
CGContextRef newContext();

} // namespace recording
