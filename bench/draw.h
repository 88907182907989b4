#pragma once

#include <Ozmira/ozmDocument.h>

namespace bench {

/// Overwrites `size` * `size` premultiplied pixels (bytes A R G B, row 0 the top) with the document, fitted
/// and centred. False when there is nothing to draw or no bitmap.
bool DrawIntoPixels(ozm::Document& document, unsigned size, void* argb);

} // namespace bench
