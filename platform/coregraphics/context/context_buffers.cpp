#include "context/context_buffers.h"

#include "support/thread_owned.h"

#include <utility>

namespace ozcg {

namespace {

// The most that a thread keeps: more than drawings need, yet little compared with a bitmap.
constexpr size_t kMostPoints = 8192;
constexpr size_t kMostStates = 64;

} // namespace

void ContextBuffers::releaseKept() noexcept { ozm::support::ThreadOwned<ContextBuffers>::release(); }

ContextBuffers ContextBuffers::take() noexcept {
    ContextBuffers* const kept = ozm::support::ThreadOwned<ContextBuffers>::get();
    return kept ? std::exchange(*kept, {}) : ContextBuffers();
}

void ContextBuffers::leave(ContextBuffers buffers) noexcept {
    if (buffers.path.capacity() > kMostPoints || buffers.saved.capacity() > kMostStates) return;
    ContextBuffers* const kept = ozm::support::ThreadOwned<ContextBuffers>::get();
    if (!kept) return;
    buffers.path.clear();
    buffers.saved.clear();
    *kept = std::move(buffers);
}

} // namespace ozcg
