#pragma once

#include <Ozmira/ozmRecordMemory.h>

#if __has_include(<CoreGraphics/OZMThreadMemory.h>)
#include <CoreGraphics/OZMThreadMemory.h>
#endif

namespace ozm {

/// Frees the memory that the calling thread keeps for documents and, where the drawing library is this
/// project's own, for drawing.
inline void freeKeptMemory() noexcept {
    TrimThreadMemory();
#if __has_include(<CoreGraphics/OZMThreadMemory.h>)
    OZMTrimDrawingMemory();
#endif
}

} // namespace ozm
