// What the C interface does when memory runs out: it answers NULL or draws less, and never throws.
#pragma once

#include <new>
#include <stdexcept>
#include <utility>

namespace ozcg {

/// Runs what may run out of memory; answers `failure` then. The interface is C's, so nothing may throw
/// through it.
template <class Result, class Function>
Result orWhenOutOfMemory(Result failure, Function&& function) noexcept {
    try {
        return std::forward<Function>(function)();
    } catch (const std::bad_alloc&) {
        return failure;
    } catch (const std::length_error&) {
        return failure;
    }
}

/// A new object, or NULL when memory is short.
template <class T, class... Args>
T* create(Args&&... args) noexcept {
    return orWhenOutOfMemory(static_cast<T*>(nullptr), [&] { return new T(std::forward<Args>(args)...); });
}

/// True once the calling thread has failed to make a path, a gradient, a colour or a colour space since it
/// last made a bitmap context: whatever it draws meanwhile may lack something.
inline constinit thread_local bool anyCreationFailed = false;

/// Passes a new object on, and sets `anyCreationFailed` when it is NULL.
template <class T>
T* noteFailure(T* created) noexcept {
    if (!created) anyCreationFailed = true;
    return created;
}

} // namespace ozcg
