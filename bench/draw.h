#pragma once

#include <Ozmira/ozmDocument.h>

#include <CoreGraphics/CoreGraphics.h>

namespace bench {

/// Clears `size` * `size` pixels (bytes A R G B, row 0 the top) and makes a context that draws into them, its
/// y axis pointing down. Null when there is no such bitmap. The caller owns the result.
CGContextRef CreateContext(unsigned size, void* argb);

/// Overwrites `size` * `size` premultiplied pixels (bytes A R G B, row 0 the top) with the document, fitted
/// and centred. False when there is nothing to draw or no bitmap.
bool DrawIntoPixels(ozm::Document& document, unsigned size, void* argb);

} // namespace bench
