// The C interface's behaviour when memory runs out: it returns NULL or draws less, and never throws.
#pragma once

#include <new>
#include <stdexcept>
#include <type_traits>
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

/// Whether the last NULL that the calling thread got in place of a `T` stands for an object that memory did
/// not suffice for. Who is then given NULL lacks that object.
template <class T>
inline constinit thread_local bool nullIsFailure = false;

/// Returns `created`. If it is NULL, memory was short.
template <class T>
T* noteFailure(T* created) noexcept {
    if (!created) nullIsFailure<std::remove_const_t<T>> = true;
    return created;
}

/// NULL where there is no object to create.
template <class T>
T* noObject() noexcept {
    nullIsFailure<std::remove_const_t<T>> = false;
    return nullptr;
}

/// Whether `argument` is NULL because memory was short.
template <class T>
bool isFailure(const T* argument) noexcept {
    return !argument && nullIsFailure<T>;
}

/// The result of creating a `T` from a NULL argument: a failure if the argument is one.
template <class T, class Argument>
T* createdFrom(const Argument* null) noexcept {
    return isFailure(null) ? noteFailure<T>(nullptr) : noObject<T>();
}

} // namespace ozcg
