#pragma once

#include <Ozmira/ozmElement.h>

#include <CoreGraphics/CoreGraphics.h>

namespace bench {

/// Clears `size` * `size` pixels (bytes A R G B, top row first) and creates a context that draws into them,
/// with the y axis pointing down. Returns null if no bitmap can have that size. The caller releases the
/// context.
CGContextRef CreateContext(unsigned size, void* argb);

/// Overwrites `size` * `size` premultiplied pixels (bytes A R G B, top row first) with the document, fitted
/// and centred. Returns false if the document is empty or no bitmap can have that size.
bool DrawIntoPixels(ozm::Document& document, unsigned size, void* argb);

} // namespace bench
