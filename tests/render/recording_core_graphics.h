#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <string>
#include <vector>

/// A second implementation of the CoreGraphics functions that the renderer calls: it draws nothing and writes
/// down every call as one line, the name without "CGContext" or "CG" and the arguments without the context.
/// Objects are numbered in order of creation: "path1", "gradient1", "colorSpace1", "bitmap1", "image1".
namespace recording {

/// What the functions answer, and what they have seen; copied anew by `reset`.
struct State {
    CGRect pathBoundingBox = CGRectMake(10, 20, 40, 80);
    bool createsGradients = true;
    bool createsBitmaps = true;
    uintptr_t lowestStackAddress = UINTPTR_MAX; ///< In CGContextSaveGState.
};
extern State state;

/// The calls since the last `takeCalls`, each followed by a line feed.
std::string takeCalls();
/// Names of the objects that nobody has released, sorted.
std::vector<std::string> liveObjects();
/// Destroys all objects and goes back to the start.
void reset();
/// A context of no particular kind, "context1".
CGContextRef newContext();

} // namespace recording
