#include "context/spares.h"

#include "base/thread_owned.h"

#include <memory>
#include <utility>

namespace ozcg {

namespace {

// What a thread keeps at most: more than drawings need, and little beside a bitmap.
constexpr size_t kMostPoints = 8192;
constexpr size_t kMostStates = 64;

struct Spares {
    ContextBuffers buffers;
    std::unique_ptr<CGPath> path;

    /// Null when memory runs out.
    static Spares* ofThread() noexcept { return ThreadOwned<Spares>::get(); }
};

} // namespace

ContextBuffers ContextBuffers::take() noexcept {
    Spares* const spares = Spares::ofThread();
    return spares ? std::exchange(spares->buffers, {}) : ContextBuffers();
}

void ContextBuffers::leave(ContextBuffers buffers) noexcept {
    if (buffers.path.capacity() > kMostPoints || buffers.saved.capacity() > kMostStates) return;
    Spares* const spares = Spares::ofThread();
    if (!spares) return;
    buffers.path.clear();
    buffers.saved.clear();
    spares->buffers = std::move(buffers);
}

Ref<CGPath> takePath() {
    Spares* const spares = Spares::ofThread();
    if (!spares || !spares->path) return Ref<CGPath>::adopting(new CGPath);
    return Ref<CGPath>::retaining(spares->path.release());
}

bool leavePath(CGPath* path) noexcept {
    if (path->data.capacity() > kMostPoints) return false;
    Spares* const spares = Spares::ofThread();
    if (!spares || spares->path) return false;
    path->data.clear();
    spares->path.reset(path);
    return true;
}

} // namespace ozcg
