#include "context/context_buffers.h"

#include "support/thread_owned.h"

#include <utility>

namespace ozcg {

namespace {

// What a thread keeps at most: more than drawings need, and little beside a bitmap.
constexpr size_t kMostPoints = 8192;
constexpr size_t kMostStates = 64;

} // namespace

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
