// Runs C++ functions through libdispatch. Unlike a block, a lambda does not retain the objects that it
// captures.
#pragma once

#include <dispatch/dispatch.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace ozm {

/// Like dispatch_sync.
template <class Function>
void dispatchSync(dispatch_queue_t queue, Function&& function) {
    using Work = std::remove_reference_t<Function>;
    dispatch_sync_f(queue, std::addressof(function), [](void* work) { (*static_cast<Work*>(work))(); });
}

/// Like dispatch_async; the function is moved or copied.
template <class Function>
void dispatchAsync(dispatch_queue_t queue, Function&& function) {
    using Work = std::decay_t<Function>;
    dispatch_async_f(queue, new Work(std::forward<Function>(function)), [](void* work) {
        const std::unique_ptr<Work> owned(static_cast<Work*>(work));
        (*owned)();
    });
}

/// Like dispatch_once.
template <class Function>
void dispatchOnce(dispatch_once_t& predicate, Function&& function) {
    using Work = std::remove_reference_t<Function>;
    dispatch_once_f(&predicate, std::addressof(function), [](void* work) { (*static_cast<Work*>(work))(); });
}

} // namespace ozm
