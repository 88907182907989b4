#include "spares.h"

#include <memory>
#include <utility>

namespace ozcg {

namespace {

// What a thread keeps at most: more than drawings need, and little beside a bitmap.
constexpr size_t kMostPoints = 8192;
constexpr size_t kMostStates = 64;

// An object may outlive the thread's variables: one that is destroyed at the end of the process.
constinit thread_local bool isThreadEnding = false;

struct Spares {
    ContextBuffers buffers;
    std::unique_ptr<CGPath> path;

    Spares() = default;
    Spares(const Spares&) = delete;
    Spares& operator=(const Spares&) = delete;
    ~Spares() { isThreadEnding = true; }

    static Spares& ofThread() {
        thread_local Spares spares;
        return spares;
    }
};

} // namespace

ContextBuffers ContextBuffers::take() noexcept {
    return isThreadEnding ? ContextBuffers() : std::exchange(Spares::ofThread().buffers, {});
}

void ContextBuffers::leave(ContextBuffers buffers) noexcept {
    if (isThreadEnding) return;
    if (buffers.path.capacity() > kMostPoints || buffers.saved.capacity() > kMostStates) return;
    buffers.path.clear();
    buffers.saved.clear();
    Spares::ofThread().buffers = std::move(buffers);
}

Ref<CGPath> takePath() {
    if (isThreadEnding || !Spares::ofThread().path) return Ref<CGPath>::adopting(new CGPath);
    return Ref<CGPath>::retaining(Spares::ofThread().path.release());
}

bool leavePath(CGPath* path) noexcept {
    if (isThreadEnding || path->data.capacity() > kMostPoints || Spares::ofThread().path) return false;
    path->data.clear();
    Spares::ofThread().path.reset(path);
    return true;
}

} // namespace ozcg
