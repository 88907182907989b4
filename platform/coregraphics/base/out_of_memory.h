// The C interface's behaviour when memory runs out: it returns NULL or draws less, and never throws.
#pragma once

#include <new>
#include <stdexcept>
#include <utility>

namespace ozcg {

/// Calls `function` and returns its result, or `failure` if memory ran out. No exception may pass through the
/// C interface.
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

/// True if the calling thread has failed to create a path, a gradient, a colour or a colour space since it
/// last created a bitmap context: its drawings may lack something.
inline constinit thread_local bool anyCreationFailed = false;

/// Returns `created`, and sets `anyCreationFailed` if it is NULL.
template <class T>
T* noteFailure(T* created) noexcept {
    if (!created) anyCreationFailed = true;
    return created;
}

} // namespace ozcg
