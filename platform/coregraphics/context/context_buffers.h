// Memory that a thread keeps from one context to the next, so that drawing one document after another
// allocates it once.
#pragma once

#include "context/graphics_state.h"
#include "path/path_data.h"

#include <vector>

namespace ozcg {

/// What a context's path and its saved states need.
struct ContextBuffers {
    PathData path;
    std::vector<GraphicsState> saved;

    /// What the thread's last context has left, or nothing. Path and states are empty.
    static ContextBuffers take() noexcept;
    /// Keeps the memory for the thread's next context, unless it is large.
    static void leave(ContextBuffers buffers) noexcept;
};

} // namespace ozcg
