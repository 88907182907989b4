// Memory that a thread keeps of objects that it destroys again and again: a drawing of one document after the
// other then allocates it once.
#pragma once

#include "context/graphics_state.h"
#include "path/path.h"

#include <vector>

namespace ozcg {

/// What a context's path and its saved states need.
struct ContextBuffers {
    PathData path;
    std::vector<GraphicsState> saved;

    /// What the last context has left, or nothing; path and states are empty.
    static ContextBuffers take() noexcept;
    /// Leaves the memory, unless it is large.
    static void leave(ContextBuffers buffers) noexcept;
};

/// An empty path with one reference, made of the last one destroyed if there is one. Throws std::bad_alloc.
Ref<CGPath> takePath();
/// Takes over a path that has no references any more; false when it has to be deleted.
bool leavePath(CGPath* path) noexcept;

} // namespace ozcg
